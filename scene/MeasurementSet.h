#pragma once

#include <memory>
#include <osg/Group>
#include <vector>

#include "Measurement.h"

// The measurements of a view, in the order they were added, under one group
// drawn after the data.
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

private:
    osg::ref_ptr<osg::Group> group_;
    std::vector<std::unique_ptr<Measurement>> measurements_;
};
