#pragma once

#include <memory>

#include "BasePrimitive.h"

class ShaderPointSprite;

// One point drawn as a lit sphere impostor by the point-sprite program, its
// sphere radius 1.1 x the point size, lit from (0, 0, 1). Both forms draw
// the point.
class PrimitivePoint : public virtual BasePrimitive {
public:
    explicit PrimitivePoint(const osg::Vec3& position);
    ~PrimitivePoint() override;
    void buildLines() override { buildSurface(); }
    void buildSurface() override;
    void updatePointSprite() override;
    void setPointSize(float size) override;

private:
    osg::Vec3 position_;
    std::unique_ptr<ShaderPointSprite> sprite_;
};
