#include "SimplePolygon.h"

#include <algorithm>
#include <cmath>

#include "QelDataStatus.h"

using namespace QELMV;

namespace {

double orient(double ax, double ay, double bx, double by, double cx, double cy) {
    return (bx - ax) * (cy - ay) - (by - ay) * (cx - ax);
}

// Whether c lies within the bounding box of segment ab (used once c is known
// to be collinear with it).
bool within(double ax, double ay, double bx, double by, double cx, double cy) {
    return std::min(ax, bx) <= cx && cx <= std::max(ax, bx) && std::min(ay, by) <= cy &&
           cy <= std::max(ay, by);
}

}  // namespace

SimplePolygon::SimplePolygon(const std::vector<Point>& vertices) : vertices_(vertices) {}

long SimplePolygon::initialize() {
    initialized_ = false;
    std::vector<Point> p = vertices_;
    if (p.size() >= 2 && p.front().x == p.back().x && p.front().y == p.back().y &&
        p.front().z == p.back().z)
        p.pop_back();
    const size_t n = p.size();
    if (n < 3) return QEL_DATA_DEGENERATE;
    double c[3] = {0, 0, 0};
    for (const Point& q : p) {
        if (!std::isfinite(q.x) || !std::isfinite(q.y) || !std::isfinite(q.z))
            return QEL_DATA_INVALID_ARGUMENT;
        c[0] += q.x / n;
        c[1] += q.y / n;
        c[2] += q.z / n;
    }

    // Newell's normal is the area vector of the outline: robust for
    // non-planar input and oriented so the flattened outline runs CCW.
    double nrm[3] = {0, 0, 0};
    scale2_ = 0;
    for (size_t i = 0; i < n; ++i) {
        const Point& a = p[i];
        const Point& b = p[(i + 1) % n];
        nrm[0] += (a.y - b.y) * (a.z + b.z);
        nrm[1] += (a.z - b.z) * (a.x + b.x);
        nrm[2] += (a.x - b.x) * (a.y + b.y);
        const double dx = a.x - c[0], dy = a.y - c[1], dz = a.z - c[2];
        scale2_ = std::max(scale2_, dx * dx + dy * dy + dz * dz);
    }
    const double len = std::sqrt(nrm[0] * nrm[0] + nrm[1] * nrm[1] + nrm[2] * nrm[2]);
    if (!(len > 1e-12 * scale2_) || scale2_ == 0) return QEL_DATA_DEGENERATE;
    for (double& x : nrm)
        x /= len;

    // An in-plane basis (e1, e2) with e1 x e2 = normal.
    double helper[3] = {1, 0, 0};
    if (std::fabs(nrm[0]) > 0.9) helper[0] = 0, helper[1] = 1;
    double e1[3] = {helper[1] * nrm[2] - helper[2] * nrm[1],
                    helper[2] * nrm[0] - helper[0] * nrm[2],
                    helper[0] * nrm[1] - helper[1] * nrm[0]};
    const double l1 = std::sqrt(e1[0] * e1[0] + e1[1] * e1[1] + e1[2] * e1[2]);
    for (double& x : e1)
        x /= l1;
    const double e2[3] = {nrm[1] * e1[2] - nrm[2] * e1[1], nrm[2] * e1[0] - nrm[0] * e1[2],
                          nrm[0] * e1[1] - nrm[1] * e1[0]};
    std::vector<double> u(n), v(n);
    for (size_t i = 0; i < n; ++i) {
        const double d[3] = {p[i].x - c[0], p[i].y - c[1], p[i].z - c[2]};
        u[i] = d[0] * e1[0] + d[1] * e1[1] + d[2] * e1[2];
        v[i] = d[0] * e2[0] + d[1] * e2[1] + d[2] * e2[2];
    }

    // Simple means no two edges meet except neighbours at their shared corner.
    const double eps = 1e-12 * scale2_;
    for (size_t i = 0; i < n; ++i) {
        const size_t i1 = (i + 1) % n;
        for (size_t j = i + 1; j < n; ++j) {
            const size_t j1 = (j + 1) % n;
            const bool adjacent = (i1 == j) || (j1 == i);
            const double o1 = orient(u[i], v[i], u[i1], v[i1], u[j], v[j]);
            const double o2 = orient(u[i], v[i], u[i1], v[i1], u[j1], v[j1]);
            const double o3 = orient(u[j], v[j], u[j1], v[j1], u[i], v[i]);
            const double o4 = orient(u[j], v[j], u[j1], v[j1], u[i1], v[i1]);
            if (adjacent) {
                // Neighbours may only share their corner, not fold back on
                // each other.
                const size_t shared = (i1 == j) ? i1 : i;
                const size_t a = (shared == i1) ? i : i1, b = (shared == i1) ? j1 : j;
                const double o = orient(u[a], v[a], u[shared], v[shared], u[b], v[b]);
                const double dot = (u[a] - u[shared]) * (u[b] - u[shared]) +
                                   (v[a] - v[shared]) * (v[b] - v[shared]);
                if (std::fabs(o) <= eps && dot > 0) return QEL_DATA_NOT_SIMPLE;
                if (u[a] == u[shared] && v[a] == v[shared]) return QEL_DATA_NOT_SIMPLE;
                continue;
            }
            const bool crosses = ((o1 > eps && o2 < -eps) || (o1 < -eps && o2 > eps)) &&
                                 ((o3 > eps && o4 < -eps) || (o3 < -eps && o4 > eps));
            const bool touches =
                (std::fabs(o1) <= eps && within(u[i], v[i], u[i1], v[i1], u[j], v[j])) ||
                (std::fabs(o2) <= eps && within(u[i], v[i], u[i1], v[i1], u[j1], v[j1])) ||
                (std::fabs(o3) <= eps && within(u[j], v[j], u[j1], v[j1], u[i], v[i])) ||
                (std::fabs(o4) <= eps && within(u[j], v[j], u[j1], v[j1], u[i1], v[i1]));
            if (crosses || touches) return QEL_DATA_NOT_SIMPLE;
        }
    }
    u_.swap(u);
    v_.swap(v);
    std::copy(nrm, nrm + 3, normal_);
    initialized_ = true;
    return QEL_DATA_OK;
}
