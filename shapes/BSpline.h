#pragma once

#include <osg/Vec3>
#include <osg/Vec4>
#include <vector>

// Rational B-splines on clamped uniform knots: the curve and surface
// builders evaluate their control points through these. Weights of 1 give a
// plain B-spline. A degree above the control point count allows is lowered.
namespace BSpline {

// Control points with their weights (w = 1 for plain B-splines).
struct Weighted {
    osg::Vec3 point;
    float weight = 1.0f;
};

// Control points of a plain B-spline: every weight 1.
std::vector<Weighted> unweighted(const std::vector<osg::Vec3>& points);

// The curve at u in [0, 1].
osg::Vec3 curve(const std::vector<Weighted>& controls, int degree, float u);
// The tensor-product surface at (u, v) over a grid of countU x countV
// control points, u along the rows.
osg::Vec3 surface(const std::vector<Weighted>& grid, int countU, int countV, int degree, float u,
                  float v);

}  // namespace BSpline
