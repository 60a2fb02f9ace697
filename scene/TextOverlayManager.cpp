#include "TextOverlayManager.h"

#include <algorithm>

TextOverlayManager::TextOverlayManager() : group_(new osg::Group) {
    // Text has no depth test; drawing it last keeps it over the data.
    group_->getOrCreateStateSet()->setRenderBinDetails(1000, "RenderBin");
}

bool TextOverlayManager::add(std::unique_ptr<TextOverlay> overlay) {
    if (!overlay) return false;
    for (const auto& o : overlays_)
        if (o.get() == overlay.get()) return false;
    group_->addChild(overlay->geode());
    overlays_.push_back(std::move(overlay));
    return true;
}

bool TextOverlayManager::remove(ObjectId id) {
    const auto it = std::find_if(overlays_.begin(), overlays_.end(),
                                 [&](const auto& o) { return o->id() == id; });
    if (it == overlays_.end()) return false;
    group_->removeChild((*it)->geode());
    overlays_.erase(it);
    return true;
}

void TextOverlayManager::clear() {
    group_->removeChildren(0, group_->getNumChildren());
    overlays_.clear();
}

TextOverlay* TextOverlayManager::find(ObjectId id) const {
    for (const auto& o : overlays_)
        if (o->id() == id) return o.get();
    return nullptr;
}

osg::BoundingBox TextOverlayManager::bounds() const {
    osg::BoundingBox box;
    for (const auto& overlay : overlays_)
        box.expandBy(overlay->itemBounds());
    return box;
}
