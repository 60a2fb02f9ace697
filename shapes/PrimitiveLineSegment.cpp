#include "PrimitiveLineSegment.h"

PrimitiveLineSegment::PrimitiveLineSegment(const osg::Vec3& start, const osg::Vec3& end)
    : start_(start), end_(end) {}

void PrimitiveLineSegment::buildLines() {
    append(start_);
    append(end_);
    drawArrays(GL_LINES, 0);
}
