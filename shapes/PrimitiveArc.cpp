#include "PrimitiveArc.h"

using namespace Tessellation;

PrimitiveArc::PrimitiveArc(const osg::Vec3& centre, const osg::Vec3& angles, float radius,
                           float startDegrees, float sweepDegrees)
    : PrimitiveDisk(osg::Vec2(radius, radius), Sweep::fromDegrees(startDegrees, sweepDegrees),
                    kArcSegments) {
    setPose(poseByAngles(centre, angles));
}
