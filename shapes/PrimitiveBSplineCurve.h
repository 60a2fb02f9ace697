#pragma once

#include "PrimitiveNurbsCurve.h"

// A B-spline curve: a NURBS curve whose weights are all 1.
class PrimitiveBSplineCurve : public PrimitiveNurbsCurve {
public:
    PrimitiveBSplineCurve(const std::vector<osg::Vec3>& controls, int degree);
};
