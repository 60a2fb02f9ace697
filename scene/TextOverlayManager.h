#pragma once

#include <memory>
#include <osg/Group>
#include <vector>

#include "TextOverlay.h"

// The text overlays of a view, in insertion order, with the group node their
// geodes hang under. The group is drawn after everything else.
class TextOverlayManager {
public:
    TextOverlayManager();

    osg::Group* group() const { return group_.get(); }
    // False (and nothing added) when the same overlay is listed already.
    bool add(std::unique_ptr<TextOverlay> overlay);
    // False when no overlay has the id.
    bool remove(ObjectId id);
    void clear();
    int count() const { return static_cast<int>(overlays_.size()); }
    TextOverlay* find(ObjectId id) const;
    // Where the overlays are anchored.
    osg::BoundingBox bounds() const;

private:
    osg::ref_ptr<osg::Group> group_;
    std::vector<std::unique_ptr<TextOverlay>> overlays_;
};
