#pragma once

#include <vector>

#include "QelDataExport.h"
#include "SimplePolygon.h"
#include "Triangle.h"

// Triangulates a simple polygon by clipping ears, in O(n^2).
class QEL_DATA_API EarClipping {
public:
    explicit EarClipping(const SimplePolygon& polygon);

    // 0 when the polygon was initialised successfully.
    long initialize();
    // The triangles, as indices of the polygon's vertices; false (and out
    // untouched) when not initialised or no ear can be found.
    bool getTriangles(std::vector<Triangle>& out);

private:
    const SimplePolygon& polygon_;
    bool ready_ = false;
};
