#pragma once

#include <osg/LineWidth>

// A line width in logical pixels: drawn at the device pixels of the view
// that draws it, so lines keep their look on high-density screens.
class ScaledLineWidth : public osg::LineWidth {
public:
    explicit ScaledLineWidth(float width = 1.0f) : osg::LineWidth(width) {}
    ScaledLineWidth(const ScaledLineWidth& other,
                    const osg::CopyOp& copy = osg::CopyOp::SHALLOW_COPY)
        : osg::LineWidth(other, copy) {}
    META_StateAttribute(qel, ScaledLineWidth, LINEWIDTH)

        void apply(osg::State& state) const override;

protected:
    ~ScaledLineWidth() override = default;
};
