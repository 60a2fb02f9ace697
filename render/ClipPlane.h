#pragma once

#include <osg/Vec4>
#include <osg/Vec4d>

class GLViewer;
class Qel3DPlane;

// The view's clip plane: points p with n . p + d >= 0 stay. The lighting
// program cuts the data, the cube axis cuts its own grid, and the picker
// passes by what is cut.
class ClipPlane {
public:
    explicit ClipPlane(GLViewer& view) : view_(view) {}

    void setClipPlane(const Qel3DPlane& plane);
    // The plane (a, b, c, d) when one is set.
    bool clipPlane(osg::Vec4d* plane) const;
    bool isOn() const { return on_; }
    const osg::Vec4& plane() const { return plane_; }

private:
    GLViewer& view_;
    bool on_ = false;
    osg::Vec4 plane_;
};
