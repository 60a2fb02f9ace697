#pragma once

#include "SceneItem.h"

#include <osg/Geode>
#include <osg/Vec3>
#include <osg/Vec4>
#include <osgText/Text>
#include <string>

// One screen-facing text in a view: a copy of the view's text prototype in
// its own geode, drawn without depth test so data never hides it. As an
// item it can be hidden and recoloured; it has no matrix and no sizes.
class TextOverlay : public SceneItem {
public:
    TextOverlay(const osgText::Text& prototype, ObjectId id, const std::wstring& text,
                const osg::Vec3& position, float size, const osg::Vec4& colour);

    ObjectId id() const { return id_; }
    osg::Geode* geode() const { return geode_.get(); }
    osgText::Text* text() const { return text_.get(); }
    // The host's text, whole; what is drawn is cut to kMaxLaidOutCharacters.
    const std::wstring& fullText() const { return fullText_; }

    ObjectId itemId() const override { return id_; }
    void setItemVisible(bool visible) override;
    bool setItemColours(const osg::Vec4Array& colours) override;
    bool applyItemMatrix(const osg::Matrix&) override { return false; }
    bool setItemPointSize(float) override { return false; }
    bool setItemLineWidth(float) override { return false; }
    osg::BoundingBox itemBounds() const override;

private:
    std::wstring fullText_;
    osg::ref_ptr<osgText::Text> text_;
    osg::ref_ptr<osg::Geode> geode_;
    ObjectId id_;
};
