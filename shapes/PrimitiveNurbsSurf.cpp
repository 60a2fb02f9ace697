#include "PrimitiveNurbsSurf.h"

PrimitiveNurbsSurf::PrimitiveNurbsSurf(const std::vector<BSpline::Weighted>& grid, int countU,
                                       int countV, int degree)
    : PrimitiveParametricSurface(
          [=](float u, float v) { return BSpline::surface(grid, countU, countV, degree, u, v); }) {}
