// Exported functions: camera, standard views, projection, light, background.
#include "GLViewer.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

namespace {
bool inUnitRange(float value) {
    return value >= 0.0f && value <= 1.0f;
}
}  // namespace

long QelSetCamera(long long window, QelVector3d& eye, QelVector3d& centre, QelVector3d& up) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!eye.IsValid()) return QelStatus::argument(2);
    if (!centre.IsValid()) return QelStatus::argument(3);
    if (!up.IsValid()) return QelStatus::argument(4);
    v->setCamera(eye, centre, up);
    return 0;
}

long QelGetCamera(long long window, QelVector3d* eye, QelVector3d* centre, QelVector3d* up) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->getCamera(eye, centre, up);
    return 0;
}

long QelSetPerspective(long long window, Qel3DPerspective perspective) {
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (static_cast<int>(perspective) >= 7) return QelStatus::argument(2);
    w->moveToView(perspective);
    return 0;
}

long QelSetProjection(long long window, bool orthographic) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->setProjection(orthographic);
    return 0;
}

long Qel3DZoom(long long window, QelVector3d& point, float factor) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    // An invalid centre would leave the camera unusable.
    if (!point.IsValid()) return QelStatus::argument(2);
    if (!(factor > 0.0f)) return QelStatus::argument(3);
    v->zoom(point, factor);
    return 0;
}

long Qel3DZoomFitWnd(long long window) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->zoomFit();
    return 0;
}

long QelSetLightState(long long window, bool on) {
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->setLightState(on);
    return 0;
}

long QelSetLightParameter(long long window, float power, QelVector3d& direction) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!(power > 0.0f && power <= 10.0f)) return QelStatus::argument(2);
    if (direction.x == 0.0f && direction.y == 0.0f && direction.z == 0.0f)
        return QelStatus::argument(3);
    if (!direction.IsValid()) return QelStatus::argument(3);
    v->setLightParameter(power, direction);
    return 0;
}

long QelSetLightParameter(long long window, float ambient, float diffuse, float specular) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!inUnitRange(ambient)) return QelStatus::argument(2);
    if (!inUnitRange(diffuse)) return QelStatus::argument(3);
    if (!inUnitRange(specular)) return QelStatus::argument(4);
    v->setLightCoefficients(ambient, diffuse, specular);
    return 0;
}

long QelSet3DBackgroundColor(long long window, QelColor& colour) {
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    // Channels outside 0..255 are clamped rather than wrapped.
    auto channel = [](int c) { return c < 0 ? 0 : (c > 255 ? 255 : c); };
    v->setBackgroundColor(channel(colour.r), channel(colour.g), channel(colour.b),
                          channel(colour.a));
    return 0;
}

}  // namespace QELMV
