#include "ScreenProjection.h"

#include <osg/Camera>

ScreenProjection::ScreenProjection(const osg::Camera& camera) {
    const osg::Viewport* viewport = camera.getViewport();
    if (!viewport) return;
    width_ = static_cast<int>(viewport->width());
    height_ = static_cast<int>(viewport->height());
    if (width_ < 1 || height_ < 1) return;
    osg::Vec3d up;
    camera.getViewMatrixAsLookAt(eye_, centre_, up);
    const osg::Matrixd& projection = camera.getProjectionMatrix();
    // An orthographic projection keeps w = 1.
    orthographic_ = projection(3, 3) == 1.0 && projection(2, 3) == 0.0;
    view_ = camera.getViewMatrix();
    toWindow_ = view_ * projection * viewport->computeWindowMatrix();
    valid_ = toWorld_.invert(toWindow_) && toWindow_.valid();
}

osg::Vec3d ScreenProjection::shifted(const osg::Vec3d& world, const osg::Vec2d& pixels) const {
    const osg::Vec3d window = toWindow(world);
    return toWorld(osg::Vec3d(window.x() + pixels.x(), window.y() + pixels.y(), window.z()));
}
