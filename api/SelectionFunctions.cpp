// Exported selection functions: points chosen by the lasso the user drew.
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

long QelSelectPointsByLasso(long long window, QelPointCloud* selected, bool remove) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (!selected) return QelStatus::argument(2);
    return w->selectByLasso(selected, remove);
}

long QelSelectPointsByLasso(long long window, QelRangeImage* selected, bool remove) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (!selected) return QelStatus::argument(2);
    return w->selectByLasso(selected, remove);
}

}  // namespace QELMV
