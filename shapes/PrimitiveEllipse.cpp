#include "PrimitiveEllipse.h"

using namespace Tessellation;

PrimitiveEllipse::PrimitiveEllipse(const osg::Vec3& centre, const osg::Vec3& angles, float a,
                                   float b)
    : PrimitiveDisk(osg::Vec2(a, b), Sweep(), kEllipseSegments) {
    setPose(poseByAngles(centre, angles));
}
