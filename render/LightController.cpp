#include "LightController.h"

#include "GLViewer.h"
#include "QelOSGWidget.h"
#include "QelVector3d.h"
#include "SceneLockGuard.h"
#include "ShaderADS.h"

LightController::LightController(GLViewer& view) : view_(view) {}

LightController::~LightController() = default;

void LightController::attachTo(osg::Node* data) {
    if (!lighting_) lighting_ = std::make_unique<ShaderADS>(data);
}

void LightController::apply() {
    if (!lighting_) return;
    SceneLockGuard lock(view_.osgWidget());
    lighting_->detach();
    if (on_) lighting_->attach();
}

void LightController::setLightState(bool on) {
    on_ = on;
    if (view_.isInitialised()) apply();
    view_.requestRedraw();
}

void LightController::setLightParameter(float power, const QelVector3d& direction) {
    view_.viewer();
    if (lighting_) {
        SceneLockGuard lock(view_.osgWidget());
        lighting_->setLightPower(power);
        lighting_->setLightDir(float(direction.x), float(direction.y), float(direction.z));
    }
    view_.requestRedraw();
}

void LightController::setLightCoefficients(float ambient, float diffuse, float specular) {
    view_.viewer();
    if (lighting_) {
        SceneLockGuard lock(view_.osgWidget());
        lighting_->setAmbientWeight(ambient);
        lighting_->setDiffuseWeight(diffuse);
        lighting_->setSpecularWeight(specular);
    }
    view_.requestRedraw();
}
