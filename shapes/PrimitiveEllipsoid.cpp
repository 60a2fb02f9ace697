#include "PrimitiveEllipsoid.h"

#include "Tessellation.h"

using namespace Tessellation;

PrimitiveEllipsoid::PrimitiveEllipsoid(const osg::Vec3& centre, const osg::Vec3& angles,
                                       const osg::Vec3& semiAxes)
    : semiAxes_(semiAxes) {
    setPose(poseByAngles(centre, angles));
}

void PrimitiveEllipsoid::buildSurface() {
    revolveSurface(sphereProfile(1.0f), Sweep(), kSphereSlices, {*vertices_, *normals_}, semiAxes_);
    drawArrays(GL_TRIANGLES, 0);
}

void PrimitiveEllipsoid::buildLines() {
    revolveLines(sphereProfile(1.0f), Sweep(), kSphereSlices, *vertices_, semiAxes_);
    drawArrays(GL_LINES, 0);
}
