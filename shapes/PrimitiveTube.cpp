#include "PrimitiveTube.h"

using namespace Tessellation;

PrimitiveTube::PrimitiveTube(const osg::Vec3& centre, const osg::Vec3& axis, float inner,
                             float outer, float height, float startDegrees, float sweepDegrees)
    : inner_(inner),
      outer_(outer),
      height_(height),
      sweep_(Sweep::fromDegrees(startDegrees, sweepDegrees)) {
    if (inner < 0 || outer < 0 || height < 0 || inner > outer) inner_ = outer_ = height_ = 0;
    setPose(poseByAxis(centre, axis));
}

Profile PrimitiveTube::profile() const {
    const float h = 0.5f * height_, ri = inner_, ro = outer_;
    return {{{ro, -h, 1, 0, true}, {ro, h, 1, 0, true}},
            {{ro, h, 0, 1, true}, {ri, h, 0, 1, true}},
            {{ri, h, -1, 0, true}, {ri, -h, -1, 0, true}},
            {{ri, -h, 0, -1, true}, {ro, -h, 0, -1, true}}};
}

void PrimitiveTube::buildSurface() {
    if (empty()) return;
    std::vector<unsigned int> outline;
    revolveSurface(profile(), sweep_, kRevolveSegments, {*vertices_, *normals_, &outline});
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(outline);
}

void PrimitiveTube::buildLines() {
    if (empty()) return;
    revolveLines(profile(), sweep_, kRevolveSegments, *vertices_);
    drawArrays(GL_LINES, 0);
}
