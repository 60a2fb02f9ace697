// Exported functions: shapes.
#include "ExceptionStatus.h"
#include "GLViewer.h"
#include "ModeNumbers.h"
#include "Qel3DGraphics.h"
#include "SceneContent.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

long QelShow3DShape(long long window, Qel3DShape& shape) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->showShape(shape);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelClear3DShape(long long window, long id) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearShape(id);
}

long QelClearAll3DShape(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearAllShapes();
}

long QelSet3DShapeMode(long long window, int id, Qel3DGraphicsShapeMode mode) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (mode != QEL_3D_SHAPE_WIREFRAME && mode != QEL_3D_SHAPE_SURFACE)
        return QelStatus::argument(3);
    return v->setShapeMode(id, ModeNumbers::shapeMode(mode));
}

}  // namespace QELMV
