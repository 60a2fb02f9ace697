#include "PrimitiveBSplineCurve.h"

namespace {
std::vector<BSpline::Weighted> unweighted(const std::vector<osg::Vec3>& points) {
    std::vector<BSpline::Weighted> out;
    for (const osg::Vec3& p : points)
        out.push_back({p, 1.0f});
    return out;
}
}  // namespace

PrimitiveBSplineCurve::PrimitiveBSplineCurve(const std::vector<osg::Vec3>& controls, int degree)
    : PrimitiveNurbsCurve(unweighted(controls), degree) {}
