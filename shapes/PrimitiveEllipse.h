#pragma once

#include "PrimitiveDisk.h"

// An ellipse of 40 segments with semi-axes a (local x) and b (local y),
// turned by Euler angles (degrees) about its centre.
class PrimitiveEllipse : public PrimitiveDisk {
public:
    PrimitiveEllipse(const osg::Vec3& centre, const osg::Vec3& angles, float a, float b);
};
