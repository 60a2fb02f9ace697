#include "PrimitivePointSphere.h"

PrimitivePointSphere::PrimitivePointSphere(const osg::Vec3& position)
    : PrimitiveSphere(position, 1.0f) {}

void PrimitivePointSphere::setPointSize(float size) {
    if (!(size > 0)) return;
    clearGeometry();
    radius_ = size;
    pointSize_ = size;
    buildSurface();
}
