#pragma once

#include "BasePrimitive.h"
#include "Tessellation.h"

// A torus between an inner and an outer radius (its tube is half their
// difference thick), swept from the start angle through the sweep
// (degrees), turned by Euler angles. The torus type is kept as given: a full
// type draws the whole ring whatever the angles.
class PrimitiveTorus : public virtual BasePrimitive {
public:
    PrimitiveTorus(const osg::Vec3& centre, const osg::Vec3& angles, float inner, float outer,
                   float startDegrees, float sweepDegrees, int torusType);
    void buildLines() override;
    void buildSurface() override;

private:
    Tessellation::Profile profile() const;
    float tubeRadius_, ringRadius_;
    Tessellation::Sweep sweep_;
    int torusType_;
};
