#include "PrimitiveHexahedron.h"

namespace {
const int kFaces[6][4] = {{0, 2, 6, 4}, {1, 5, 7, 3}, {0, 4, 5, 1},
                          {2, 3, 7, 6}, {0, 1, 3, 2}, {4, 6, 7, 5}};
}

PrimitiveHexahedron::PrimitiveHexahedron(const std::array<osg::Vec3, 8>& corners)
    : corners_(corners) {}

void PrimitiveHexahedron::buildSurface() {
    for (const auto& q : kFaces) {
        // Two triangles, each with its own normal: the face may be bent.
        const int triangles[2][3] = {{q[0], q[1], q[2]}, {q[0], q[2], q[3]}};
        for (const auto& t : triangles) {
            osg::Vec3 n = (corners_[size_t(t[1])] - corners_[size_t(t[0])]) ^
                          (corners_[size_t(t[2])] - corners_[size_t(t[0])]);
            n.normalize();
            for (int k : t)
                append(corners_[size_t(k)], n);
        }
    }
    drawArrays(GL_TRIANGLES, 0);
    buildLines();  // the edges, over vertices of their own
}

void PrimitiveHexahedron::buildLines() {
    const unsigned int first = static_cast<unsigned int>(vertices_->size());
    for (int axis : {4, 2, 1})
        for (int i = 0; i < 8; ++i)
            if (!(i & axis)) {
                append(corners_[size_t(i)]);
                append(corners_[size_t(i | axis)]);
            }
    drawArrays(GL_LINES, first);
}
