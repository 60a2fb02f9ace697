#include "BSpline.h"

#include <algorithm>

namespace BSpline {
namespace {

// de Boor on homogeneous points (w x, w y, w z, w) over clamped uniform
// knots; returns the homogeneous result.
osg::Vec4 deBoor(const std::vector<osg::Vec4>& controls, int degree, float u) {
    const int n = static_cast<int>(controls.size());
    const int p = std::max(1, std::min(degree, n - 1));
    const int spans = n - p;  // interior knot spans
    std::vector<float> knots(static_cast<size_t>(n + p + 1));
    for (int i = 0; i < n + p + 1; ++i)
        knots[size_t(i)] = float(std::clamp(i - p, 0, spans)) / float(spans);
    const float t = std::clamp(u, 0.0f, 1.0f);
    int k = p;
    while (k < n - 1 && t >= knots[size_t(k + 1)])
        ++k;
    std::vector<osg::Vec4> d(controls.begin() + (k - p), controls.begin() + (k + 1));
    for (int r = 1; r <= p; ++r)
        for (int j = p; j >= r; --j) {
            const int i = j + k - p;
            const float denominator = knots[size_t(i + p - r + 1)] - knots[size_t(i)];
            const float a = denominator > 0 ? (t - knots[size_t(i)]) / denominator : 0.0f;
            d[size_t(j)] = d[size_t(j - 1)] * (1 - a) + d[size_t(j)] * a;
        }
    return d[size_t(p)];
}

osg::Vec4 homogeneous(const Weighted& c) {
    return osg::Vec4(c.point * c.weight, c.weight);
}

osg::Vec3 project(const osg::Vec4& h) {
    return h.w() != 0 ? osg::Vec3(h.x(), h.y(), h.z()) / h.w() : osg::Vec3();
}

}  // namespace

std::vector<Weighted> unweighted(const std::vector<osg::Vec3>& points) {
    std::vector<Weighted> out;
    for (const osg::Vec3& p : points)
        out.push_back({p, 1.0f});
    return out;
}

osg::Vec3 curve(const std::vector<Weighted>& controls, int degree, float u) {
    if (controls.empty()) return osg::Vec3();
    if (controls.size() == 1) return controls.front().point;
    std::vector<osg::Vec4> h;
    for (const Weighted& c : controls)
        h.push_back(homogeneous(c));
    return project(deBoor(h, degree, u));
}

osg::Vec3 surface(const std::vector<Weighted>& grid, int countU, int countV, int degree, float u,
                  float v) {
    if (countU < 1 || countV < 1 || grid.size() < size_t(countU) * size_t(countV))
        return osg::Vec3();
    // Each row along v first, then the column of row results along u.
    std::vector<osg::Vec4> column;
    for (int i = 0; i < countU; ++i) {
        std::vector<osg::Vec4> row;
        for (int j = 0; j < countV; ++j)
            row.push_back(homogeneous(grid[size_t(i * countV + j)]));
        column.push_back(countV == 1 ? row.front() : deBoor(row, degree, v));
    }
    return project(countU == 1 ? column.front() : deBoor(column, degree, u));
}

}  // namespace BSpline
