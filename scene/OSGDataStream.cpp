#include "OSGDataStream.h"

OSGDataStream::OSGDataStream(const QelRangeImageParameter& parameter, RenderMode renderMode,
                             ObjectId id)
    : OSGData(id, ObjectKind::RangeImageStream, false),
      triangles_(new osg::DrawElementsUInt(GL_TRIANGLES)),
      points_(new osg::DrawArrays(GL_POINTS, 0, 0)),
      polygonMode_(new osg::PolygonMode) {
    stream_ =
        std::make_unique<QelDataStreamAlg>(parameter, vertices_, colors_, normals_, triangles_);
    geometry_->setVertexArray(vertices_.get());
    geometry_->setColorArray(colors_.get(), osg::Array::BIND_PER_VERTEX);
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_PER_VERTEX);
    apply(renderMode);
}

long OSGDataStream::initialize() {
    const long status = stream_->initialize();
    valid_ = status == 0 ? 1 : 0;
    return status;
}

long OSGDataStream::append(const void* data, const void* colour, int type, int startLine,
                           int endLine) {
    const long status = stream_->appendDataStream(data, colour, type, startLine, endLine);
    if (status != 0) return status;
    points_->setCount(static_cast<GLsizei>(vertices_->size()));
    // With vertex array objects, marking a grown array dirty is not enough
    // to reach the screen: the arrays and the primitive are handed to the
    // geometry again.
    vertices_->dirty();
    normals_->dirty();
    triangles_->dirty();
    points_->dirty();
    geometry_->setVertexArray(vertices_.get());
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_PER_VERTEX);
    refreshColours();
    geometry_->setPrimitiveSet(0, renderMode_ == RenderMode::Points
                                      ? static_cast<osg::PrimitiveSet*>(points_.get())
                                      : triangles_.get());
    geometry_->dirtyBound();
    return 0;
}

void OSGDataStream::setRenderMode(RenderMode mode) {
    if (mode == renderMode_) return;
    apply(mode);
}

void OSGDataStream::apply(RenderMode mode) {
    osg::StateSet* ss = geometry_->getOrCreateStateSet();
    geometry_->removePrimitiveSet(0, geometry_->getNumPrimitiveSets());
    if (mode == RenderMode::Points) {
        ss->removeAttribute(polygonMode_.get());
        geometry_->addPrimitiveSet(points_.get());
    } else {
        geometry_->addPrimitiveSet(triangles_.get());
        ss->setAttribute(polygonMode_.get());
        setPolygonMode(polygonMode_.get(), mode);
        triangles_->dirty();
    }
    renderMode_ = mode;
}

void OSGDataStream::setDrawBudget(unsigned int) {
    geometry_->setPrimitiveSet(0, renderMode_ == RenderMode::Points
                                      ? static_cast<osg::PrimitiveSet*>(points_.get())
                                      : triangles_.get());
    drawnVertices_ = vertices_->size();
    drawnIndices_ = triangles_->size();
}

bool OSGDataStream::hasTail() const {
    return renderMode_ == RenderMode::Points ? vertices_->size() > drawnVertices_
                                             : triangles_->size() > drawnIndices_;
}

void OSGDataStream::drawTail() {
    if (renderMode_ == RenderMode::Points) {
        geometry_->setPrimitiveSet(
            0, new osg::DrawArrays(GL_POINTS, GLint(drawnVertices_),
                                   GLsizei(vertices_->size() - drawnVertices_)));
    } else {
        osg::ref_ptr<osg::DrawElementsUInt> tail = new osg::DrawElementsUInt(GL_TRIANGLES);
        tail->assign(triangles_->begin() + std::ptrdiff_t(drawnIndices_), triangles_->end());
        geometry_->setPrimitiveSet(0, tail.get());
    }
    drawnVertices_ = vertices_->size();
    drawnIndices_ = triangles_->size();
}

osg::BoundingBox OSGDataStream::tailBounds() const {
    osg::BoundingBox box;
    if (renderMode_ == RenderMode::Points) {
        for (size_t i = drawnVertices_; i < vertices_->size(); ++i)
            box.expandBy((*vertices_)[i]);
    } else {
        for (size_t i = drawnIndices_; i < triangles_->size(); ++i)
            box.expandBy((*vertices_)[(*triangles_)[i]]);
    }
    return box;
}
