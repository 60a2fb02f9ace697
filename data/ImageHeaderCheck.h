#pragma once

#include <cstddef>
#include <cstdint>

namespace qel {

// Whether the first bytes of an image file can begin a valid image of the
// format its signature names (PNG's IHDR chunk, TIFF's first directory
// offset, BMP's info header, JPEG's first segments), so a file whose header
// cannot be right is refused before the rest of it is read.
class ImageHeaderCheck {
public:
    // The four formats whose decoders are ever handed a file.
    enum class Format { None, Png, Tiff, Bmp, Jpeg };
    // The format the first bytes' signature names.
    static Format formatOf(const std::uint8_t* head, std::size_t headSize);
    static bool plausible(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize);

private:
    static bool png(const std::uint8_t* head, std::size_t headSize);
    static bool tiff(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize);
    static bool bmp(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize);
    static bool jpeg(const std::uint8_t* head, std::size_t headSize);
};

}  // namespace qel
