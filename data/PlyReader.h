#pragma once

#include "GeometryData.h"

namespace qel {

// PLY, ASCII and binary (either byte order): vertex x, y, z with optional
// red, green, blue (and alpha) as bytes or as floats in 0..1, and faces as
// vertex index lists (polygons become triangle fans). Other elements and
// properties are skipped.
class PlyReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
};

}  // namespace qel
