#pragma once

// What the cube axis's builders share: the box's corners, faces and edges,
// and the small helpers its lines and labels are made with.
#include <algorithm>
#include <array>
#include <osg/Geometry>
#include <osg/PrimitiveSet>
#include <osg/Vec2d>
#include <vector>

#include "AxisTicks.h"
#include "QelCubeAxis3d.h"

namespace CubeAxisBox {

// Corners: the bottom face (z min) counter-clockwise from the minimum, then
// the top face in the same order; which end of x, y and z each one takes.
inline const int kCornerSide[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                      {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

struct FaceEntry {
    const char* name;
    std::array<int, 4> corners;
    osg::Vec3d normal;
};
inline const FaceEntry kFaces[6] = {
    {"Top", {4, 5, 6, 7}, {0, 0, 1}},    {"Bottom", {0, 1, 2, 3}, {0, 0, -1}},
    {"Left", {0, 3, 7, 4}, {-1, 0, 0}},  {"Right", {1, 2, 6, 5}, {1, 0, 0}},
    {"Front", {0, 1, 5, 4}, {0, -1, 0}}, {"Back", {3, 2, 6, 7}, {0, 1, 0}}};

// Edges from the low to the high end of their axis: four along x, then y, z.
inline const int kEdges[12][2] = {{0, 1}, {3, 2}, {4, 5}, {7, 6}, {0, 3}, {1, 2},
                                  {4, 7}, {5, 6}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};

inline bool hasCorner(const FaceEntry& face, int corner) {
    return std::find(face.corners.begin(), face.corners.end(), corner) != face.corners.end();
}

// The two faces that meet at an edge.
inline std::array<int, 2> facesOfEdge(int edge) {
    std::array<int, 2> out{{-1, -1}};
    int n = 0;
    for (int f = 0; f < 6 && n < 2; ++f)
        if (hasCorner(kFaces[f], kEdges[edge][0]) && hasCorner(kFaces[f], kEdges[edge][1]))
            out[n++] = f;
    return out;
}

inline void setLines(osg::Geometry* geometry, osg::Vec3Array* vertices, const osg::Vec4& colour) {
    geometry->setVertexArray(vertices);
    auto* colours = static_cast<osg::Vec4Array*>(geometry->getColorArray());
    (*colours)[0] = colour;
    colours->dirty();
    static_cast<osg::DrawArrays*>(geometry->getPrimitiveSet(0))
        ->setCount(static_cast<GLsizei>(vertices->size()));
    geometry->dirtyBound();
}

inline osg::Vec2d toScreen(const osg::Vec3d& window) {
    return osg::Vec2d(window.x(), window.y());
}

}  // namespace CubeAxisBox

struct QelCubeAxis3d::Layout {
    int backCorner = 0;
    std::array<bool, 6> facing{};           // the face turns towards the viewer
    std::array<int, 3> edge{{-1, -1, -1}};  // labelled edge per axis
    std::array<osg::Vec2d, 3> outward{};    // screen direction away from the box
};

struct QelCubeAxis3d::AxisPlacement {
    osg::Vec3d from, to;  // the labelled edge, low end first
    osg::Vec2d along;     // its screen direction
    std::vector<AxisTicks::Tick> ticks;
    std::vector<osg::ref_ptr<osgText::Text>> texts;
};
