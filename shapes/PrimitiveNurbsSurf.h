#pragma once

#include "BSpline.h"
#include "PrimitiveParametricSurface.h"

// A rational B-spline surface (NURBS on clamped uniform knots) over a grid of
// countU x countV weighted control points (world coordinates, rows along u),
// of the given degree in both directions.
class PrimitiveNurbsSurf : public PrimitiveParametricSurface {
public:
    PrimitiveNurbsSurf(const std::vector<BSpline::Weighted>& grid, int countU, int countV,
                       int degree);
};
