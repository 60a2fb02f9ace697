#pragma once

#include "PrimitivePolygon.h"

// A triangle through three points (world coordinates).
class PrimitiveTriangle : public PrimitivePolygon {
public:
    PrimitiveTriangle(const osg::Vec3& a, const osg::Vec3& b, const osg::Vec3& c);
};
