#include "TextPrototype.h"

#include <dlfcn.h>

#include <filesystem>
#include <osgDB/FileUtils>
#include <osgText/Font>

namespace {

const char kPreferredFont[] = "simkai.ttf";
const char kFallbackFont[] = "/usr/share/fonts/truetype/arphic/ukai.ttc";

std::string libraryDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&TextPrototype::findFontFile), &info) == 0 ||
        !info.dli_fname)
        return {};
    return std::filesystem::path(info.dli_fname).parent_path().string();
}

}  // namespace

std::string TextPrototype::findFontFile() {
    std::string found = osgDB::findDataFile(kPreferredFont);
    if (found.empty())
        found =
            osgDB::findFileInDirectory(kPreferredFont, "/usr/share/fonts", osgDB::CASE_INSENSITIVE);
    if (found.empty()) {
        const std::string dir = libraryDirectory();
        std::error_code ec;
        if (!dir.empty() && std::filesystem::exists(dir + "/" + kPreferredFont, ec))
            found = dir + "/" + kPreferredFont;
    }
    std::error_code ec;
    if (found.empty() && std::filesystem::exists(kFallbackFont, ec)) found = kFallbackFont;
    return found;
}

osgText::Text* TextPrototype::text() {
    if (loaded_) return text_.get();
    text_ = new osgText::Text;
    // Sizes are in scene units, so overlays scale with the data they label.
    text_->setCharacterSizeMode(osgText::Text::OBJECT_COORDS);
    fontFile_ = findFontFile();
    if (!fontFile_.empty()) {
        osg::ref_ptr<osgText::Font> font = osgText::readRefFontFile(fontFile_);
        if (font.valid())
            text_->setFont(font);
        else
            fontFile_.clear();
    }
    loaded_ = true;
    return text_.get();
}
