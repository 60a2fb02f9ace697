#include "MeasurementSet.h"

#include <algorithm>

#include "NodeMasks.h"

MeasurementSet::MeasurementSet() : group_(new osg::Group) {
    group_->setName("measurements");
    // Drawn after the data and the shapes, like the texts; never picked.
    group_->getOrCreateStateSet()->setRenderBinDetails(1001, "RenderBin");
    group_->setNodeMask(NodeMasks::kNotPickable);
}

void MeasurementSet::add(std::unique_ptr<Measurement> measurement) {
    group_->addChild(measurement->node());
    measurements_.push_back(std::move(measurement));
}

bool MeasurementSet::remove(ObjectId id) {
    const auto it = std::find_if(measurements_.begin(), measurements_.end(),
                                 [&](const auto& m) { return m->itemId() == id; });
    if (it == measurements_.end()) return false;
    group_->removeChild((*it)->node());
    measurements_.erase(it);
    return true;
}

void MeasurementSet::clear() {
    // Only the measurements' own nodes: a tool may draw beside them.
    for (const auto& m : measurements_)
        group_->removeChild(m->node());
    measurements_.clear();
}

Measurement* MeasurementSet::find(ObjectId id) const {
    for (const auto& m : measurements_)
        if (m->itemId() == id) return m.get();
    return nullptr;
}

void MeasurementSet::setColour(const osg::Vec4& colour) {
    for (const auto& m : measurements_)
        m->setColour(colour);
}
