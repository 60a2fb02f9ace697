#pragma once

#include "BasePrimitive.h"

// A closed cylinder along its axis, centred on its centre.
class PrimitiveCylinder : public virtual BasePrimitive {
public:
    PrimitiveCylinder(const osg::Vec3& centre, const osg::Vec3& axis, float radius, float height);
    void buildLines() override;
    void buildSurface() override;

private:
    float radius_, height_;
};
