#pragma once

#include "BasePrimitive.h"

// A plane through a point with a normal, drawn as a square about the point
// (2 units wide until the scene is known): filled with its outline, or as
// its outline and a grid. It is re-sized across the scene's bounds, centred
// on the scene centre's foot, whenever the data changes.
class PrimitivePlane : public virtual BasePrimitive {
public:
    PrimitivePlane(const osg::Vec3& point, const osg::Vec3& normal);
    void buildLines() override;
    void buildSurface() override;
    void fitToScene(const osg::Vec3& minCorner, const osg::Vec3& maxCorner, float radius,
                    const osg::Vec3& centre) override;
    bool resizesToScene() const override { return true; }

private:
    osg::Vec3 corner(float u, float v) const;
    osg::Vec3 point_, normal_;
    float half_ = 1.0f;
};
