#pragma once

// The points bench_api draws through both paths, and its orbiting camera.
#include <cmath>
#include <osg/Vec3>
#include <osg/Vec3d>
#include <random>
#include <string>
#include <vector>

namespace bench {

// The same points for both paths: a pseudo-random slab, or a lattice of
// rows as a scanner delivers them (a wavy surface; the seed shifts it).
inline std::vector<osg::Vec3> workload(const std::string& kind, int n, unsigned seed) {
    std::vector<osg::Vec3> points(static_cast<size_t>(n));
    if (kind == "lattice") {
        const int side = static_cast<int>(std::ceil(std::sqrt(double(n))));
        for (int i = 0; i < n; ++i) {
            const float x = 2.f * (i / side) / side - 1.f, y = 2.f * (i % side) / side - 1.f;
            points[size_t(i)].set(x, y, 0.1f * std::sin(6 * x + seed) * std::cos(5 * y));
        }
        return points;
    }
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> u(-1.f, 1.f);
    for (osg::Vec3& p : points)
        p.set(u(rng), u(rng), 0.2f * u(rng));
    return points;
}

inline osg::Vec3d orbitEye(int step) {
    const double a = step * 0.4;
    return osg::Vec3d(4 * std::sin(a), -4 * std::cos(a), 2.5);
}

}  // namespace bench
