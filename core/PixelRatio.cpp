#include "PixelRatio.h"

#include <cmath>
#include <osg/Camera>
#include <osg/GraphicsContext>

namespace {
const char* const kKey = "qelPixelRatio";
}

void PixelRatio::set(osg::GraphicsContext* context, float ratio) {
    if (context) context->setUserValue(kKey, std::isfinite(ratio) && ratio > 0 ? ratio : 1.0f);
}

float PixelRatio::of(const osg::GraphicsContext* context) {
    float ratio = 1.0f;
    if (context) context->getUserValue(kKey, ratio);
    return ratio;
}

float PixelRatio::of(const osg::Camera* camera) {
    return camera ? of(camera->getGraphicsContext()) : 1.0f;
}
