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
};

}  // namespace qel
