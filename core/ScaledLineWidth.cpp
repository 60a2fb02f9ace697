#include "ScaledLineWidth.h"

#include <osg/GL>
#include <osg/State>

#include "PixelRatio.h"

void ScaledLineWidth::apply(osg::State& state) const {
    glLineWidth(getWidth() * PixelRatio::of(state.getGraphicsContext()));
}
