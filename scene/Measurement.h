#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "MeasurementGeometry.h"
#include "SceneItem.h"

// What a measurement draws, in world coordinates: line segments (pairs),
// end marks, dashed segments (pairs) and the triangles of plane patches.
// The measurement set draws every measurement's in a few geometries.
struct MeasurementDrawing {
    std::vector<osg::Vec3> lines, marks, dashes, patches;
};

// One measurement in a view: a distance as a line with end marks, an angle
// as its two legs and an arc, a height as the plane's points, a patch of
// the plane at the foot and a dashed drop line, each with its label. Its
// lines are the set's to draw, its label the view's to place.
class Measurement : public SceneItem {
public:
    Measurement(ObjectId id, const MeasurementGeometry& geometry);

    const MeasurementGeometry& geometry() const { return geometry_; }
    const MeasurementDrawing& drawing() const { return drawing_; }
    bool visible() const { return visible_; }
    // Called when the measurement is shown or hidden.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }
    // The label's lines, top first.
    const std::vector<std::string>& labelLines() const { return labels_; }

    ObjectId itemId() const override { return id_; }
    void setItemVisible(bool visible) override;
    // Its colour follows the background.
    bool setItemColours(const osg::Vec4Array&) override { return false; }
    bool applyItemMatrix(const osg::Matrix&) override { return false; }
    // Sizes are the view's, the same for every measurement.
    bool setItemPointSize(float) override { return false; }
    bool setItemLineWidth(float) override { return false; }
    osg::BoundingBox itemBounds() const override;

private:
    void addLines(std::initializer_list<osg::Vec3d> pairs);
    void addMarks(std::initializer_list<osg::Vec3d> marks);
    void buildDistance();
    void buildAngle();
    void buildHeight();

    ObjectId id_;
    MeasurementGeometry geometry_;
    MeasurementDrawing drawing_;
    bool visible_ = true;
    std::function<void()> changed_;
    std::vector<std::string> labels_;
};
