#pragma once

#include <osg/PolygonMode>

#include "OSGData.h"
#include "QelTriangleMesh.h"

// A triangle mesh drawn as points (mode 0), a wireframe (1) or filled
// faces (4). The triangles are built once and kept for switching back.
class OSGTriangleMesh : public OSGData {
public:
    OSGTriangleMesh(const QelTriangleMesh& mesh, RenderMode renderMode, ObjectId id);

    void setRenderMode(RenderMode mode) override;
    osg::DrawElementsUInt* triangles() const { return triangles_.get(); }
    const QelTriangleMesh& source() const { return source_; }

private:
    osg::ref_ptr<osg::DrawElementsUInt> buildTriangles() const;

    QelTriangleMesh source_;
    osg::ref_ptr<osg::PolygonMode> polygonMode_;
    osg::ref_ptr<osg::DrawElementsUInt> triangles_;
};
