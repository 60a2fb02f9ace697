#pragma once

#include "PrimitiveSphere.h"

// A point drawn as a small sphere: radius 1, and the point size becomes the
// radius.
class PrimitivePointSphere : public PrimitiveSphere {
public:
    explicit PrimitivePointSphere(const osg::Vec3& position);
    // A size above 0 rebuilds the sphere with that radius; others are ignored.
    void setPointSize(float size) override;
};
