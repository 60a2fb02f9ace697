#pragma once

#include <osg/ref_ptr>
#include <osgText/Font>

// The face of labels that show numbers (the cube axis, measurements): a
// plain sans face reads best for them. Null when it is not installed; the
// text library's own font is used then.
class LabelFont {
public:
    static osg::ref_ptr<osgText::Font> load();
    // The face's file, for text engines that load it themselves.
    static const char* path();
};
