#pragma once

#include <functional>

#include "BasePrimitive.h"

// A surface f(u, v) over [0, 1]^2: 24 x 24 cells of two triangles with
// normals from its tangents, or its grid lines. The spline, Gauss and
// polynomial surfaces give only their f.
class PrimitiveParametricSurface : public virtual BasePrimitive {
public:
    using Function = std::function<osg::Vec3(float, float)>;
    explicit PrimitiveParametricSurface(Function f) : f_(std::move(f)) {}
    void buildLines() override;
    void buildSurface() override;

private:
    Function f_;
};
