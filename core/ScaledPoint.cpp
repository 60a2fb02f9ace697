#include "ScaledPoint.h"

#include <osg/GL>
#include <osg/State>

#include "PixelRatio.h"

void ScaledPoint::apply(osg::State& state) const {
    osg::Point::apply(state);
    glPointSize(getSize() * PixelRatio::of(state.getGraphicsContext()));
}
