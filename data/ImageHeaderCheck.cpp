#include "ImageHeaderCheck.h"

#include <cstring>

namespace qel {
namespace {

std::uint32_t bigEndian32(const std::uint8_t* p) {
    return std::uint32_t(p[0]) << 24 | std::uint32_t(p[1]) << 16 | std::uint32_t(p[2]) << 8 | p[3];
}

std::uint32_t littleEndian32(const std::uint8_t* p) {
    return std::uint32_t(p[3]) << 24 | std::uint32_t(p[2]) << 16 | std::uint32_t(p[1]) << 8 | p[0];
}

std::uint16_t littleEndian16(const std::uint8_t* p) {
    return std::uint16_t(p[1] << 8 | p[0]);
}

bool startsWith(const std::uint8_t* head, std::size_t size, const char* magic, std::size_t n) {
    return size >= n && std::memcmp(head, magic, n) == 0;
}

}  // namespace

ImageHeaderCheck::Format ImageHeaderCheck::formatOf(const std::uint8_t* head,
                                                    std::size_t headSize) {
    if (startsWith(head, headSize, "\x89PNG\r\n\x1a\n", 8)) return Format::Png;
    if (startsWith(head, headSize, "II*\0", 4) || startsWith(head, headSize, "MM\0*", 4))
        return Format::Tiff;
    if (startsWith(head, headSize, "BM", 2)) return Format::Bmp;
    if (startsWith(head, headSize, "\xff\xd8\xff", 3)) return Format::Jpeg;
    return Format::None;
}

bool ImageHeaderCheck::plausible(const std::uint8_t* head, std::size_t headSize,
                                 std::uint64_t fileSize) {
    switch (formatOf(head, headSize)) {
        case Format::Png:
            return png(head, headSize);
        case Format::Tiff:
            return tiff(head, headSize, fileSize);
        case Format::Bmp:
            return bmp(head, headSize, fileSize);
        case Format::Jpeg:
            return jpeg(head, headSize);
        default:
            return false;
    }
}

// The signature is followed by the IHDR chunk: length 13, then width and
// height (1 to 2^31 - 1), bit depth, colour type, compression 0, filter 0,
// interlace 0 or 1.
bool ImageHeaderCheck::png(const std::uint8_t* head, std::size_t headSize) {
    if (headSize < 8 + 8 + 13) return false;
    const std::uint8_t* chunk = head + 8;
    if (bigEndian32(chunk) != 13 || std::memcmp(chunk + 4, "IHDR", 4) != 0) return false;
    const std::uint8_t* d = chunk + 8;
    const std::uint32_t width = bigEndian32(d), height = bigEndian32(d + 4);
    if (width == 0 || height == 0 || width > 0x7FFFFFFFu || height > 0x7FFFFFFFu) return false;
    const std::uint8_t depth = d[8], colour = d[9];
    const bool depthOk = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    const bool colourOk = colour == 0 || colour == 2 || colour == 3 || colour == 4 || colour == 6;
    return depthOk && colourOk && d[10] == 0 && d[11] == 0 && d[12] <= 1;
}

// The first directory lies past the 8-byte header and inside the file.
bool ImageHeaderCheck::tiff(const std::uint8_t* head, std::size_t headSize,
                            std::uint64_t fileSize) {
    if (headSize < 8) return false;
    const std::uint32_t offset = head[0] == 'I' ? littleEndian32(head + 4) : bigEndian32(head + 4);
    if (offset < 8 || std::uint64_t(offset) + 2 > fileSize) return false;
    // A directory within the head must hold at least one entry.
    if (std::uint64_t(offset) + 2 <= headSize) {
        const std::uint8_t* count = head + offset;
        const unsigned entries =
            head[0] == 'I' ? littleEndian16(count) : (count[0] << 8 | count[1]);
        if (entries == 0) return false;
    }
    return true;
}

// File header (14 bytes), then an info header of a known size with a
// non-zero width and height, one plane and a known bit count; the pixels
// start inside the file.
bool ImageHeaderCheck::bmp(const std::uint8_t* head, std::size_t headSize, std::uint64_t fileSize) {
    if (headSize < 14 + 12) return false;
    const std::uint32_t pixels = littleEndian32(head + 10);
    const std::uint32_t info = littleEndian32(head + 14);
    if (pixels < 14 + 12 || pixels >= fileSize) return false;
    std::int64_t width = 0, height = 0;
    unsigned planes = 0, bits = 0;
    if (info == 12) {  // the oldest header: 16-bit sizes
        width = littleEndian16(head + 18);
        height = littleEndian16(head + 20);
        planes = littleEndian16(head + 22);
        bits = littleEndian16(head + 24);
    } else if (info == 40 || info == 52 || info == 56 || info == 64 || info == 108 || info == 124) {
        if (headSize < 14 + 16) return false;
        width = std::int32_t(littleEndian32(head + 18));
        height = std::int32_t(littleEndian32(head + 22));
        planes = littleEndian16(head + 26);
        bits = littleEndian16(head + 28);
    } else {
        return false;
    }
    const bool bitsOk =
        bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    return width > 0 && height != 0 && planes == 1 && bitsOk;
}

// Segments follow the start-of-image marker: each begins with 0xFF and a
// marker that may stand before the first frame, and carries a length of at
// least 2. Those within the head are walked.
bool ImageHeaderCheck::jpeg(const std::uint8_t* head, std::size_t headSize) {
    std::size_t at = 2;
    int segments = 0;
    while (at + 4 <= headSize) {
        if (head[at] != 0xFF) return false;
        const std::uint8_t marker = head[at + 1];
        if (marker == 0xFF) {  // fill byte before a marker
            ++at;
            continue;
        }
        const bool tables = marker == 0xC4 || marker == 0xCC || marker == 0xDB || marker == 0xDD ||
                            marker == 0xFE || (marker >= 0xE0 && marker <= 0xEF);
        const bool frame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (!tables && !frame) return false;
        const unsigned length = unsigned(head[at + 2]) << 8 | head[at + 3];
        if (length < 2) return false;
        ++segments;
        if (frame) return true;  // the frame header: the image begins
        at += 2 + length;
    }
    return segments > 0;  // every segment in the head is well formed
}

}  // namespace qel
