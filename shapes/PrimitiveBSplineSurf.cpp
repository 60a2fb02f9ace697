#include "PrimitiveBSplineSurf.h"

PrimitiveBSplineSurf::PrimitiveBSplineSurf(const std::vector<osg::Vec3>& grid, int countU,
                                           int countV, int degree)
    : PrimitiveNurbsSurf(BSpline::unweighted(grid), countU, countV, degree) {}
