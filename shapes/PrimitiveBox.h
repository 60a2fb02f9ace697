#pragma once

#include "BasePrimitive.h"

// A box of full edge lengths `size`, turned by Euler angles (degrees) about
// its centre: 12 triangles with face normals and its 12 edges outlined.
class PrimitiveBox : public virtual BasePrimitive {
public:
    PrimitiveBox(const osg::Vec3& centre, const osg::Vec3& angles, const osg::Vec3& size);
    void buildLines() override;
    void buildSurface() override;

private:
    osg::Vec3 corner(int i) const;
    osg::Vec3 half_;
};
