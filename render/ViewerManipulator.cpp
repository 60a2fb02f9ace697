#include "ViewerManipulator.h"

#include <cmath>
#include <osg/Camera>
#include <osg/View>

#include "SceneLockGuard.h"

namespace {

double rad(double degrees) {
    return osg::DegreesToRadians(degrees);
}

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

bool ViewerManipulator::handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) {
    using E = osgGA::GUIEventAdapter;
    switch (ea.getEventType()) {
        case E::RELEASE:
            if (pickMode_ == 1) {
                emit sig_ClickPoint(ea.getX(), ea.getY());
                return false;
            }
            emit sig_motion(false);
            if (ea.getButton() == E::RIGHT_MOUSE_BUTTON) {
                panning_ = false;
                return false;
            }
            return TrackballManipulator::handle(ea, us);
        case E::DRAG: {
            if (pickMode_ == 1) return false;
            if (!panning_) return TrackballManipulator::handle(ea, us);
            const float dx = lastX_ - ea.getX(), dy = lastY_ - ea.getY();
            lastX_ = ea.getX();
            lastY_ = ea.getY();
            // Eye and rotation centre move together in the screen plane, by
            // a step that grows with the viewing distance.
            getTransformation(eye_, center_, up_);
            const osg::Vec3d d = center_ - eye_;
            osg::Vec3d dir = d;
            dir.normalize();
            panScale_ = static_cast<float>(getDistance() * (0.1f / 100));
            eye_ += dir ^ (up_ * (dx * panScale_));
            eye_ += up_ * (dy * panScale_);
            center_ = eye_ + d;
            setTransformation(eye_, center_, up_);
            sendViewportChangedMsg();
            return true;
        }
        case E::FRAME:
            if (ortho_) applyOrthoProjection(us);
            return TrackballManipulator::handle(ea, us);
        default:
            if (pickMode_ == 1) return false;
            if (ea.getEventType() == E::PUSH) emit sig_motion(true);
            if (ea.getEventType() == E::PUSH && ea.getButton() == E::RIGHT_MOUSE_BUTTON) {
                lastX_ = ea.getX();
                lastY_ = ea.getY();
                panning_ = true;
                return false;
            }
            return TrackballManipulator::handle(ea, us);
    }
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
    emit sig_wheelStep();
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
    // Never narrower than a fifty-second of the scene's radius on the left.
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

osg::Quat ViewerManipulator::standardViewRotation(int view, int sensorAxes) {
    if (sensorAxes == 1) {
        switch (view) {
            case 0:
                return rotation(180.1, 0.1, 0.1);
            case 1:
                return rotation(0.1, 0.1, 0.1);
            case 2:
                return rotation(-90.1, 0.1, 0.1);
            case 3:
                return rotation(-90.1, 0.1, 180.1);
            case 4:
                return rotation(-90.0, 0.1, 90.1);
            case 5:
                return rotation(-90.1, 0.1, -90.1);
            default:
                return rotation(-135.1, 0.1, 135.1);
        }
    }
    switch (view) {
        case 0:
            return rotation(0.1, 0.1, 90.1);
        case 1:
            return rotation(180.1, 0.1, 90.1);
        case 2:
            return rotation(90.1, 0.1, 90.1);
        case 3:
            return rotation(90.1, 0.1, -90.1);
        case 4:
            return rotation(90.1, 0.1, 0.1);
        case 5:
            return rotation(90.1, 0.1, 180.1);
        default:
            // Not normalised on purpose: the rotation matrix normalises it.
            return osg::Quat(0.5, -0.5, -0.5, 1.0);
    }
}

void ViewerManipulator::moveToView(int view) {
    setRotation(standardViewRotation(view, sensorAxes_));
    sendViewportChangedMsg();
}

void ViewerManipulator::moveToTopView() {
    moveToView(0);
}
void ViewerManipulator::moveToBottomView() {
    moveToView(1);
}
void ViewerManipulator::moveToFrontView() {
    moveToView(2);
}
void ViewerManipulator::moveToBackView() {
    moveToView(3);
}
void ViewerManipulator::moveToLeftView() {
    moveToView(4);
}
void ViewerManipulator::moveToRightView() {
    moveToView(5);
}
void ViewerManipulator::moveToObliqueView() {
    moveToView(6);
}

void ViewerManipulator::sendViewportChangedMsg() {
    getTransformation(eye_, center_, up_);
    const osg::BoundingSphere bound = sceneBound();
    emit sig_ViewportChanged(osg::Vec3(center_), bound.radius(), osg::Vec3(bound.center()));
}
