#include "PrimitiveCylinder.h"

#include "Tessellation.h"

using namespace Tessellation;

PrimitiveCylinder::PrimitiveCylinder(const osg::Vec3& centre, const osg::Vec3& axis, float radius,
                                     float height)
    : radius_(radius), height_(height) {
    setPose(poseByAxis(centre, axis));
}

void PrimitiveCylinder::buildSurface() {
    std::vector<unsigned int> outline;
    revolveSurface(cylinderProfile(radius_, height_), Sweep(), kRevolveSegments,
                   {*vertices_, *normals_, &outline});
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(outline);
}

void PrimitiveCylinder::buildLines() {
    revolveLines(cylinderProfile(radius_, height_), Sweep(), kRevolveSegments, *vertices_);
    drawArrays(GL_LINES, 0);
}
