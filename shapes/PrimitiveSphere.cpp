#include "PrimitiveSphere.h"

#include "Tessellation.h"

using namespace Tessellation;

PrimitiveSphere::PrimitiveSphere(const osg::Vec3& centre, float radius)
    : centre_(centre), radius_(radius) {
    setPose(osg::Matrixd::translate(centre));
}

void PrimitiveSphere::buildSurface() {
    vertices_->reserve(kSphereSlices * kSphereStacks * 6);
    revolveSurface(sphereProfile(radius_), Sweep(), kSphereSlices, {*vertices_, *normals_});
    drawArrays(GL_TRIANGLES, 0);
}

void PrimitiveSphere::buildLines() {
    revolveLines(sphereProfile(radius_), Sweep(), kSphereSlices, *vertices_);
    drawArrays(GL_LINES, 0);
}
