#include "PrimitivePoint.h"

#include "ShaderPointSprite.h"

PrimitivePoint::PrimitivePoint(const osg::Vec3& position)
    : position_(position), sprite_(std::make_unique<ShaderPointSprite>(root_.get())) {
    sprite_->attach();
    updatePointSprite();
}

PrimitivePoint::~PrimitivePoint() {
    sprite_->detach();
}

void PrimitivePoint::buildSurface() {
    append(position_, osg::Vec3(0, 0, 1));
    drawArrays(GL_POINTS, 0);
}

void PrimitivePoint::updatePointSprite() {
    sprite_->setSphereRadius(1.1f * pointSize_);
    sprite_->setLightPosition(0, 0, 1);
}

void PrimitivePoint::setPointSize(float size) {
    BasePrimitive::setPointSize(size);
    updatePointSprite();
}
