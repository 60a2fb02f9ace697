#pragma once

#include "GeometryData.h"

namespace qel {

// Point Cloud Data files (version 0.7 header) with DATA ascii, binary or
// binary_compressed (LZF, fields stored one after another). Reads the x, y
// and z fields and a packed rgb or rgba field; NaN coordinates are invalid
// points.
class PcdReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
};

}  // namespace qel
