#pragma once

// Timing helpers shared by the benchmarks.
#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

inline double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace bench
