#pragma once

#include <vector>

#include "BasePrimitive.h"

// A line set: vertices (world coordinates) and pairs of vertex indices. The
// line form draws the segments; the surface form also fills every closed
// loop of segments (through QelTrimeshFromLines). Pairs naming a vertex
// that does not exist are dropped.
class PrimitiveAnyShape : public virtual BasePrimitive {
public:
    PrimitiveAnyShape(const std::vector<osg::Vec3>& points, const std::vector<unsigned int>& lines);
    void buildLines() override;
    void buildSurface() override;

private:
    std::vector<osg::Vec3> points_;
    std::vector<unsigned int> lines_;
};
