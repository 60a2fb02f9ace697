#include "Shape.h"

#include <osg/BlendFunc>

Shape::Shape(unsigned int id) {
    colors_->push_back(osg::Vec4(0.0f, 0.0f, 1.0f, 1.0f));
    geometry_->setColorArray(colors_.get(), osg::Array::BIND_OVERALL);
    osg::StateSet* ss = geometry_->getOrCreateStateSet();
    ss->setMode(GL_BLEND, osg::StateAttribute::ON);
    // The destination's alpha, not the source's: kept as the shapes have
    // always blended.
    ss->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_DST_ALPHA));
    ss->setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    id_ = id;
}

bool Shape::setColor(const osg::Vec4Array& colours) {
    if (colours.empty()) return false;
    colors_->clear();
    colors_->push_back(colours.front());
    colors_->dirty();
    return true;
}

void Shape::setShapeMode(int mode) {
    clearGeometry();
    if (mode == Lines) {
        buildLines();
        mode_ = Lines;
    } else if (mode == Surface) {
        buildSurface();
        mode_ = Surface;
    }
}
