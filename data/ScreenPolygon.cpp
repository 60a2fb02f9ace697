#include "ScreenPolygon.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace qel {

bool ScreenPolygon::build(const std::vector<double>& xy) {
    std::vector<double> v;
    for (size_t i = 0; i + 1 < xy.size(); i += 2) {
        if (!std::isfinite(xy[i]) || !std::isfinite(xy[i + 1])) return false;
        const size_t n = v.size();
        if (n >= 2 && v[n - 2] == xy[i] && v[n - 1] == xy[i + 1]) continue;
        v.push_back(xy[i]);
        v.push_back(xy[i + 1]);
    }
    // A closing vertex equal to the first is implied anyway.
    while (v.size() >= 4 && v[0] == v[v.size() - 2] && v[1] == v[v.size() - 1])
        v.resize(v.size() - 2);
    const size_t n = v.size() / 2;
    if (n < 3) return false;

    minX_ = maxX_ = v[0];
    minY_ = maxY_ = v[1];
    for (size_t i = 0; i < n; ++i) {
        minX_ = std::min(minX_, v[2 * i]);
        maxX_ = std::max(maxX_, v[2 * i]);
        minY_ = std::min(minY_, v[2 * i + 1]);
        maxY_ = std::max(maxY_, v[2 * i + 1]);
    }
    if (!(maxX_ > minX_) || !(maxY_ > minY_)) return false;

    bands_ = static_cast<int>(std::clamp<size_t>(n, 1, 1024));
    bandHeight_ = (maxY_ - minY_) / bands_;
    std::vector<std::vector<Edge>> perBand(static_cast<std::size_t>(bands_));
    for (size_t i = 0; i < n; ++i) {
        const size_t j = (i + 1) % n;
        const Edge e{v[2 * i], v[2 * i + 1], v[2 * j], v[2 * j + 1]};
        if (e.y0 == e.y1) continue;  // horizontal edges never cross a row
        const int b0 = std::clamp(static_cast<int>((std::min(e.y0, e.y1) - minY_) / bandHeight_), 0,
                                  bands_ - 1);
        const int b1 = std::clamp(static_cast<int>((std::max(e.y0, e.y1) - minY_) / bandHeight_), 0,
                                  bands_ - 1);
        for (int b = b0; b <= b1; ++b)
            perBand[static_cast<std::size_t>(b)].push_back(e);
    }
    bandStart_.assign(static_cast<std::size_t>(bands_) + 1, 0);
    bandEdges_.clear();
    for (int b = 0; b < bands_; ++b) {
        bandEdges_.insert(bandEdges_.end(), perBand[b].begin(), perBand[b].end());
        bandStart_[static_cast<std::size_t>(b) + 1] = static_cast<int>(bandEdges_.size());
    }
    return true;
}

bool ScreenPolygon::contains(double x, double y) const {
    if (!(x >= minX_ && x <= maxX_ && y >= minY_ && y <= maxY_)) return false;
    const int b = std::clamp(static_cast<int>((y - minY_) / bandHeight_), 0, bands_ - 1);
    bool inside = false;
    for (int k = bandStart_[static_cast<std::size_t>(b)];
         k < bandStart_[static_cast<std::size_t>(b) + 1]; ++k) {
        const Edge& e = bandEdges_[static_cast<std::size_t>(k)];
        if ((e.y0 > y) != (e.y1 > y)) {
            const double xCross = e.x0 + (y - e.y0) * (e.x1 - e.x0) / (e.y1 - e.y0);
            if (x < xCross) inside = !inside;
        }
    }
    return inside;
}

}  // namespace qel
