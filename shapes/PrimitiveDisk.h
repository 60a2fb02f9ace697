#pragma once

#include "BasePrimitive.h"
#include "Tessellation.h"

// A flat round figure in its local xy plane: a disk (or an ellipse, scaled
// in x and y) swept from a start angle, filled as a fan with its rim
// outlined, or drawn as its rim alone. Circle, ellipse and arc are disks
// with their own pose, scale, sweep and segment count.
class PrimitiveDisk : public virtual BasePrimitive {
public:
    PrimitiveDisk(const osg::Vec2& radii, const Tessellation::Sweep& sweep, int segments);
    void buildLines() override;
    void buildSurface() override;

private:
    osg::Vec2 radii_;
    Tessellation::Sweep sweep_;
    int segments_;
};
