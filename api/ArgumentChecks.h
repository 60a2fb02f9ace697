#pragma once

// Checks and clamps that several exported functions share.
#include <cmath>

#include "QelColor.h"
#include "QelMatrix4.h"
#include "QelVector3d.h"

namespace QelArguments {

// Coordinates beyond this magnitude are refused where they would place the
// camera or an object: data is limited to +-2^31, and a view or pose that
// far away overflows single precision in the projection.
constexpr double kCoordinateLimit = 1e15;

inline bool usablePoint(const QelVector3d& p) {
    return p.IsValid() && std::fabs(p.x) <= kCoordinateLimit &&
           std::fabs(p.y) <= kCoordinateLimit && std::fabs(p.z) <= kCoordinateLimit;
}

// A pose's translation within the same limit.
inline bool usableTranslation(const QelMatrix4& m) {
    for (int r = 0; r < 3; ++r)
        if (!(std::fabs(m.Value(r, 3)) <= kCoordinateLimit)) return false;
    return true;
}

// Colour channels outside 0..255 are clamped rather than wrapped.
inline QelColor clampedColour(const QelColor& c) {
    auto channel = [](int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); };
    return QelColor(channel(c.r), channel(c.g), channel(c.b), channel(c.a));
}

}  // namespace QelArguments
