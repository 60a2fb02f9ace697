#include "QelTriangleMesh.h"

int QelTriangleMesh::NumValidVertices() const {
    int n = 0;
    for (int i = 0; i < vertices_.Length(); ++i)
        if (vertices_[i].IsValid()) ++n;
    return n;
}

int QelTriangleMesh::NumValidTriangles() const {
    const int nv = vertices_.Length();
    auto usable = [&](int i) { return i >= 0 && i < nv && vertices_[i].IsValid(); };
    int n = 0;
    for (size_t t = 0; t + 2 < triangles_.size(); t += 3) {
        const int a = triangles_[t], b = triangles_[t + 1], c = triangles_[t + 2];
        if (usable(a) && usable(b) && usable(c) && a != b && b != c && a != c) ++n;
    }
    return n;
}

int* QelTriangleMesh::TriangleData() {
    return triangles_.empty() ? nullptr : triangles_.data();
}

const int* QelTriangleMesh::TriangleData() const {
    return triangles_.empty() ? nullptr : triangles_.data();
}

bool QelTriangleMesh::IsValidVertexColor() const {
    return !colors_.IsEmpty() && colors_.Length() == vertices_.Length() && colors_.Channel() >= 3;
}

void QelTriangleMesh::SetVertices(const QelVector3dArray& vertices) {
    vertices_ = vertices;
    if (colors_.Length() != vertices_.Length()) colors_ = QelColorArray();
}

bool QelTriangleMesh::SetTriangles(const Qel3DIntArray& indices) {
    if (indices.Length() % 3 != 0) return false;
    const int* p = indices.Data();
    triangles_.assign(p, p + indices.Length());
    return true;
}

bool QelTriangleMesh::SetVertexColors(const QelColorArray& colors) {
    if (colors.IsEmpty()) {
        colors_ = QelColorArray();
        return true;
    }
    if (colors.Length() != vertices_.Length() || colors.Channel() < 3) return false;
    colors_ = colors;
    return true;
}
