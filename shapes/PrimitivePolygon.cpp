#include "PrimitivePolygon.h"

#include "EarClipping.h"
#include "SimplePolygon.h"

PrimitivePolygon::PrimitivePolygon(const std::vector<osg::Vec3>& corners) : corners_(corners) {}

void PrimitivePolygon::buildLines() {
    const unsigned int first = static_cast<unsigned int>(vertices_->size());
    for (size_t i = 0; i < corners_.size() && corners_.size() >= 2; ++i) {
        append(corners_[i]);
        append(corners_[(i + 1) % corners_.size()]);
    }
    drawArrays(GL_LINES, first);
}

void PrimitivePolygon::buildSurface() {
    std::vector<Point> points;
    for (const osg::Vec3& c : corners_)
        points.push_back({c.x(), c.y(), c.z()});
    SimplePolygon polygon(points);
    std::vector<Triangle> triangles;
    if (polygon.initialize() == 0) {
        EarClipping clipping(polygon);
        if (clipping.initialize() != 0 || !clipping.getTriangles(triangles)) triangles.clear();
    }
    const osg::Vec3 normal(polygon.normal()[0], polygon.normal()[1], polygon.normal()[2]);
    for (const Triangle& t : triangles)
        for (int k : {t.a, t.b, t.c})
            append(corners_[static_cast<size_t>(k)], normal);
    drawArrays(GL_TRIANGLES, 0);
    buildLines();  // the outline, over vertices of its own
}
