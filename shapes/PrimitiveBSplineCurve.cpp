#include "PrimitiveBSplineCurve.h"

PrimitiveBSplineCurve::PrimitiveBSplineCurve(const std::vector<osg::Vec3>& controls, int degree)
    : PrimitiveNurbsCurve(BSpline::unweighted(controls), degree) {}
