#pragma once

#include <cstdint>

// What a render object will take in memory, estimated before it is built,
// against what the machine can give: half of the physical memory, or the
// number of megabytes in the environment variable QEL3D_MEMORY_LIMIT_MB.
// A display or add that would exceed it is refused at once (11501005)
// instead of growing until the machine gives out.
class MemoryBudget {
public:
    // The bytes one render object may take.
    static std::uint64_t limit();
    static bool fits(std::uint64_t bytes) { return bytes <= limit(); }

    // Estimates, counting the object's copy of the data, its scene-graph
    // arrays and the driver's copy of them.
    static std::uint64_t pointCloud(std::uint64_t points, int colourChannels);
    // step: the sampling step that will be used (1 = every sample).
    static std::uint64_t rangeImage(std::uint64_t width, std::uint64_t height, int sampleBytes,
                                    int colourChannels, int step);
    static std::uint64_t triangleMesh(std::uint64_t vertices, std::uint64_t triangles);
};
