#include "PrimitiveBox.h"

#include "Tessellation.h"

namespace {

// Corners indexed by bits (x, y, z), faces as quads of corners in
// counter-clockwise order seen from outside, and the 12 edges.
const int kFaces[6][4] = {{0, 2, 6, 4}, {1, 5, 7, 3}, {0, 4, 5, 1},
                          {2, 3, 7, 6}, {0, 1, 3, 2}, {4, 6, 7, 5}};
const osg::Vec3 kFaceNormals[6] = {{0, 0, -1}, {0, 0, 1},  {0, -1, 0},
                                   {0, 1, 0},  {-1, 0, 0}, {1, 0, 0}};

}  // namespace

PrimitiveBox::PrimitiveBox(const osg::Vec3& centre, const osg::Vec3& angles, const osg::Vec3& size)
    : half_(size * 0.5f) {
    setPose(Tessellation::poseByAngles(centre, angles));
}

osg::Vec3 PrimitiveBox::corner(int i) const {
    return osg::Vec3((i & 4) ? half_.x() : -half_.x(), (i & 2) ? half_.y() : -half_.y(),
                     (i & 1) ? half_.z() : -half_.z());
}

void PrimitiveBox::buildSurface() {
    vertices_->reserve(36);
    normals_->reserve(36);
    std::vector<unsigned int> edges;
    for (int f = 0; f < 6; ++f) {
        const int* q = kFaces[f];
        const unsigned int first = static_cast<unsigned int>(vertices_->size());
        for (int k : {0, 1, 2, 0, 2, 3})
            append(corner(q[k]), kFaceNormals[f]);
        // The z faces carry the edges around them, the y faces the four
        // upright edges: each of the 12 edges once.
        if (f < 2)
            for (unsigned int k : {0u, 1u, 1u, 2u, 2u, 5u, 5u, 0u})
                edges.push_back(first + k);
        if (f == 2)
            for (unsigned int k : {1u, 2u, 5u, 0u})
                edges.push_back(first + k);
        if (f == 3)
            for (unsigned int k : {0u, 1u, 2u, 5u})
                edges.push_back(first + k);
    }
    drawArrays(GL_TRIANGLES, 0);
    drawLineElements(edges);
}

void PrimitiveBox::buildLines() {
    // Edges along x, then y, then z.
    for (int axis : {4, 2, 1})
        for (int i = 0; i < 8; ++i)
            if (!(i & axis)) {
                append(corner(i));
                append(corner(i | axis));
            }
    drawArrays(GL_LINES, 0);
}
