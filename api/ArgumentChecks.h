#pragma once

// Checks and clamps that several exported functions share.
#include <cfloat>
#include <cmath>

#include "Qel3DPlane.h"
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

// A clip plane whose equation fits single precision, as the shaders take it.
inline bool usablePlane(const Qel3DPlane& plane) {
    const QelVector3d& n = plane.Normal();
    const QelVector3d& p = plane.Point();
    const double d = -(double(n.x) * p.x + double(n.y) * p.y + double(n.z) * p.z);
    return plane.IsValid() && std::fabs(d) <= double(FLT_MAX);
}

// Colour channels outside 0..255 are clamped rather than wrapped.
inline QelColor clampedColour(const QelColor& c) {
    auto channel = [](int v) { return v < 0 ? 0 : (v > 255 ? 255 : v); };
    return QelColor(channel(c.r), channel(c.g), channel(c.b), channel(c.a));
}

}  // namespace QelArguments
