#include "PrimitiveBSplineSurf.h"

namespace {
std::vector<BSpline::Weighted> unweighted(const std::vector<osg::Vec3>& points) {
    std::vector<BSpline::Weighted> out;
    for (const osg::Vec3& p : points)
        out.push_back({p, 1.0f});
    return out;
}
}  // namespace

PrimitiveBSplineSurf::PrimitiveBSplineSurf(const std::vector<osg::Vec3>& grid, int countU,
                                           int countV, int degree)
    : PrimitiveNurbsSurf(unweighted(grid), countU, countV, degree) {}
