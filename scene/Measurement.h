#pragma once

#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <osg/ref_ptr>
#include <osgText/Text>
#include <vector>

#include "MeasurementGeometry.h"
#include "SceneItem.h"

// One measurement drawn in a view: a distance as a line with end marks, an
// angle as its two legs and an arc, a height as the plane's points, a patch
// of the plane at the foot and a dashed drop line, each with its label.
// Lines and marks keep their size in pixels and are drawn over the data;
// they take the label colour (the inverse of the background).
class Measurement : public SceneItem {
public:
    // prototype: the text the label is copied from (its font).
    Measurement(ObjectId id, const MeasurementGeometry& geometry, const osgText::Text& prototype,
                const osg::Vec4& colour);

    const MeasurementGeometry& geometry() const { return geometry_; }
    osg::Node* node() const { return root_.get(); }
    // The label's lines, top first.
    const std::vector<osg::ref_ptr<osgText::Text>>& labelLines() const { return labels_; }
    // The label's own node: shown or hidden whole, never cut.
    osg::Node* labelNode() const { return labelGeode_.get(); }
    void setColour(const osg::Vec4& colour);

    ObjectId itemId() const override { return id_; }
    void setItemVisible(bool visible) override;
    // Its colour follows the background.
    bool setItemColours(const osg::Vec4Array&) override { return false; }
    bool applyItemMatrix(const osg::Matrix&) override { return false; }
    bool setItemPointSize(float size) override;
    bool setItemLineWidth(float width) override;
    osg::BoundingBox itemBounds() const override;

private:
    osg::Geometry* addGeometry(GLenum mode, const std::vector<osg::Vec3d>& vertices);
    void buildDistance();
    void buildAngle();
    void buildHeight();

    ObjectId id_;
    MeasurementGeometry geometry_;
    osg::ref_ptr<osg::Group> root_;
    osg::ref_ptr<osg::Geode> geode_;
    osg::ref_ptr<osg::Geode> labelGeode_;
    osg::ref_ptr<osg::Vec4Array> colour_;
    osg::ref_ptr<osg::Vec4Array> patchColour_;
    std::vector<osg::ref_ptr<osgText::Text>> labels_;
};
