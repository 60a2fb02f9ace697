#pragma once

// A cloud of n points spread evenly over a 100 x 100 slab centred on the
// origin, heights +- 'thickness' plus 'tilt' times (x + y).
#include <random>

#include "QelPointCloud.h"
#include "QelVector3dArray.h"

namespace bench {

inline QelPointCloud randomSlab(int n, unsigned seed, float thickness, float tilt) {
    std::mt19937 rng(seed);
    std::uniform_real_distribution<float> u(-50.f, 50.f), h(-1.f, 1.f);
    QelVector3dArray points(n);
    for (int i = 0; i < n; ++i) {
        const float x = u(rng), y = u(rng);
        points[i] = QelVector3d(x, y, thickness * h(rng) + tilt * (x + y));
    }
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

}  // namespace bench
