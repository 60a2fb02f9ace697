#include "PrimitiveCircle.h"

using namespace Tessellation;

PrimitiveCircle::PrimitiveCircle(const osg::Vec3& centre, const osg::Vec3& normal, float radius)
    : PrimitiveDisk(osg::Vec2(radius, radius), Sweep(), kCircleSegments) {
    setPose(poseByAxis(centre, normal));
}
