#include "Shape.h"

#include <osg/BlendFunc>

#include "RenderBins.h"

Shape::Shape(ObjectId id) {
    colors_->push_back(osg::Vec4(0.0f, 0.0f, 1.0f, 1.0f));
    geometry_->setColorArray(colors_.get(), osg::Array::BIND_OVERALL);
    osg::StateSet* ss = geometry_->getOrCreateStateSet();
    ss->setMode(GL_BLEND, osg::StateAttribute::ON);
    // The destination's alpha, not the source's: kept as the shapes have
    // always blended.
    ss->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_DST_ALPHA));
    // Depth-sorted like translucent data, but after it and after the kept
    // picture of the data.
    ss->setRenderBinDetails(RenderBins::kShapes, "DepthSortedBin");
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

void Shape::setShapeMode(RenderMode mode) {
    clearGeometry();
    if (mode == RenderMode::Wireframe) {
        buildLines();
        mode_ = mode;
    } else if (mode == RenderMode::Faces) {
        buildSurface();
        mode_ = mode;
    }
}

bool Shape::applyItemMatrix(const osg::Matrix& matrix) {
    applyMatrix(matrix);
    return true;
}

bool Shape::setItemPointSize(float size) {
    setPointSize(size);
    return true;
}

bool Shape::setItemLineWidth(float width) {
    setLineWidth(width);
    return true;
}

osg::BoundingBox Shape::itemBounds() const {
    return boundsOf(*root_);
}
