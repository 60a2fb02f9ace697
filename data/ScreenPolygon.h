#pragma once

#include <vector>

namespace qel {

// A closed polygon in window pixels with an even-odd point test. Edges are
// bucketed into horizontal bands so a test looks only at the few edges that
// span the point's row, which keeps long lasso outlines fast on big clouds.
class ScreenPolygon {
public:
    // False when fewer than 3 distinct vertices remain, a coordinate is not
    // finite or the outline has no area extent.
    bool build(const std::vector<double>& xy);
    bool contains(double x, double y) const;

private:
    struct Edge {
        double x0, y0, x1, y1;
    };
    double minX_ = 0, maxX_ = 0, minY_ = 0, maxY_ = 0, bandHeight_ = 1;
    int bands_ = 0;
    std::vector<int> bandStart_;  // bands_ + 1 offsets into bandEdges_
    std::vector<Edge> bandEdges_;
};

}  // namespace qel
