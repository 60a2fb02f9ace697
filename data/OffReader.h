#pragma once

#include "GeometryData.h"

namespace qel {

// Object File Format: an "OFF" keyword (with optional C for vertex colours
// and N for normals: COFF, NOFF, CNOFF, NCOFF), the counts of vertices,
// faces and edges, one vertex per line, then faces as "n i1 ... in"
// (0-based; polygons become triangle fans). Colours may be bytes or floats
// in 0..1. Text after '#' is a comment.
class OffReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
};

}  // namespace qel
