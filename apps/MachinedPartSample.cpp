#include "MachinedPartSample.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr double kNoSample = std::numeric_limits<double>::quiet_NaN();

double distance(double x, double y, double cx, double cy) {
    return std::hypot(x - cx, y - cy);
}

// The part's surface in millimetres at (x, y) mm, ignoring the scanner.
double surface(double x, double y) {
    const double base = 8.0;
    // Outside the block: the fixture plate, 8 mm below the top of the base.
    if (x < 4 || x > 86 || y < 4 || y > 56) return 0.0;
    // A 2 mm chamfer along the block's left edge.
    if (x < 6) return base - (6 - x);
    // Drilled through-holes, 6 mm across.
    if (distance(x, y, 14, 12) < 3 || distance(x, y, 14, 48) < 3) return kNoSample;
    // A counterbored hole: 10 mm bore 3 mm deep, with a 5 mm hole through.
    const double r = distance(x, y, 74, 30);
    if (r < 2.5) return kNoSample;
    if (r < 5) return base - 3;
    // A ramp rising 4 mm over 20 mm.
    if (x >= 24 && x < 44 && y >= 8 && y < 22) return base + 4.0 * (x - 24) / 20;
    // A raised pad with rounded corners, 6 mm high, and a 1.5 mm step on it.
    const double px = std::max({0.0, 26 - x, x - 44}), py = std::max({0.0, 30 - y, y - 50});
    if (std::hypot(px, py) < 2 && x > 24 && x < 46 && y > 28 && y < 52)
        return base + (x > 36 ? 7.5 : 6);
    // A stepped pocket: 2 mm deep outside, 4 mm deep inside.
    if (x >= 52 && x < 66 && y >= 38 && y < 52)
        return base - ((x >= 55 && x < 63 && y >= 41 && y < 49) ? 4 : 2);
    return base;
}

// A small deterministic generator for the scanner's dropouts.
std::uint32_t next(std::uint32_t& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

}  // namespace

double MachinedPartSample::heightAt(int column, int row) {
    const double x = column * kPixelSize, y = row * kPixelSize;
    const double h = surface(x, y);
    if (std::isnan(h)) return h;
    // The laser comes in from the left: a surface more than 0.5 mm below what
    // lies 1 mm to its left is in the shadow of that edge.
    for (double dx = 0.2; dx <= 1.0; dx += 0.2) {
        const double left = surface(x - dx, y);
        if (!std::isnan(left) && left > h + 0.5 + dx) return kNoSample;
    }
    return h;
}

QelRangeImage MachinedPartSample::build() {
    QelRangeImage image;
    image.SetSize(kWidth, kHeight, QEL_16U);
    image.SetInfo(kPixelSize, kPixelSize, kHeightStep, 0, 0, kHeightOffset);
    auto* samples = reinterpret_cast<std::uint16_t*>(image.Data());
    std::uint32_t state = 20260101u;
    for (int row = 0; row < kHeight; ++row)
        for (int column = 0; column < kWidth; ++column) {
            double h = heightAt(column, row);
            // Some 0.05 % of samples drop out, and the machined top carries a
            // faint tool-mark ripple of a few micrometres.
            if (next(state) % 2000 < 1) h = kNoSample;
            if (std::isnan(h)) continue;  // stays 0, the 16-bit marker
            h += 0.004 * std::sin(column * 0.7) * (h > 7.9 ? 1 : 0);
            const double value = h / kHeightStep + kHeightOffset;
            samples[row * kWidth + column] =
                static_cast<std::uint16_t>(std::clamp(std::lround(value), 1L, 65535L));
        }
    return image;
}
