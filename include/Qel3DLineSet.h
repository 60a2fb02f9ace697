#pragma once

#include <vector>

#include "QelDataExport.h"

// Vertices and line segments between them: packed x, y, z float triples and
// packed pairs of vertex indices.
class QEL_DATA_API Qel3DLineSet {
public:
    Qel3DLineSet() = default;

    // Allocates zeroed vertices and lines. False for negative counts.
    bool SetSize(int numVertex, int numLine);

    int NumVertex() const { return static_cast<int>(vertices_.size() / 3); }
    int NumLine() const { return static_cast<int>(lines_.size() / 2); }
    float* VertexData();
    const float* VertexData() const;
    int* LineData();
    const int* LineData() const;

private:
    std::vector<float> vertices_;
    std::vector<int> lines_;
};
