#include "BasePrimitive.h"
#include "NodeMasks.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"

BasePrimitive::BasePrimitive()
    : root_(new osg::Geode),
      geometry_(new osg::Geometry),
      transform_(new osg::MatrixTransform),
      vertices_(new osg::Vec3Array),
      normals_(new osg::Vec3Array),
      colors_(new osg::Vec4Array) {
    // The geode is the node the scene holds; the transform places the
    // geometry inside it.
    root_->addChild(transform_.get());
    transform_->addChild(geometry_.get());
    geometry_->setUseDisplayList(false);
    geometry_->setUseVertexBufferObjects(true);
    geometry_->setUseVertexArrayObject(true);
    geometry_->setVertexArray(vertices_.get());
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_PER_VERTEX);
}

void BasePrimitive::setVisible(bool visible) {
    root_->setNodeMask(visible ? NodeMasks::kPickable : 0u);
}

void BasePrimitive::applyMatrix(const osg::Matrixd& matrix) {
    transform_->setMatrix(matrix * transform_->getMatrix());
}

void BasePrimitive::setLineWidth(float width) {
    root_->getOrCreateStateSet()->setAttribute(new ScaledLineWidth(width));
    lineWidth_ = width;
}

void BasePrimitive::setPointSize(float size) {
    root_->getOrCreateStateSet()->setAttribute(new ScaledPoint(size));
    pointSize_ = size;
}

void BasePrimitive::clearGeometry() {
    vertices_->clear();
    normals_->clear();
    vertices_->dirty();
    normals_->dirty();
    geometry_->removePrimitiveSet(0, geometry_->getNumPrimitiveSets());
}

void BasePrimitive::fitToScene(const osg::Vec3&, const osg::Vec3&, float, const osg::Vec3&) {}

void BasePrimitive::append(const osg::Vec3& vertex, const osg::Vec3& normal) {
    vertices_->push_back(vertex);
    normals_->push_back(normal);
}

void BasePrimitive::drawArrays(GLenum mode, unsigned int first) {
    // Line forms carry no normals; keep the normal array as long as the
    // vertices so both bind per vertex.
    normals_->resize(vertices_->size(), osg::Vec3(0, 0, 1));
    vertices_->dirty();
    normals_->dirty();
    const unsigned int count = static_cast<unsigned int>(vertices_->size()) - first;
    if (count > 0) geometry_->addPrimitiveSet(new osg::DrawArrays(mode, first, count));
}

void BasePrimitive::drawLineElements(const std::vector<unsigned int>& indices) {
    if (indices.empty()) return;
    geometry_->addPrimitiveSet(new osg::DrawElementsUInt(GL_LINES, indices.begin(), indices.end()));
}
