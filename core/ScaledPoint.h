#pragma once

#include <osg/Point>

// A point size in logical pixels: drawn at the device pixels of the view
// that draws it, so points keep their look on high-density screens.
class ScaledPoint : public osg::Point {
public:
    explicit ScaledPoint(float size = 1.0f) : osg::Point(size) {}
    ScaledPoint(const ScaledPoint& other, const osg::CopyOp& copy = osg::CopyOp::SHALLOW_COPY)
        : osg::Point(other, copy) {}
    META_StateAttribute(qel, ScaledPoint, POINT)

        void apply(osg::State& state) const override;

protected:
    ~ScaledPoint() override = default;
};
