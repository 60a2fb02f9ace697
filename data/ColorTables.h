#pragma once

#include <array>
#include <cstdint>

namespace qel {

struct Rgb8 {
    std::uint8_t r, g, b;
};

// The seven colour look-up tables, evaluated exactly (GetColor) or through a
// pre-sampled table (bulk colouring of range images).
class ColorTables {
public:
    static constexpr int kSamples = 4096;

    // Colour of table lut at position t in [0, 1] (0 = high end); lut must be
    // in 0..6 and t already clamped.
    static Rgb8 evaluate(int lut, double t);
    // kSamples colours of a table, built once per process.
    static const std::array<Rgb8, kSamples>& sampled(int lut);
};

}  // namespace qel
