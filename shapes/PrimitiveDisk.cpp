#include "PrimitiveDisk.h"

#include <cmath>

using namespace Tessellation;

PrimitiveDisk::PrimitiveDisk(const osg::Vec2& radii, const Sweep& sweep, int segments)
    : radii_(radii), sweep_(sweep), segments_(segments) {
    if (!(radii.x() >= 0 && radii.y() >= 0) || sweep.empty) radii_ = osg::Vec2(0, 0);
}

void PrimitiveDisk::buildSurface() {
    if (radii_.x() == 0 && radii_.y() == 0) return;
    std::vector<unsigned int> outline;
    const Profile disk = {{{0, 0, 0, 1}, {1, 0, 0, 1, true}}};
    revolveSurface(disk, sweep_, segments_, {*vertices_, *normals_, &outline},
                   osg::Vec3(radii_.x(), radii_.y(), 1), true);
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(outline);
}

void PrimitiveDisk::buildLines() {
    if (radii_.x() == 0 && radii_.y() == 0) return;
    sampleCurve(
        [this](float u) {
            const float a = sweep_.start + sweep_.sweep * u;
            return osg::Vec3(radii_.x() * std::cos(a), radii_.y() * std::sin(a), 0);
        },
        segments_, *vertices_);
    drawArrays(GL_LINES, 0);
}
