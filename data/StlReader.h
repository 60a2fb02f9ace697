#pragma once

#include "GeometryData.h"

namespace qel {

// STL, ASCII ("solid ... facet ... vertex x y z ...") and binary (80-byte
// header, triangle count, 50 bytes per triangle). Every triangle gets its
// own three vertices, as the file stores them.
class StlReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
    // True when the file's size is exactly 84 + 50 x the count at byte 80
    // (head: the file's first bytes).
    static bool isBinaryBySize(const std::uint8_t* head, std::size_t headSize,
                               std::uint64_t fileSize);
};

}  // namespace qel
