#pragma once

#include <cstddef>
#include <cstdint>

class QelRangeImage;

namespace qel {

// A range image from a PNG, TIFF, BMP or JPEG file, recognised by its
// signature whatever the file's suffix; other content is refused. The sample type follows the
// file's depth: 8-bit, 16-bit, 32-bit integer and float samples are kept as
// they are. Colour images give their luminance as heights and, with
// withColors, their colours. Non-finite float samples become invalid.
class ImageRangeReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, bool withColors,
                     QelRangeImage& out);
    // Whether the first bytes are those of a PNG, TIFF, BMP or JPEG file.
    static bool hasImageSignature(const std::uint8_t* head, std::size_t size);
};

}  // namespace qel
