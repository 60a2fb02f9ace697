#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qel {

// What a geometry reader produced: vertices (non-finite values mark invalid
// ones), optional 8-bit colours and triangles whose indices are known to be
// in range.
struct GeometryData {
    std::vector<float> xyz;
    std::vector<std::uint8_t> colors;  // colorChannels bytes per vertex
    int colorChannels = 0;             // 0, 3 or 4
    std::vector<int> triangles;

    std::size_t vertexCount() const { return xyz.size() / 3; }
};

// What a reader is asked for.
struct ReadOptions {
    bool faces = true;   // read faces too (mesh loaders)
    std::string suffix;  // lower-case file suffix, for formats that depend on it
};

// Reads one file format from memory; 0 or a QelDataStatus.
using GeometryReader = long (*)(const std::uint8_t* data, std::size_t size,
                                const ReadOptions& options, GeometryData& out);

}  // namespace qel
