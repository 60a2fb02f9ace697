#include "ColorTables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace qel {
namespace {

struct Rgb {
    double r, g, b;
};

Rgb hsv(double h, double s, double v) {
    h = h - std::floor(h);
    const double h6 = h * 6.0;
    const int sector = static_cast<int>(h6) % 6;
    const double f = h6 - std::floor(h6);
    const double p = v * (1 - s), q = v * (1 - s * f), t = v * (1 - s * (1 - f));
    switch (sector) {
        case 0:
            return {v, t, p};
        case 1:
            return {q, v, p};
        case 2:
            return {p, v, t};
        case 3:
            return {p, q, v};
        case 4:
            return {t, p, v};
        default:
            return {v, p, q};
    }
}

// Piecewise-linear map through evenly spaced stops (0..255 each).
Rgb stops(const std::uint8_t (*table)[3], int count, double u) {
    const double x = u * (count - 1);
    const int i = std::min(count - 2, static_cast<int>(x));
    const double f = x - i;
    auto mix = [&](int c) { return ((1 - f) * table[i][c] + f * table[i + 1][c]) / 255.0; };
    return {mix(0), mix(1), mix(2)};
}

// Viridis and inferno at eleven even stops, from their low to their high end.
const std::uint8_t kViridis[11][3] = {
    {68, 1, 84},    {72, 36, 117},  {65, 68, 135},  {53, 95, 141},  {42, 120, 142}, {33, 145, 140},
    {34, 168, 132}, {68, 191, 112}, {122, 209, 81}, {189, 223, 38}, {253, 231, 37}};
const std::uint8_t kInferno[11][3] = {
    {0, 0, 4},     {22, 11, 57},   {66, 10, 104},  {106, 23, 110}, {147, 38, 103}, {188, 55, 84},
    {221, 81, 58}, {243, 120, 25}, {252, 165, 10}, {246, 215, 70}, {252, 255, 164}};

// The colour bar draws its ramps from the bottom (u = 0, the minimum) to the
// top (u = 1, the maximum); the tables are looked up with t = 1 - u.
Rgb rampAt(int lut, double u) {
    switch (lut) {
        case 0:
            return {u, u, u};
        case 1: {
            const double q = 0.25;
            if (u < q / 2) return {0, 0, (q / 2 + u) / q};
            if (u < 1.5 * q) return {0, (u - q / 2) / q, 1};
            if (u < 2.5 * q) return {(u - 1.5 * q) / q, 1, (2.5 * q - u) / q};
            if (u < 3.5 * q) return {1, (3.5 * q - u) / q, 0};
            return {(1 - u + q / 2) / q, 0, 0};
        }
        case 2:
            return hsv(u >= 1.0 ? 0.0 : u, 1, 1);
        case 3: {
            // The bar's top stops short of white by 20 px of a 256 px ramp.
            const double q = 1 / 2.5;
            if (u < q / 2) return {(q / 2 + u) / q, 0, 0};
            if (u < 1.5 * q) return {1, (u - q / 2) / q, 0};
            return {1, 1, (u - 1.5 * q) / (1 - 1.5 * q + 20.0 / 256.0)};
        }
        case 4:
            return stops(kViridis, 11, u);
        case 6:
            return stops(kInferno, 11, u);
        default: {
            // Red at the top through yellow, green and cyan to blue at the bottom.
            const double t = 1 - u;
            if (t < 0.25) return {1, 4 * t, 0};
            if (t < 0.5) return {1 - 4 * (t - 0.25), 1, 0};
            if (t < 0.75) return {0, 1, 4 * (t - 0.5)};
            return {0, 1 - 4 * (t - 0.75), 1};
        }
    }
}

std::uint8_t toByte(double v) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0));
}

}  // namespace

Rgb8 ColorTables::evaluate(int lut, double t) {
    const Rgb c = rampAt(lut, 1.0 - t);
    return {toByte(c.r), toByte(c.g), toByte(c.b)};
}

const std::array<Rgb8, ColorTables::kSamples>& ColorTables::sampled(int lut) {
    static const auto tables = [] {
        std::array<std::array<Rgb8, kSamples>, 7> all{};
        for (int l = 0; l < 7; ++l)
            for (int i = 0; i < kSamples; ++i)
                all[l][i] = evaluate(l, i / double(kSamples - 1));
        return all;
    }();
    return tables[static_cast<std::size_t>(lut)];
}

}  // namespace qel
