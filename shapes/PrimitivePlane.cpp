#include "PrimitivePlane.h"

#include "Tessellation.h"

using namespace Tessellation;

namespace {
constexpr int kGridLines = 10;
}

PrimitivePlane::PrimitivePlane(const osg::Vec3& point, const osg::Vec3& normal)
    : point_(point), normal_(normal) {
    normal_.normalize();
    setPose(poseByAxis(point_, normal_));
}

void PrimitivePlane::fitToScene(const osg::Vec3&, const osg::Vec3&, float radius,
                                const osg::Vec3& centre) {
    if (!(radius > 0)) return;
    point_ = centre - normal_ * ((centre - point_) * normal_);
    half_ = 1.2f * radius;
    setPose(poseByAxis(point_, normal_));
}

// (u, v) in [0, 1]^2 across the square, in the local frame.
osg::Vec3 PrimitivePlane::corner(float u, float v) const {
    return osg::Vec3((2 * u - 1) * half_, (2 * v - 1) * half_, 0);
}

void PrimitivePlane::buildSurface() {
    for (auto [u, v] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 1}, {0, 1}})
        append(corner(float(u), float(v)), osg::Vec3(0, 0, 1));
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements({0, 1, 1, 2, 2, 5, 5, 0});
}

void PrimitivePlane::buildLines() {
    for (int i = 0; i <= kGridLines; ++i) {
        const float t = float(i) / float(kGridLines);
        for (const osg::Vec3& p : {corner(t, 0), corner(t, 1), corner(0, t), corner(1, t)})
            append(p);
    }
    drawArrays(GL_LINES, 0);
}
