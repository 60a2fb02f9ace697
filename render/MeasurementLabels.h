#pragma once

#include <map>
#include <osg/NodeCallback>
#include <osg/Vec2d>
#include <vector>

#include "LabelCanvas.h"
#include "SceneModes.h"

namespace osg {
class Camera;
}
class ClipPlane;
class Measurement;
class MeasurementSet;
class ViewDecorations;

// Lays out the measurement labels of a view as they are culled: each at the
// character size of the view's pixel ratio, beside its anchor on the side
// where it touches neither an earlier label nor a label of the cube axis,
// and if it can, no measurement's line. A label with no such place, or
// whose anchor the clip plane cuts away, is left out.
class MeasurementLabels : public osg::NodeCallback {
public:
    // Where a shown label went, in window pixels (y up).
    struct Box {
        ObjectId id;
        double left, bottom, right, top;
        bool overlaps(const Box& other, double margin) const;
    };

    MeasurementLabels(const MeasurementSet& measurements, const ViewDecorations& decorations,
                      const ClipPlane& clip)
        : measurements_(measurements), decorations_(decorations), clip_(clip) {}

    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override;
    const std::vector<Box>& boxes() const { return boxes_; }
    // What draws the labels, to put in the scene after the measurements.
    osg::Node* canvas() const { return canvas_.node(); }

    // Label height in logical pixels.
    static constexpr float kLabelSize = 14.0f;

private:
    // A label's width in pixels at a character size, measured once, and
    // the pitch of its lines.
    struct Extent {
        float size;
        double width, lineHeight;
    };
    const Extent& extentOf(const Measurement& measurement, float size);
    // Whether the camera, the clip plane, the axis labels or the shown
    // measurements differ from the last layout (laid out again only then).
    bool layoutChanged(const osg::Camera& camera);

    const MeasurementSet& measurements_;
    std::map<ObjectId, Extent> extents_;
    std::vector<double> layoutKey_;
    const ViewDecorations& decorations_;
    const ClipPlane& clip_;
    std::vector<Box> boxes_;
    LabelCanvas canvas_;
};
