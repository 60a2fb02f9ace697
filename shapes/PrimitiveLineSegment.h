#pragma once

#include "BasePrimitive.h"

// A plain segment between two points (world coordinates), in both forms.
class PrimitiveLineSegment : public virtual BasePrimitive {
public:
    PrimitiveLineSegment(const osg::Vec3& start, const osg::Vec3& end);
    void buildLines() override;
    void buildSurface() override { buildLines(); }

private:
    osg::Vec3 start_, end_;
};
