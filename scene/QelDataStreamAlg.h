#pragma once

#include <QThreadPool>
#include <osg/Array>
#include <osg/PrimitiveSet>
#include <vector>

#include "QelRangeImage.h"
#include "QelRangeImageParameter.h"

// Turns a range image that arrives a band of lines at a time into growing
// geometry: each band's samples are kept in the accumulated image and its
// vertices, normals, colours and triangles are appended to the render
// object's arrays at once, so the surface grows while the scan runs.
// finish() clears heights outside the accepted range and hands the image
// back. Only rows that are multiples of the row step, and in them every
// column step-th column, become vertices.
class QelDataStreamAlg {
public:
    QelDataStreamAlg(const QelRangeImageParameter& parameter,
                     const osg::ref_ptr<osg::Vec3Array>& vertices,
                     const osg::ref_ptr<osg::Vec4Array>& colours,
                     const osg::ref_ptr<osg::Vec3Array>& normals,
                     const osg::ref_ptr<osg::DrawElementsUInt>& triangles);

    // 0, or 11501005 when the image cannot be allocated.
    long initialize();
    // Lines [startLine, endLine) of `type` samples (width each) and their
    // colours (width x channels bytes each). 0, or: 11501015 after finish;
    // 11200006 / 11200007 for a band out of range, reversed or overlapping
    // what came before; 11501016 when the column step leaves no column.
    // A refused band changes nothing.
    long appendDataStream(const void* data, const void* colour, int type, int startLine,
                          int endLine);
    int getCurHeight() const { return linesReceived_; }
    int getWidth() const { return parameter_.width; }
    const QelRangeImageParameter& parameter() const { return parameter_; }
    bool finished() const { return finished_; }
    // Filters the image once and copies it into result (full size; lines
    // never received stay invalid). A null result only ends the stream.
    void finish(QelRangeImage* result);

private:
    void appendVertices(int start, int end);
    void appendColours(size_t firstVertex);
    void appendTriangles(int start, int end);
    // The vertex of sampled grid cell (row, column), or kNoVertex.
    unsigned int& vertexAt(int row, int column);
    double height(long long pixel, bool* valid) const;

    QelRangeImageParameter parameter_;
    QelRangeImage image_;
    osg::ref_ptr<osg::Vec3Array> vertices_;
    osg::ref_ptr<osg::Vec4Array> colours_;
    osg::ref_ptr<osg::Vec3Array> normals_;
    osg::ref_ptr<osg::DrawElementsUInt> triangles_;
    int lastStart_ = 0, lastEnd_ = 0, linesReceived_ = 0;
    std::vector<unsigned int> index_;  // per sampled grid cell
    int gridRows_ = 0, gridColumns_ = 0;
    unsigned int vertexCount_ = 0;
    std::vector<unsigned int> bandVertices_;  // pixel of each vertex of the current band
    bool finished_ = false, filtered_ = false, started_ = false;
    QThreadPool pool_;
};
