#include "PrimitiveCone.h"

#include <cmath>

using namespace Tessellation;

PrimitiveCone::PrimitiveCone(const osg::Vec3& centre, const osg::Vec3& axis, float radius,
                             float height, float startDegrees, float sweepDegrees)
    : radius_(radius), height_(height), sweep_(Sweep::fromDegrees(startDegrees, sweepDegrees)) {
    if (radius < 0 || height < 0 || sweep_.empty) radius_ = height_ = 0;
    setPose(poseByAxis(centre, axis));
}

Profile PrimitiveCone::profile() const {
    const float h = 0.5f * height_, slant = std::hypot(height_, radius_);
    const float nr = slant > 0 ? height_ / slant : 1, nz = slant > 0 ? radius_ / slant : 0;
    return {{{0, h, nr, nz}, {radius_, -h, nr, nz, true}},
            {{radius_, -h, 0, -1, true}, {0, -h, 0, -1}}};
}

void PrimitiveCone::buildSurface() {
    if (height_ == 0 && radius_ == 0) return;
    std::vector<unsigned int> outline;
    revolveSurface(profile(), sweep_, kRevolveSegments, {*vertices_, *normals_, &outline},
                   osg::Vec3(1, 1, 1), true);
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(outline);
}

void PrimitiveCone::buildLines() {
    if (height_ == 0 && radius_ == 0) return;
    revolveLines(profile(), sweep_, kRevolveSegments, *vertices_);
    drawArrays(GL_LINES, 0);
}
