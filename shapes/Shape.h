#pragma once

#include "BasePrimitive.h"
#include "SceneItem.h"

// The base of every shape adapter: the render mode and the colour and
// blending state all shapes share. A shape draws as wireframe (its line
// form) or faces (its surface form).
class Shape : public virtual BasePrimitive, public SceneItem {
public:
    explicit Shape(ObjectId id);

    // The first colour of the array becomes the shape's colour; false for
    // an empty array.
    virtual bool setColor(const osg::Vec4Array& colours);
    // Always empties the geometry; rebuilds it as wireframe or faces, and
    // keeps the old mode (and an empty shape) for points, which no shape
    // draws.
    virtual void setShapeMode(RenderMode mode);
    RenderMode mode() const { return mode_; }

    // As an item of the view's content.
    ObjectId itemId() const override { return getId(); }
    void setItemVisible(bool visible) override { setVisible(visible); }
    bool setItemColours(const osg::Vec4Array& colours) override { return setColor(colours); }
    bool applyItemMatrix(const osg::Matrix& matrix) override;
    bool setItemPointSize(float size) override;
    bool setItemLineWidth(float width) override;
    osg::BoundingBox itemBounds() const override;

protected:
    RenderMode mode_ = RenderMode::Faces;
};
