#pragma once

#include <memory>
#include <osg/PolygonMode>

#include "OSGData.h"
#include "QelDataStreamAlg.h"

// A range image streamed band by band (kind 4): its geometry hangs directly
// under the root (no model matrix) and grows with every band its stream
// appends. Render modes 0 points, 1 wireframe, 4 faces.
class OSGDataStream : public OSGData {
public:
    OSGDataStream(const QelRangeImageParameter& parameter, RenderMode renderMode, ObjectId id);

    QelDataStreamAlg& stream() { return *stream_; }
    // 0, or the stream's status.
    long initialize();
    // Appends a band (see QelDataStreamAlg) and hands the new geometry to
    // the scene graph.
    long append(const void* data, const void* colour, int type, int startLine, int endLine);
    void setRenderMode(RenderMode mode) override;
    void setMatrix(const osg::Matrix&) override {}

    // What a frame draws of the stream: everything (whatever the budget:
    // a stream keeps its sampling step), or only what was appended since
    // the last frame (its tail, drawn over a kept picture of the rest).
    // Either way the frame then holds all appended so far.
    void setDrawBudget(unsigned int) override;
    void drawTail();
    bool hasTail() const;
    // The bounds of the tail, in world coordinates (the stream has no model
    // matrix).
    osg::BoundingBox tailBounds() const;

private:
    void apply(RenderMode mode);

    osg::ref_ptr<osg::DrawElementsUInt> triangles_;
    osg::ref_ptr<osg::DrawArrays> points_;
    osg::ref_ptr<osg::PolygonMode> polygonMode_;
    std::unique_ptr<QelDataStreamAlg> stream_;
    // Vertices and triangle indices the last frame left drawn.
    size_t drawnVertices_ = 0, drawnIndices_ = 0;
};
