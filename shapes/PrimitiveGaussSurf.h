#pragma once

#include "PrimitiveParametricSurface.h"

// A Gaussian bump z = amplitude * exp(-(x^2 / 2 sigmaX^2 + y^2 / 2 sigmaY^2))
// over the square of half-width `extent` about its centre, in the local xy
// plane, turned by Euler angles (degrees).
class PrimitiveGaussSurf : public PrimitiveParametricSurface {
public:
    PrimitiveGaussSurf(const osg::Vec3& centre, const osg::Vec3& angles, float amplitude,
                       float sigmaX, float sigmaY, float extent);
};
