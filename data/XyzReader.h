#pragma once

#include "GeometryData.h"

namespace qel {

// Plain-text points, one per line: x y z separated by spaces, tabs, commas
// or semicolons, optionally followed by three more columns. Those are
// colours for .xyzrgb (bytes, or floats when none exceeds 1) and normals
// (ignored) for .xyzn; for other suffixes they are colours when every value
// is a whole number in 0..255, normals otherwise. Lines starting with '#' or
// "//" are comments, and a first line that is not numeric is a header.
class XyzReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out);
};

}  // namespace qel
