#pragma once

#include <osg/Matrixd>
#include <osg/Vec2d>
#include <osg/Vec3d>

namespace osg {
class Camera;
}

// Maps between world points and window pixels (x right, y up, z the depth
// in 0..1) for a camera's current view, projection and viewport.
class ScreenProjection {
public:
    explicit ScreenProjection(const osg::Camera& camera);

    // False without a usable viewport or with a singular projection.
    bool valid() const { return valid_; }
    int width() const { return width_; }
    int height() const { return height_; }
    bool orthographic() const { return orthographic_; }
    const osg::Vec3d& eye() const { return eye_; }
    const osg::Vec3d& centre() const { return centre_; }

    osg::Vec3d toWindow(const osg::Vec3d& world) const { return world * toWindow_; }
    osg::Vec3d toWorld(const osg::Vec3d& window) const { return window * toWorld_; }
    // Whether the point lies ahead of the eye (the depth range is not
    // consulted: the near and far planes follow the scene a frame late).
    bool inFront(const osg::Vec3d& world) const { return (world * view_).z() < 0.0; }
    // The world point drawn 'pixels' away from 'world' on the screen, at
    // the same depth.
    osg::Vec3d shifted(const osg::Vec3d& world, const osg::Vec2d& pixels) const;

private:
    osg::Matrixd view_;
    osg::Matrixd toWindow_;
    osg::Matrixd toWorld_;
    osg::Vec3d eye_, centre_;
    int width_ = 0;
    int height_ = 0;
    bool orthographic_ = false;
    bool valid_ = false;
};
