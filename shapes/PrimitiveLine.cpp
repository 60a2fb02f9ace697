#include "PrimitiveLine.h"

#include "QelDataEnums.h"
#include "Tessellation.h"

using namespace Tessellation;

PrimitiveLine::PrimitiveLine(const osg::Vec3& start, const osg::Vec3& end, int lineType)
    : start_(start), end_(end), through_(start), direction_(end - start), lineType_(lineType) {
    direction_.normalize();
}

bool PrimitiveLine::resizesToScene() const {
    return lineType_ == QEL_LINE_INFINITE;
}

void PrimitiveLine::fitToScene(const osg::Vec3&, const osg::Vec3&, float radius,
                               const osg::Vec3& centre) {
    if (!resizesToScene() || !(radius > 0) || direction_.length2() == 0) return;
    // Through the foot of the scene's centre, past the scene on both sides.
    const osg::Vec3 foot = through_ + direction_ * ((centre - through_) * direction_);
    start_ = foot - direction_ * (1.5f * radius);
    end_ = foot + direction_ * (1.5f * radius);
}

void PrimitiveLine::appendArrowHead(bool surface) {
    const osg::Vec3 along = end_ - start_;
    const float length = along.length();
    if (length == 0) return;
    const osg::Matrixd pose = poseByAxis(end_ - along * (0.05f), along);
    osg::ref_ptr<osg::Vec3Array> v = new osg::Vec3Array, n = new osg::Vec3Array;
    const float r = 0.04f * length, h = 0.1f * length;
    const Profile head = {{{0, h / 2, 1, 0}, {r, -h / 2, 1, 0}}};
    if (surface)
        revolveSurface(head, Sweep(), kRevolveSegments / 2, {*v, *n}, osg::Vec3(1, 1, 1), true);
    else
        revolveLines(head, Sweep::fromDegrees(0, 360), 4, *v);
    for (size_t i = 0; i < v->size(); ++i)
        append((*v)[i] * pose,
               i < n->size() ? osg::Matrixd::transform3x3((*n)[i], pose) : osg::Vec3(0, 0, 1));
}

void PrimitiveLine::buildLines() {
    append(start_);
    append(end_);
    if (lineType_ == QEL_LINE_ARROW) appendArrowHead(false);
    drawArrays(GL_LINES, 0);
}

void PrimitiveLine::buildSurface() {
    if (lineType_ == QEL_LINE_ARROW) appendArrowHead(true);
    drawArrays(GL_TRIANGLES, 0);
    const unsigned int first = static_cast<unsigned int>(vertices_->size());
    append(start_);
    append(end_);
    drawArrays(GL_LINES, first);
}
