// Exported selection functions: points chosen by the lasso the user drew.
#include "ExceptionStatus.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

long QelSelectPointsByLasso(long long window, QelPointCloud* selected, bool remove) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (!selected) return QelStatus::argument(2);
    return w->selectByLasso(selected, remove);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSelectPointsByLasso(long long window, QelRangeImage* selected, bool remove) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (!selected) return QelStatus::argument(2);
    return w->selectByLasso(selected, remove);
} catch (...) {
    return QelStatus::ofCurrentException();
}

}  // namespace QELMV
