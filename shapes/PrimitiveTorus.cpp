#include "PrimitiveTorus.h"

#include <cmath>

#include "QelDataEnums.h"

using namespace Tessellation;

PrimitiveTorus::PrimitiveTorus(const osg::Vec3& centre, const osg::Vec3& angles, float inner,
                               float outer, float startDegrees, float sweepDegrees, int torusType)
    : tubeRadius_((outer - inner) / 2),
      ringRadius_((inner + outer) / 2),
      sweep_(torusType == QEL_TORUS_FULL ? Sweep()
                                         : Sweep::fromDegrees(startDegrees, sweepDegrees)),
      torusType_(torusType) {
    if (inner < 0 || outer < 0) tubeRadius_ = ringRadius_ = 0;
    setPose(poseByAngles(centre, angles));
}

// The tube's circular section about the ring.
Profile PrimitiveTorus::profile() const {
    std::vector<ProfilePoint> section;
    for (int i = 0; i <= kRevolveSegments; ++i) {
        const float phi = kTwoPi * float(i) / float(kRevolveSegments);
        const float c = std::cos(phi), s = std::sin(phi);
        section.push_back({ringRadius_ + tubeRadius_ * c, tubeRadius_ * s, c, s});
    }
    return {section};
}

void PrimitiveTorus::buildSurface() {
    if (tubeRadius_ == 0 && ringRadius_ == 0) return;
    revolveSurface(profile(), sweep_, kTorusSweepSegments, {*vertices_, *normals_});
    drawArrays(GL_TRIANGLES, 0);
}

void PrimitiveTorus::buildLines() {
    if (tubeRadius_ == 0 && ringRadius_ == 0) return;
    revolveLines(profile(), sweep_, kTorusSweepSegments, *vertices_);
    drawArrays(GL_LINES, 0);
}
