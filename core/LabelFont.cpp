#include "LabelFont.h"

#include <filesystem>
#include <osgText/Font>

namespace {
const char kFace[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
}  // namespace

osg::ref_ptr<osgText::Font> LabelFont::load() {
    std::error_code ec;
    if (!std::filesystem::exists(kFace, ec)) return nullptr;
    return osgText::readRefFontFile(kFace);
}

const char* LabelFont::path() {
    return kFace;
}
