#include "CameraController.h"

#include <cmath>
#include <osg/DisplaySettings>
#include <osgViewer/Viewer>

#include "GLViewer.h"
#include "QelOSGWidget.h"
#include "QelVector3d.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ViewDecorations.h"
#include "ViewerManipulator.h"

namespace {
osg::Vec3d toVec(const QelVector3d& v) {
    return osg::Vec3d(v.x, v.y, v.z);
}
QelVector3d fromVec(const osg::Vec3d& v) {
    return QelVector3d(float(v.x()), float(v.y()), float(v.z()));
}
}  // namespace

void CameraController::setCamera(const QelVector3d& eye, const QelVector3d& centre,
                                 const QelVector3d& up) {
    if (ViewerManipulator* m = view_.ensureManipulator())
        m->setLookAt(toVec(eye), toVec(centre), toVec(up));
    repairProjection();
    view_.requestRedraw();
}

void CameraController::getCamera(QelVector3d* eye, QelVector3d* centre, QelVector3d* up) {
    ViewerManipulator* m = view_.ensureManipulator();
    if (!m) return;
    osg::Vec3d e, c, u;
    {
        SceneLockGuard lock(view_.osgWidget());
        m->getTransformation(e, c, u);
    }
    if (eye) *eye = fromVec(e);
    if (centre) *centre = fromVec(c);
    if (up) *up = fromVec(u);
}

void CameraController::moveToView(StandardView view) {
    if (ViewerManipulator* m = view_.ensureManipulator()) m->moveToView(view);
    repairProjection();
    view_.requestRedraw();
}

void CameraController::setProjection(bool orthographic) {
    ViewerManipulator* m = view_.ensureManipulator();
    if (!m || m->isOrtho() == orthographic) return;
    osg::Camera* camera = view_.osgWidget()->viewer()->getCamera();
    double left, right, bottom, top, zNear, zFar;
    if (orthographic) {
        // setOrtho reads the scene bound under the lock itself.
        camera->getProjectionMatrixAsFrustum(left, right, bottom, top, zNear, zFar);
        m->setOrtho(true, left, right, bottom, top, zNear, zFar);
        m->getOrthoBox(left, right, bottom, top, zNear, zFar);
        SceneLockGuard lock(view_.osgWidget());
        camera->setProjectionMatrixAsOrtho(left, right, bottom, top, zNear, zFar);
    } else {
        m->setOrtho(false, 0, 0, 0, 0, 0, 0);
        m->getOrthoBox(left, right, bottom, top, zNear, zFar);
        SceneLockGuard lock(view_.osgWidget());
        camera->setProjectionMatrixAsFrustum(left, right, bottom, top, zNear, zFar);
        const osg::GraphicsContext* gc = camera->getGraphicsContext();
        if (gc && gc->getTraits() && gc->getTraits()->height > 0 && top != bottom &&
            right != left) {
            const double ratio = (double(gc->getTraits()->width) / gc->getTraits()->height) /
                                 ((right - left) / (top - bottom));
            if (ratio != 1.0) {
                osg::Matrixd projection = camera->getProjectionMatrix();
                projection.postMultScale(osg::Vec3d(1.0 / ratio, 1.0, 1.0));
                camera->setProjectionMatrix(projection);
            }
        }
    }
    view_.requestRedraw();
}

bool CameraController::zoom(const QelVector3d& point, float factor, double minDistance,
                            double maxDistance) {
    ViewerManipulator* m = view_.ensureManipulator();
    if (!m || !(factor > 0)) return false;
    {
        SceneLockGuard lock(view_.osgWidget());
        const double distance = m->getDistance() / factor;
        if (!(distance >= minDistance && distance <= maxDistance)) return false;
        m->setCenter(toVec(point));
        m->setDistance(distance);
    }
    m->sendViewportChangedMsg();
    view_.requestRedraw();
    return true;
}

void CameraController::zoomFit() {
    ViewerManipulator* m = view_.ensureManipulator();
    if (!m) return;
    repairProjection();
    {
        SceneLockGuard lock(view_.osgWidget());
        // Keeps the current direction; only centre and distance follow the scene.
        const osg::BoundingSphere bound = view_.content().dataGroup()->getBound();
        if (bound.valid() && bound.radius() > 0) {
            m->setCenter(bound.center());
            // The cube axis's labels sit outside the data: leave them room.
            m->setDistance(bound.radius() * (view_.decorations().cubeAxis() ? 4.2 : 3.5));
        }
    }
    m->sendViewportChangedMsg();
    view_.requestRedraw();
}

// A projection that went non-finite (a degenerate frame's near and far
// values are written back into it) never recovers by itself: it is set back
// to the perspective every view starts with (the scene graph's default
// field of view, from its display settings), so a valid camera always shows
// the scene again.
void CameraController::repairProjection() {
    osgViewer::Viewer* viewer = view_.osgWidget()->viewer();
    if (!viewer) return;
    osg::Camera* camera = viewer->getCamera();
    const osg::Matrixd& p = camera->getProjectionMatrix();
    bool finite = true;
    for (int i = 0; i < 16; ++i)
        finite = finite && std::isfinite(p.ptr()[i]);
    if (finite) return;
    const osg::GraphicsContext* gc = camera->getGraphicsContext();
    const double aspect = gc && gc->getTraits() && gc->getTraits()->height > 0
                              ? double(gc->getTraits()->width) / gc->getTraits()->height
                              : 1.0;
    const osg::DisplaySettings* ds = osg::DisplaySettings::instance().get();
    const double fovy = osg::RadiansToDegrees(
        2.0 * std::atan2(ds->getScreenHeight() / 2.0, ds->getScreenDistance()));
    SceneLockGuard lock(view_.osgWidget());
    camera->setProjectionMatrixAsPerspective(fovy, aspect, 1.0, 10000.0);
}

// New data in an empty scene keeps the camera when the camera already shows
// it at a usable size (a host that re-displays each scan of a part, or set
// its camera first, keeps its view); otherwise the view is fitted to it.
void CameraController::fitIfOutOfView(const osg::BoundingSphere& bound) {
    osgViewer::Viewer* viewer = view_.osgWidget()->viewer();
    if (!bound.valid() || !viewer || !view_.manipulator()) return;
    const osg::Matrixd& projection = viewer->getCamera()->getProjectionMatrix();
    const osg::Vec4d centre =
        osg::Vec4d(bound.center(), 1.0) * view_.manipulator()->getInverseMatrix() * projection;
    if (centre.w() > 0) {
        const double x = centre.x() / centre.w(), y = centre.y() / centre.w();
        // Half the view's height is 1 in clip space.
        const double radius = bound.radius() * projection(1, 1) / centre.w();
        if (std::fabs(x) <= 1 && std::fabs(y) <= 1 && radius > 0.02 && radius < 4.0) return;
    }
    zoomFit();
}
