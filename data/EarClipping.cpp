#include "EarClipping.h"

#include <cmath>
#include <cstddef>

#include "QelDataStatus.h"

EarClipping::EarClipping(const SimplePolygon& polygon) : polygon_(polygon) {}

long EarClipping::initialize() {
    ready_ = polygon_.isInitialized();
    return ready_ ? QELMV::QEL_DATA_OK : QELMV::QEL_DATA_NOT_INITIALIZED;
}

bool EarClipping::getTriangles(std::vector<Triangle>& out) {
    if (!ready_) return false;
    const SimplePolygon& P = polygon_;
    const int n = P.size();
    const double eps = 1e-12 * P.scale2();
    auto cross = [&](int a, int b, int c) {
        return (P.u(b) - P.u(a)) * (P.v(c) - P.v(a)) - (P.v(b) - P.v(a)) * (P.u(c) - P.u(a));
    };
    std::vector<int> prev(n), next(n);
    for (int i = 0; i < n; ++i) {
        prev[i] = (i + n - 1) % n;
        next[i] = (i + 1) % n;
    }

    // An ear is a convex corner whose triangle holds no other remaining
    // vertex (on its border counts as inside).
    auto isEar = [&](int i) {
        const int a = prev[i], c = next[i];
        if (cross(a, i, c) <= eps) return false;
        for (int k = next[c]; k != a; k = next[k]) {
            if (cross(a, i, k) >= -eps && cross(i, c, k) >= -eps && cross(c, a, k) >= -eps)
                return false;
        }
        return true;
    };

    std::vector<Triangle> triangles;
    triangles.reserve(static_cast<std::size_t>(n > 2 ? n - 2 : 0));
    int remaining = n, i = 0, sinceProgress = 0;
    while (remaining > 3) {
        if (sinceProgress > remaining) return false;  // no ear left: give up, never loop
        const int a = prev[i], c = next[i];
        const double turn = cross(a, i, c);
        // A straight corner adds no area: drop it without a triangle.
        const bool straight = std::fabs(turn) <= eps;
        if (straight || isEar(i)) {
            if (!straight) triangles.push_back({a, i, c});
            next[a] = c;
            prev[c] = a;
            --remaining;
            sinceProgress = 0;
            i = c;
        } else {
            i = next[i];
            ++sinceProgress;
        }
    }
    if (std::fabs(cross(prev[i], i, next[i])) > eps) triangles.push_back({prev[i], i, next[i]});
    out.swap(triangles);
    return true;
}
