#pragma once

#include "BasePrimitive.h"

// A closed cylinder of elliptic section (semi-axes a along local x, b along
// local y), turned by Euler angles (degrees). A negative size empties it.
class PrimitiveEllipticCylinder : public virtual BasePrimitive {
public:
    PrimitiveEllipticCylinder(const osg::Vec3& centre, const osg::Vec3& angles, float a, float b,
                              float height);
    void buildLines() override;
    void buildSurface() override;

private:
    float a_, b_, height_;
};
