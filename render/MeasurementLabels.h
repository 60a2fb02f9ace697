#pragma once

#include <map>
#include <osg/NodeCallback>
#include <osg/Vec2d>
#include <vector>

#include "SceneModes.h"

class Measurement;
class MeasurementSet;
class ViewDecorations;

// Lays out the measurement labels of a view as they are culled: each at the
// character size of the view's pixel ratio, beside its anchor on the side
// where it touches neither an earlier label nor a label of the cube axis.
class MeasurementLabels : public osg::NodeCallback {
public:
    // Where a label went, in window pixels (y up).
    struct Box {
        ObjectId id;
        double left, bottom, right, top;
        bool overlaps(const Box& other, double margin) const;
    };

    MeasurementLabels(const MeasurementSet& measurements, const ViewDecorations& decorations)
        : measurements_(measurements), decorations_(decorations) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override;
    const std::vector<Box>& boxes() const { return boxes_; }

    // Label height in logical pixels.
    static constexpr float kLabelSize = 14.0f;

private:
    struct Extent {
        float size;
        osg::Vec2d pixels;
    };
    // A label's width and height in pixels at a character size, measured
    // once on a fresh text (a drawn one reports its size in the world).
    osg::Vec2d extentOf(const Measurement& measurement, float size);

    const MeasurementSet& measurements_;
    std::map<ObjectId, Extent> extents_;
    const ViewDecorations& decorations_;
    std::vector<Box> boxes_;
};
