#pragma once

#include "BSpline.h"
#include "BasePrimitive.h"

// A rational B-spline curve (NURBS on clamped uniform knots) through weighted
// control points (world coordinates), of the given degree, sampled at 64
// points. A curve has no area: both forms draw it as lines.
class PrimitiveNurbsCurve : public virtual BasePrimitive {
public:
    PrimitiveNurbsCurve(const std::vector<BSpline::Weighted>& controls, int degree);
    void buildLines() override;
    void buildSurface() override { buildLines(); }

private:
    std::vector<BSpline::Weighted> controls_;
    int degree_;
};
