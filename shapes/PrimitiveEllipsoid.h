#pragma once

#include "BasePrimitive.h"

// An ellipsoid: the unit sphere scaled by its three semi-axes, turned by
// Euler angles (degrees) about its centre.
class PrimitiveEllipsoid : public virtual BasePrimitive {
public:
    PrimitiveEllipsoid(const osg::Vec3& centre, const osg::Vec3& angles, const osg::Vec3& semiAxes);
    void buildLines() override;
    void buildSurface() override;

private:
    osg::Vec3 semiAxes_;
};
