#pragma once

#include <osg/ref_ptr>
#include <osgText/Text>
#include <string>

// The text every overlay of a view is copied from, so the font file is read
// once per view. The font is "simkai.ttf" from the font search path or the
// library's own directory, else the Kai-style CJK font of fonts-arphic-ukai,
// else the text library's default font.
class TextPrototype {
public:
    // Creates the text and loads the font on first use.
    osgText::Text* text();
    // The font file that was found, empty for the default font.
    const std::string& fontFile() const { return fontFile_; }

    static std::string findFontFile();

private:
    bool loaded_ = false;
    osg::ref_ptr<osgText::Text> text_;
    std::string fontFile_;
};
