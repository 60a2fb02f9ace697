// Exported functions: measurements between points, and the measuring tool.
#include <vector>

#include "ArgumentChecks.h"
#include "ExceptionStatus.h"
#include "GLViewer.h"
#include "ModeNumbers.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "QelVector3dArray.h"
#include "SceneContent.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

long QelAdd3DMeasurement(long long window, int kind, QelVector3dArray& points) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!ModeNumbers::isMeasureKind(kind)) return QelStatus::argument(2);
    std::vector<osg::Vec3d> world;
    for (int i = 0; i < points.Length(); ++i) {
        const QelVector3d& p = points[i];
        if (!QelArguments::usablePoint(p)) return QelStatus::argument(3);
        world.emplace_back(p.x, p.y, p.z);
    }
    return v->addMeasurement(ModeNumbers::measureKind(kind), world);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelGet3DMeasurement(long long window, long id, double* value) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!value) return QelStatus::argument(3);
    return v->measurement(id, value);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelClear3DMeasurement(long long window, long id) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearMeasurement(id);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelClearAll3DMeasurement(long long window) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearAllMeasurements();
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSet3DMeasureMode(long long window, int kind) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (kind != -1 && !ModeNumbers::isMeasureKind(kind)) return QelStatus::argument(2);
    if (kind == -1)
        w->stopMeasuring();
    else
        w->startMeasuring(ModeNumbers::measureKind(kind));
    return QelStatus::kOk;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelRegisterMeasureEvent(long long window, QelMeasureCallback callback, void* user) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->registerMeasure(window, callback, user);
    return QelStatus::kOk;
} catch (...) {
    return QelStatus::ofCurrentException();
}

}  // namespace QELMV
