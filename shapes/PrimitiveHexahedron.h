#pragma once

#include <array>

#include "BasePrimitive.h"

// A hexahedron from its eight corners (world coordinates), indexed like a
// box's: bit 2 the x side, bit 1 the y side, bit 0 the z side. Faces are
// two triangles with their own normal, the 12 edges outlined.
class PrimitiveHexahedron : public virtual BasePrimitive {
public:
    explicit PrimitiveHexahedron(const std::array<osg::Vec3, 8>& corners);
    void buildLines() override;
    void buildSurface() override;

private:
    std::array<osg::Vec3, 8> corners_;
};
