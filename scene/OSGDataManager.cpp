#include "OSGDataManager.h"

#include <algorithm>

OSGDataManager::OSGDataManager() : group_(new osg::Group) {
    group_->setName("render objects");
}

OSGDataManager::~OSGDataManager() {
    clear();
}

void OSGDataManager::add(std::unique_ptr<OSGData> object) {
    if (!object) return;
    for (const auto& o : objects_)
        if (o.get() == object.get()) {
            object.release();  // already owned here
            return;
        }
    group_->addChild(object->node());
    objects_.push_back(std::move(object));
}

OSGData* OSGDataManager::find(ObjectId id) const {
    for (const auto& o : objects_)
        if (o->id() == id) return o.get();
    return nullptr;
}

template <typename Pred>
void OSGDataManager::removeIf(Pred pred) {
    const bool hadObjects = !objects_.empty();
    auto keep = std::stable_partition(objects_.begin(), objects_.end(),
                                      [&](const auto& o) { return !pred(*o); });
    for (auto it = keep; it != objects_.end(); ++it)
        group_->removeChild((*it)->node());
    objects_.erase(keep, objects_.end());
    if (hadObjects && objects_.empty()) emit sig_dataIsEmpty();
}

bool OSGDataManager::remove(ObjectId id) {
    if (!find(id)) return false;
    bool done = false;
    removeIf([&](const OSGData& o) {
        if (done || o.id() != id) return false;
        done = true;  // only the first with that id
        return true;
    });
    return true;
}

void OSGDataManager::removeKind(ObjectKind kind) {
    if (kind == ObjectKind::RangeImage || kind == ObjectKind::RangeImageStream) {
        removeRangeImages();
        return;
    }
    removeIf([&](const OSGData& o) { return o.kind() == kind; });
}

void OSGDataManager::removeRangeImages() {
    removeIf([](const OSGData& o) {
        return o.kind() == ObjectKind::RangeImage || o.kind() == ObjectKind::RangeImageStream;
    });
}

void OSGDataManager::clear() {
    removeIf([](const OSGData&) { return true; });
}

OSGData* OSGDataManager::at(int index) const {
    if (index < 0 || index >= count()) return nullptr;
    return objects_[static_cast<size_t>(index)].get();
}

void OSGDataManager::setModeForAll(RenderMode mode) {
    for (const auto& o : objects_)
        o->setRenderMode(mode);
}

void OSGDataManager::setSwitchForAll(bool useHeightColours) {
    for (const auto& o : objects_)
        o->setUseHeightColours(useHeightColours);
}
