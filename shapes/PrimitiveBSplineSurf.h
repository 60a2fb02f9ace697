#pragma once

#include "PrimitiveNurbsSurf.h"

// A B-spline surface: a NURBS surface whose weights are all 1.
class PrimitiveBSplineSurf : public PrimitiveNurbsSurf {
public:
    PrimitiveBSplineSurf(const std::vector<osg::Vec3>& grid, int countU, int countV, int degree);
};
