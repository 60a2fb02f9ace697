// Exported functions: camera, standard views, projection, light, eye-dome
// lighting, background.
#include <cmath>

#include "ArgumentChecks.h"
#include "CameraController.h"
#include "ExceptionStatus.h"
#include "EyeDomeLighting.h"
#include "GLViewer.h"
#include "LightController.h"
#include "ModeNumbers.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"
#include "ViewDecorations.h"
#include "WindowRegistry.h"

namespace QELMV {

namespace {

bool inUnitRange(float value) {
    return value >= 0.0f && value <= 1.0f;
}

using QelArguments::kCoordinateLimit;
using QelArguments::usablePoint;

// Components in double, so that differences and products of large values
// cannot overflow.
struct Vec {
    double x, y, z;
    explicit Vec(const QelVector3d& v) : x(v.x), y(v.y), z(v.z) {}
    Vec(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}
    Vec operator-(const Vec& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec cross(const Vec& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    double length() const { return std::sqrt(x * x + y * y + z * z); }
};

}  // namespace

long QelSetCamera(long long window, QelVector3d& eye, QelVector3d& centre, QelVector3d& up) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!usablePoint(eye)) return QelStatus::argument(2);
    const Vec sight = Vec(centre) - Vec(eye);
    if (!usablePoint(centre) || !(sight.length() > 1e-9)) return QelStatus::argument(3);
    // Up must have a part across the line of sight.
    if (!usablePoint(up) ||
        !(sight.cross(Vec(up)).length() > 1e-6 * sight.length() * Vec(up).length()))
        return QelStatus::argument(4);
    v->camera().setCamera(eye, centre, up);
    return 0;
}

long QelGetCamera(long long window, QelVector3d* eye, QelVector3d* centre, QelVector3d* up) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->camera().getCamera(eye, centre, up);
    return 0;
}

long QelSetPerspective(long long window, Qel3DPerspective perspective) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(perspective) >= 7) return QelStatus::argument(2);
    w->moveToView(ModeNumbers::view(perspective));
    return 0;
}

long QelSetProjection(long long window, bool orthographic) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->camera().setProjection(orthographic);
    return 0;
}

long Qel3DZoom(long long window, QelVector3d& point, float factor) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    // An invalid centre or a distance out of bounds would leave the camera
    // unusable.
    if (!usablePoint(point)) return QelStatus::argument(2);
    if (!(factor > 0.0f) || !v->camera().zoom(point, factor, 1e-9, kCoordinateLimit))
        return QelStatus::argument(3);
    return 0;
}

long Qel3DZoomFitWnd(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->camera().zoomFit();
    return 0;
}

long QelSetLightState(long long window, bool on) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->setLightState(on);
    return 0;
}

long QelSetEyeDomeLighting(long long window, bool enable, double strength, double radius) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (!enable) {
        w->setEyeDome(false, w->viewer()->eyeDome().strength(), w->viewer()->eyeDome().radius());
        return QelStatus::kOk;
    }
    if (!std::isfinite(strength) || strength <= 0) return QelStatus::argument(3);
    if (!std::isfinite(radius) || radius < EyeDomeLighting::kMinRadius ||
        radius > EyeDomeLighting::kMaxRadius)
        return QelStatus::argument(4);
    w->setEyeDome(true, strength, radius);
    return QelStatus::kOk;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetIncrementalFrames(long long window, bool enable) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->viewer()->setIncremental(enable);
    return QelStatus::kOk;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetAxisVisible(long long window, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->setAxisVisible(visible);
    return 0;
}

long QelSetGridVisible(long long window, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    v->decorations().setGridVisible(visible);
    return 0;
}

long QelSetLightParameter(long long window, float power, QelVector3d& direction) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!(power > 0.0f && power <= 10.0f)) return QelStatus::argument(2);
    if (direction.x == 0.0f && direction.y == 0.0f && direction.z == 0.0f)
        return QelStatus::argument(3);
    if (!direction.IsValid()) return QelStatus::argument(3);
    // Normalised here: squaring a huge component in the shader overflows.
    const Vec d(direction);
    const double length = d.length();
    v->light().setLightParameter(
        power, QelVector3d(float(d.x / length), float(d.y / length), float(d.z / length)));
    return 0;
}

long QelSetLightParameter(long long window, float ambient, float diffuse, float specular) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!inUnitRange(ambient)) return QelStatus::argument(2);
    if (!inUnitRange(diffuse)) return QelStatus::argument(3);
    if (!inUnitRange(specular)) return QelStatus::argument(4);
    v->light().setLightCoefficients(ambient, diffuse, specular);
    return 0;
}

long QelSet3DBackgroundColor(long long window, QelColor& colour) {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    const QelColor c = QelArguments::clampedColour(colour);
    v->decorations().setBackgroundColor(c.r, c.g, c.b, c.a);
    return 0;
}

}  // namespace QELMV
