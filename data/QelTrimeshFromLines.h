#pragma once

#include <osg/Array>
#include <vector>

#include "QelDataExport.h"

// Fills the closed loops of a line set with triangles. Every connected group
// of segments in which each vertex has exactly two neighbours is a loop and
// becomes the triangles of that polygon; open chains, branching groups and
// loops that cross themselves give none.
class QEL_DATA_API QelTrimeshFromLines {
public:
    // lines holds pairs of vertex indices.
    QelTrimeshFromLines(const osg::Vec3Array& vertices, const std::vector<unsigned int>& lines);

    // 0 when every index is in range and every vertex finite.
    long initialize();
    // The triangles as vertex-index triples; false when initialisation failed
    // or no loop gave a triangle.
    bool getTrimesh(std::vector<unsigned int>& triangles) const;

private:
    const osg::Vec3Array& vertices_;
    const std::vector<unsigned int>& lines_;
    std::vector<unsigned int> triangles_;
    bool initialized_ = false;
};
