#pragma once

#include <cstddef>
#include <vector>

#include "Point.h"
#include "QelDataExport.h"

// A polygon in 3D, checked to be simple and flattened into its best-fit
// plane for triangulation. A last vertex equal to the first closes the
// outline and is dropped; no holes.
class QEL_DATA_API SimplePolygon {
public:
    explicit SimplePolygon(const std::vector<Point>& vertices);

    // 0 when the polygon has at least 3 vertices, all finite, encloses an area
    // and no two edges cross or touch (beyond neighbours sharing a corner);
    // a QelDataStatus otherwise.
    long initialize();

    bool isInitialized() const { return initialized_; }
    int size() const { return static_cast<int>(u_.size()); }
    // Coordinates in the plane, counter-clockwise about the plane's normal.
    double u(int i) const { return u_[static_cast<std::size_t>(i)]; }
    double v(int i) const { return v_[static_cast<std::size_t>(i)]; }
    // The plane's normal (unit length; Newell's method).
    const double* normal() const { return normal_; }
    // Squared length scale of the outline, for relative tolerances.
    double scale2() const { return scale2_; }

private:
    std::vector<Point> vertices_;
    std::vector<double> u_, v_;
    double normal_[3] = {0, 0, 0};
    double scale2_ = 0;
    bool initialized_ = false;
};
