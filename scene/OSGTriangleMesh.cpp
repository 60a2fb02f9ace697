#include "OSGTriangleMesh.h"

#include "QelColorArray.h"

OSGTriangleMesh::OSGTriangleMesh(const QelTriangleMesh& mesh, RenderMode renderMode, ObjectId id)
    : OSGData(id, ObjectKind::TriangleMesh, true),
      source_(mesh),
      polygonMode_(new osg::PolygonMode) {
    renderMode_ = renderMode;
    const int n = source_.NumVertices();
    const float* xyz = source_.VertexData();
    vertices_->resize(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) {
        (*vertices_)[static_cast<size_t>(i)].set(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]);
        // Invalid vertices keep their slot but take no part in the range.
        if (QelVector3d(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]).IsValid())
            widenHeightRange(xyz[3 * i + 2]);
    }
    normals_->push_back(osg::Vec3(0, 0, 1));
    geometry_->setVertexArray(vertices_.get());
    geometry_->setNormalArray(normals_.get(), osg::Array::BIND_OVERALL);
    geometry_->setColorArray(colors_.get(), osg::Array::BIND_PER_VERTEX);
    if (renderMode == RenderMode::Points) {
        geometry_->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, n));
    } else {
        triangles_ = buildTriangles();
        geometry_->addPrimitiveSet(triangles_.get());
    }
    if (source_.IsValidVertexColor()) {
        copyColours(*colors_, source_.DeepCopyVertexColor());
        coloursLocked_ = 2;
    }
    geometry_->getOrCreateStateSet()->setAttribute(polygonMode_.get());
    if (renderMode != RenderMode::Points) setPolygonMode(polygonMode_.get(), renderMode);
    valid_ = 1;
}

// Triangles whose indices leave the vertex list or name an invalid vertex
// are dropped: drawing them would read past the vertex buffer or stretch a
// face to infinity.
osg::ref_ptr<osg::DrawElementsUInt> OSGTriangleMesh::buildTriangles() const {
    osg::ref_ptr<osg::DrawElementsUInt> t = new osg::DrawElementsUInt(GL_TRIANGLES);
    const int nv = source_.NumVertices();
    const int* idx = source_.TriangleData();
    const float* xyz = source_.VertexData();
    auto usable = [&](int i) {
        return i >= 0 && i < nv &&
               QelVector3d(xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]).IsValid();
    };
    t->reserve(static_cast<size_t>(source_.NumTriangles()) * 3);
    for (int k = 0; k < source_.NumTriangles(); ++k) {
        const int a = idx[3 * k], b = idx[3 * k + 1], c = idx[3 * k + 2];
        if (!usable(a) || !usable(b) || !usable(c)) continue;
        t->push_back(static_cast<unsigned>(a));
        t->push_back(static_cast<unsigned>(b));
        t->push_back(static_cast<unsigned>(c));
    }
    return t;
}

void OSGTriangleMesh::setRenderMode(RenderMode mode) {
    if (mode == renderMode_) return;
    const RenderMode previous = renderMode_;
    renderMode_ = mode;
    switchSurfaceMode(geometry_.get(), polygonMode_.get(), previous, mode,
                      static_cast<GLsizei>(vertices_->size()), [this] {
                          if (!triangles_) triangles_ = buildTriangles();
                          return osg::ref_ptr<osg::PrimitiveSet>(triangles_.get());
                      });
}
