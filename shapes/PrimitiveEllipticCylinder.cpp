#include "PrimitiveEllipticCylinder.h"

#include "Tessellation.h"

using namespace Tessellation;

PrimitiveEllipticCylinder::PrimitiveEllipticCylinder(const osg::Vec3& centre,
                                                     const osg::Vec3& angles, float a, float b,
                                                     float height)
    : a_(a), b_(b), height_(height) {
    if (a < 0 || b < 0 || height < 0) a_ = b_ = height_ = 0;
    setPose(poseByAngles(centre, angles));
}

void PrimitiveEllipticCylinder::buildSurface() {
    if (height_ == 0) return;
    std::vector<unsigned int> outline;
    revolveSurface(cylinderProfile(1.0f, height_), Sweep(), kRevolveSegments,
                   {*vertices_, *normals_, &outline}, osg::Vec3(a_, b_, 1));
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(outline);
}

void PrimitiveEllipticCylinder::buildLines() {
    if (height_ == 0) return;
    revolveLines(cylinderProfile(1.0f, height_), Sweep(), kRevolveSegments, *vertices_,
                 osg::Vec3(a_, b_, 1));
    drawArrays(GL_LINES, 0);
}
