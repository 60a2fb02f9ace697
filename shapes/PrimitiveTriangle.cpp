#include "PrimitiveTriangle.h"

PrimitiveTriangle::PrimitiveTriangle(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c)
    : PrimitivePolygon({a, b, c}) {}
