#pragma once

#include "PrimitiveDisk.h"

// A circle of 80 segments about its centre, facing along its normal.
class PrimitiveCircle : public PrimitiveDisk {
public:
    PrimitiveCircle(const osg::Vec3& centre, const osg::Vec3& normal, float radius);
};
