#include "MemoryBudget.h"

#include <unistd.h>

#include <cstdlib>

namespace {

// Per drawn vertex: position and normal (12 + 12), colour (16), the
// driver's copy of the three (40), and triangle indices (two per vertex of
// a grid, 24).
constexpr std::uint64_t kPerVertex = 12 + 12 + 16 + 40 + 24;

}  // namespace

std::uint64_t MemoryBudget::limit() {
    if (const char* text = std::getenv("QEL3D_MEMORY_LIMIT_MB")) {
        char* end = nullptr;
        const unsigned long long mb = std::strtoull(text, &end, 10);
        if (end != text && *end == '\0' && mb > 0) return mb << 20;
    }
    const long pages = ::sysconf(_SC_PHYS_PAGES), pageSize = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0) return UINT64_MAX;
    return std::uint64_t(pages) * std::uint64_t(pageSize) / 2;
}

std::uint64_t MemoryBudget::pointCloud(std::uint64_t points, int colourChannels) {
    // The object's copy of the cloud (12 + colours) and its vertex arrays.
    return points * (12 + std::uint64_t(colourChannels) + kPerVertex);
}

std::uint64_t MemoryBudget::rangeImage(std::uint64_t width, std::uint64_t height, int sampleBytes,
                                       int colourChannels, int step) {
    const std::uint64_t pixels = width * height;
    const std::uint64_t s = step > 0 ? std::uint64_t(step) : 1;
    const std::uint64_t sampled = (width / s) * (height / s);
    // Two copies of samples and colours (the object's and its level
    // builder's), the full-size colour pass (3 bytes a pixel), and per
    // sampled pixel the level image, its two coordinate maps (8) and the
    // vertex arrays.
    return pixels * (2 * (std::uint64_t(sampleBytes) + std::uint64_t(colourChannels)) + 3) +
           sampled * (std::uint64_t(sampleBytes) + 8 + kPerVertex);
}

std::uint64_t MemoryBudget::triangleMesh(std::uint64_t vertices, std::uint64_t triangles) {
    // The object's copy (12 a vertex, 12 a triangle), vertex arrays and the
    // index list with the driver's copy.
    return vertices * (12 + kPerVertex) + triangles * 12 * 3;
}
