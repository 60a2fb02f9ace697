#pragma once

#include "BasePrimitive.h"
#include "Tessellation.h"

// A cone along its axis: apex at +height/2, base of the radius at
// -height/2, swept from the start angle through the sweep (degrees). A
// negative size or an empty sweep leaves it empty.
class PrimitiveCone : public virtual BasePrimitive {
public:
    PrimitiveCone(const osg::Vec3& centre, const osg::Vec3& axis, float radius, float height,
                  float startDegrees, float sweepDegrees);
    void buildLines() override;
    void buildSurface() override;
    const Tessellation::Sweep& sweep() const { return sweep_; }

private:
    Tessellation::Profile profile() const;
    float radius_, height_;
    Tessellation::Sweep sweep_;
};
