#pragma once

#include <osg/Geode>
#include <osg/Vec3>
#include <osg/Vec4>
#include <osgText/Text>
#include <string>

// One screen-facing text in a view: a copy of the view's text prototype in
// its own geode, drawn without depth test so data never hides it.
class TextOverlay {
public:
    TextOverlay(const osgText::Text& prototype, unsigned int id, const std::wstring& text,
                const osg::Vec3& position, float size, const osg::Vec4& colour);

    unsigned int id() const { return id_; }
    osg::Geode* geode() const { return geode_.get(); }
    osgText::Text* text() const { return text_.get(); }
    // The host's text, whole; what is drawn is cut to kMaxLaidOutCharacters.
    const std::wstring& fullText() const { return fullText_; }

private:
    std::wstring fullText_;
    osg::ref_ptr<osgText::Text> text_;
    osg::ref_ptr<osg::Geode> geode_;
    unsigned int id_;
};
