#pragma once

#include <memory>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <vector>

#include "Measurement.h"

// The measurements of a view, in the order they were added, under one group
// drawn after the data. The lines, marks, dashes and plane patches of every
// shown measurement are drawn together, four geometries in all (a thousand
// measurements cost four draws, not thousands); the view draws the labels.
// Lines, marks and labels keep their size in pixels and take the set's
// colour.
class MeasurementSet {
public:
    MeasurementSet();

    osg::Group* group() const { return group_.get(); }
    void add(std::unique_ptr<Measurement> measurement);
    // False when no measurement has the id.
    bool remove(ObjectId id);
    void clear();
    Measurement* find(ObjectId id) const;
    int count() const { return static_cast<int>(measurements_.size()); }
    Measurement* at(int index) const { return measurements_.at(size_t(index)).get(); }
    void setColour(const osg::Vec4& colour);
    const osg::Vec4& colour() const { return (*colour_)[0]; }
    // Rebuilds the shared geometries after a change (called as the group is culled).
    void refresh();

private:
    osg::ref_ptr<osg::Group> group_;
    osg::ref_ptr<osg::Geode> drawn_;
    osg::ref_ptr<osg::Geometry> lines_, marks_, dashes_, patches_;
    osg::ref_ptr<osg::Vec4Array> colour_, patchColour_;
    std::vector<std::unique_ptr<Measurement>> measurements_;
    bool dirty_ = false;
};
