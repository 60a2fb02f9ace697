#pragma once

#include "BasePrimitive.h"

// A closed polygon through its vertices (world coordinates): its outline,
// or its area triangulated by ear clipping with the outline on top. A
// polygon that cannot be triangulated (crossing, too few or collinear
// vertices) still shows its outline. Triangles and quadrilaterals of other
// kinds are polygons too.
class PrimitivePolygon : public virtual BasePrimitive {
public:
    explicit PrimitivePolygon(const std::vector<osg::Vec3>& corners);
    void buildLines() override;
    void buildSurface() override;

protected:
    std::vector<osg::Vec3> corners_;
};
