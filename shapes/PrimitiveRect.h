#pragma once

#include "PrimitivePolygon.h"

// A rectangle of width (local x) and height (local y), turned by Euler
// angles (degrees) about its centre.
class PrimitiveRect : public PrimitivePolygon {
public:
    PrimitiveRect(const osg::Vec3& centre, const osg::Vec3& angles, float width, float height);
};
