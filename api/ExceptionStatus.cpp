#include "ExceptionStatus.h"

#include <exception>
#include <new>

#include "QelLog.h"
#include "StatusCodes.h"

long QelStatus::ofCurrentException() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        qCWarning(qelLog) << "out of memory while building the data";
        return kCountTooLarge;
    } catch (const std::exception& e) {
        qCWarning(qelLog) << "call failed:" << e.what();
    } catch (...) {
        qCWarning(qelLog) << "call failed with an unknown exception";
    }
    return kObjectUnusable;
}
