#pragma once

#include "GeometryData.h"

namespace qel {

// Wavefront OBJ: "v x y z [w]" or "v x y z r g b" (colours in 0..1), and
// "f" with 1-based or negative (relative) indices in any of the i, i/t,
// i//n, i/t/n forms; polygons become triangle fans. Other statements are
// skipped.
class ObjReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
};

}  // namespace qel
