#pragma once

#include "BasePrimitive.h"

// A sphere about its centre: 40 slices by 20 stacks, two triangles each.
class PrimitiveSphere : public virtual BasePrimitive {
public:
    PrimitiveSphere(const osg::Vec3& centre, float radius);
    void buildLines() override;
    void buildSurface() override;

protected:
    osg::Vec3 centre_;
    float radius_;
};
