#pragma once

#include "BasePrimitive.h"
#include "Tessellation.h"

// A tube (a thick-walled pipe) along its axis between two radii, swept
// from the start angle through the sweep (degrees). Negative sizes or an
// inner radius above the outer leave it empty.
class PrimitiveTube : public virtual BasePrimitive {
public:
    PrimitiveTube(const osg::Vec3& centre, const osg::Vec3& axis, float inner, float outer,
                  float height, float startDegrees, float sweepDegrees);
    void buildLines() override;
    void buildSurface() override;

private:
    Tessellation::Profile profile() const;
    bool empty() const { return sweep_.empty || (outer_ == 0 && height_ == 0); }
    float inner_, outer_, height_;
    Tessellation::Sweep sweep_;
};
