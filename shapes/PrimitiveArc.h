#pragma once

#include "PrimitiveDisk.h"

// An arc of a circle in its local xy plane from the start angle through the
// sweep (degrees), turned by Euler angles about its centre: the arc as a
// line, or the sector it bounds as a surface. A negative radius or an empty
// sweep leaves it empty.
class PrimitiveArc : public PrimitiveDisk {
public:
    PrimitiveArc(const osg::Vec3& centre, const osg::Vec3& angles, float radius, float startDegrees,
                 float sweepDegrees);
};
