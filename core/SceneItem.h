#pragma once

#include <osg/Array>
#include <osg/BoundingBox>
#include <osg/ComputeBoundsVisitor>
#include <osg/Matrix>

#include "SceneModes.h"

// What every thing shown by id in a view shares: render objects (streams
// among them), shapes and text overlays. The content of a view finds an id
// once and changes it through this interface. A change that does not apply
// to a kind of item returns false and changes nothing.
class SceneItem {
public:
    virtual ~SceneItem() = default;

    virtual ObjectId itemId() const = 0;
    virtual void setItemVisible(bool visible) = 0;
    // Colours 0..1, one per vertex or one for all (shapes and texts take the
    // first); false when the count does not fit.
    virtual bool setItemColours(const osg::Vec4Array& colours) = 0;
    // A model matrix in the scene graph's row-vector form: a render object
    // takes it as its matrix, a shape applies it before its own pose.
    virtual bool applyItemMatrix(const osg::Matrix& matrix) = 0;
    // Sizes in logical pixels.
    virtual bool setItemPointSize(float size) = 0;
    virtual bool setItemLineWidth(float width) = 0;
    // The bounds in world coordinates, shown or hidden (invalid while empty).
    virtual osg::BoundingBox itemBounds() const = 0;

    // The world box of a node's drawables, shown or hidden.
    static osg::BoundingBox boundsOf(osg::Node& node) {
        osg::ComputeBoundsVisitor bounds;
        bounds.setNodeMaskOverride(~0u);
        node.accept(bounds);
        return bounds.getBoundingBox();
    }
};
