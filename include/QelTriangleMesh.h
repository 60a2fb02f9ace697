#pragma once

#include <vector>

#include "Qel3DIntArray.h"
#include "QelColorArray.h"
#include "QelDataExport.h"
#include "QelVector3dArray.h"

// Vertices, triangles as vertex-index triples, and optional per-vertex
// colours. A triangle is valid when its three indices are distinct, in range
// and name valid vertices. Copies are deep.
class QEL_DATA_API QelTriangleMesh {
public:
    QelTriangleMesh() = default;

    int NumVertices() const { return vertices_.Length(); }
    int NumTriangles() const { return static_cast<int>(triangles_.size() / 3); }
    int NumValidVertices() const;
    int NumValidTriangles() const;

    float* VertexData() { return vertices_.Data(); }
    const float* VertexData() const { return vertices_.Data(); }
    int* TriangleData();
    const int* TriangleData() const;

    QelTriangleMesh DeepCopy() const { return *this; }
    QelVector3dArray DeepCopyVertex() const { return vertices_; }
    QelColorArray DeepCopyVertexColor() const { return colors_; }
    // True when there is one colour of at least 3 channels per vertex.
    bool IsValidVertexColor() const;

    // Replaces the vertices; colours whose count no longer matches are dropped.
    void SetVertices(const QelVector3dArray& vertices);
    // Flat vertex-index triples; false (and unchanged) when the length is
    // not a multiple of 3. Indices are checked by NumValidTriangles, not here.
    bool SetTriangles(const Qel3DIntArray& indices);
    // Empty, or one colour of 3 or 4 channels per vertex; false otherwise.
    bool SetVertexColors(const QelColorArray& colors);

private:
    QelVector3dArray vertices_;
    std::vector<int> triangles_;
    QelColorArray colors_;
};
