#include "ViewerManipulator.h"

#include <cmath>
#include <osg/Camera>
#include <osg/View>

#include "QelOSGWidget.h"
#include "SceneLockGuard.h"

namespace {

double rad(double degrees) {
    return osg::DegreesToRadians(degrees);
}

// A right-button drag pans by this share of the viewing distance a pixel.
constexpr float kPanStepPerPixel = 0.1f / 100;

osg::Quat rotation(double a, double b, double c) {
    return osg::Quat(rad(a), osg::X_AXIS, rad(b), osg::Y_AXIS, rad(c), osg::Z_AXIS);
}

}  // namespace

ViewerManipulator::ViewerManipulator(QelOSGWidget* widget, osg::Node* sceneRoot)
    : QObject(nullptr), widget_(widget), sceneRoot_(sceneRoot) {
    setAllowThrow(false);
    qRegisterMetaType<osg::Vec3>("osg::Vec3");
}

osg::BoundingSphere ViewerManipulator::sceneBound() const {
    if (!sceneRoot_) return osg::BoundingSphere();
    SceneLockGuard lock(widget_);
    return sceneRoot_->getBound();
}

osg::Vec3 ViewerManipulator::boundingCenter() const {
    return sceneBound().center();
}

float ViewerManipulator::boundingRadius() const {
    return sceneBound().radius();
}

void ViewerManipulator::getLookAt(osg::Vec3d& eye, osg::Vec3d& center, osg::Vec3d& up) const {
    getMatrix().getLookAt(eye, center, up, 1.0);
}

void ViewerManipulator::getInverseLookAt(osg::Vec3d& eye, osg::Vec3d& center,
                                         osg::Vec3d& up) const {
    getInverseMatrix().getLookAt(eye, center, up, 1.0);
}

void ViewerManipulator::setLookAt(const osg::Vec3d& eye, const osg::Vec3d& center,
                                  const osg::Vec3d& up) {
    // Also makes centre the rotation centre, at the eye's distance.
    setTransformation(eye, center, up);
    sendViewportChangedMsg();
}

// The right button pans: eye and rotation centre move together in the
// screen plane. Every other button is the trackball's.
bool ViewerManipulator::handleMousePush(const osgGA::GUIEventAdapter& ea,
                                        osgGA::GUIActionAdapter& us) {
    if (ea.getButton() != osgGA::GUIEventAdapter::RIGHT_MOUSE_BUTTON)
        return TrackballManipulator::handleMousePush(ea, us);
    lastX_ = ea.getX();
    lastY_ = ea.getY();
    panning_ = true;
    return false;
}

bool ViewerManipulator::handleMouseRelease(const osgGA::GUIEventAdapter& ea,
                                           osgGA::GUIActionAdapter& us) {
    if (ea.getButton() != osgGA::GUIEventAdapter::RIGHT_MOUSE_BUTTON)
        return TrackballManipulator::handleMouseRelease(ea, us);
    panning_ = false;
    return false;
}

bool ViewerManipulator::handleMouseDrag(const osgGA::GUIEventAdapter& ea,
                                        osgGA::GUIActionAdapter& us) {
    if (!panning_) return TrackballManipulator::handleMouseDrag(ea, us);
    const float dx = lastX_ - ea.getX(), dy = lastY_ - ea.getY();
    lastX_ = ea.getX();
    lastY_ = ea.getY();
    getTransformation(eye_, center_, up_);
    const osg::Vec3d d = center_ - eye_;
    osg::Vec3d dir = d;
    dir.normalize();
    panScale_ = static_cast<float>(getDistance() * kPanStepPerPixel);
    eye_ += dir ^ (up_ * (dx * panScale_));
    eye_ += up_ * (dy * panScale_);
    center_ = eye_ + d;
    setTransformation(eye_, center_, up_);
    sendViewportChangedMsg();
    return true;
}

bool ViewerManipulator::handleFrame(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) {
    if (ortho_) applyOrthoProjection(us);
    return TrackballManipulator::handleFrame(ea, us);
}

void ViewerManipulator::applyOrthoProjection(osgGA::GUIActionAdapter& us) const {
    osg::View* view = us.asView();
    if (!view || !view->getCamera()) return;
    osg::Camera* camera = view->getCamera();
    const double l = orthoBox_[0], r = orthoBox_[1], b = orthoBox_[2], t = orthoBox_[3];
    osg::Matrixd projection = osg::Matrixd::ortho(l, r, b, t, -10000.0, 10000.0);
    const osg::GraphicsContext* gc = camera->getGraphicsContext();
    if (gc && gc->getTraits() && gc->getTraits()->height > 0 && t != b) {
        const double window = double(gc->getTraits()->width) / gc->getTraits()->height;
        const double ratio = window / ((r - l) / (t - b));
        if (ratio != 1.0) projection.postMultScale(osg::Vec3d(1.0 / ratio, 1.0, 1.0));
    }
    camera->setProjectionMatrix(projection);
}

bool ViewerManipulator::handleMouseWheel(const osgGA::GUIEventAdapter& ea,
                                         osgGA::GUIActionAdapter& us) {
    const auto motion = ea.getScrollingMotion();
    if (motion != osgGA::GUIEventAdapter::SCROLL_UP &&
        motion != osgGA::GUIEventAdapter::SCROLL_DOWN)
        return false;
    const bool handled = TrackballManipulator::handleMouseWheel(ea, us);
    if (ortho_) {
        const double f = motion == osgGA::GUIEventAdapter::SCROLL_DOWN ? 1.0 / 0.9 : 0.9;
        const double halfW = (orthoBox_[1] - orthoBox_[0]) * f / 2;
        const double halfH = (orthoBox_[3] - orthoBox_[2]) * f / 2;
        orthoBox_[0] = -halfW;
        orthoBox_[1] = halfW;
        orthoBox_[2] = -halfH;
        orthoBox_[3] = halfH;
        orthoBox_[4] *= f;
        orthoBox_[5] *= f;
    }
    return handled;
}

void ViewerManipulator::setOrtho(bool on, double left, double right, double bottom, double top,
                                 double zNear, double zFar) {
    if (on == ortho_) return;
    ortho_ = on;
    if (!on) return;
    const double values[6] = {left, right, bottom, top, zNear, zFar};
    // Never narrower than a fifty-second of the scene's radius on the left: a
    // frustum taken close to the eye would otherwise give a box of a sliver.
    // The factor is this viewer's own, kept so pictures stay as they were.
    const double m = boundingRadius() / 52.0;
    const double scale = (m > std::fabs(left)) ? m / std::fabs(left) : 1.0;
    if (std::isfinite(scale)) {
        for (int i = 0; i < 6; ++i)
            orthoBox_[i] = values[i] * scale;
    } else {
        // A left of 0 cannot be scaled: take the bound as a square box.
        const double box[6] = {-m, m, -m, m, zNear, zFar};
        std::copy(box, box + 6, orthoBox_);
    }
}

void ViewerManipulator::getOrthoBox(double& left, double& right, double& bottom, double& top,
                                    double& zNear, double& zFar) const {
    left = orthoBox_[0];
    right = orthoBox_[1];
    bottom = orthoBox_[2];
    top = orthoBox_[3];
    zNear = orthoBox_[4];
    zFar = orthoBox_[5];
}

// Each standard view as three rotations about x, y and z, in degrees, in
// the order of StandardView. The tenth of a degree added to the angles keeps
// every view a little off the exact axes, so the view direction is never
// parallel to a coordinate axis.
namespace {
struct ViewAngles {
    double x, y, z;
};
// The sensor's axes: z points from the sensor into the scene.
constexpr ViewAngles kSensorViews[] = {
    {180.1, 0.1, 0.1},  {0.1, 0.1, 0.1},     {-90.1, 0.1, 0.1},    {-90.1, 0.1, 180.1},
    {-90.0, 0.1, 90.1}, {-90.1, 0.1, -90.1}, {-135.1, 0.1, 135.1},
};
// The world's axes: z points up.
constexpr ViewAngles kWorldViews[] = {
    {0.1, 0.1, 90.1},   {180.1, 0.1, 90.1}, {90.1, 0.1, 90.1},
    {90.1, 0.1, -90.1}, {90.1, 0.1, 0.1},   {90.1, 0.1, 180.1},
};
}  // namespace

osg::Quat ViewerManipulator::standardViewRotation(StandardView view, int sensorAxes) {
    const auto index = static_cast<size_t>(view);
    if (sensorAxes == 1) {
        const ViewAngles& a = kSensorViews[index];
        return rotation(a.x, a.y, a.z);
    }
    // The oblique world view, not normalised on purpose: the rotation
    // matrix normalises it.
    if (view == StandardView::Oblique) return osg::Quat(0.5, -0.5, -0.5, 1.0);
    const ViewAngles& a = kWorldViews[index];
    return rotation(a.x, a.y, a.z);
}

void ViewerManipulator::moveToView(StandardView view) {
    setRotation(standardViewRotation(view, sensorAxes_));
    sendViewportChangedMsg();
}

void ViewerManipulator::sendViewportChangedMsg() {
    getTransformation(eye_, center_, up_);
    const osg::BoundingSphere bound = sceneBound();
    emit sig_ViewportChanged(osg::Vec3(center_), bound.radius(), osg::Vec3(bound.center()));
}
