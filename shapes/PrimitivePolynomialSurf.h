#pragma once

#include <vector>

#include "PrimitiveParametricSurface.h"

// A polynomial height field z = sum of c[i][j] x^i y^j (coefficients given
// row by row, `order` + 1 per row, i = row) over the square of half-width
// `extent` about its centre, in the local xy plane, turned by Euler angles
// (degrees).
class PrimitivePolynomialSurf : public PrimitiveParametricSurface {
public:
    PrimitivePolynomialSurf(const osg::Vec3& centre, const osg::Vec3& angles,
                            const std::vector<float>& coefficients, int order, float extent);
};
