#include "PrimitiveAnyShape.h"

#include "QelTrimeshFromLines.h"

PrimitiveAnyShape::PrimitiveAnyShape(const std::vector<osg::Vec3>& points,
                                     const std::vector<unsigned int>& lines)
    : points_(points) {
    for (size_t i = 0; i + 1 < lines.size(); i += 2)
        if (lines[i] < points.size() && lines[i + 1] < points.size())
            lines_.insert(lines_.end(), {lines[i], lines[i + 1]});
}

void PrimitiveAnyShape::buildLines() {
    const unsigned int first = static_cast<unsigned int>(vertices_->size());
    for (unsigned int i : lines_)
        append(points_[i]);
    drawArrays(GL_LINES, first);
}

void PrimitiveAnyShape::buildSurface() {
    osg::ref_ptr<osg::Vec3Array> all = new osg::Vec3Array(points_.begin(), points_.end());
    QelTrimeshFromLines loops(*all, lines_);
    std::vector<unsigned int> triangles;
    if (loops.initialize() == 0 && loops.getTrimesh(triangles)) {
        for (size_t t = 0; t + 2 < triangles.size(); t += 3) {
            const osg::Vec3 &a = points_[triangles[t]], &b = points_[triangles[t + 1]],
                            &c = points_[triangles[t + 2]];
            osg::Vec3 n = (b - a) ^ (c - a);
            n.normalize();
            for (const osg::Vec3* v : {&a, &b, &c})
                append(*v, n);
        }
    }
    drawArrays(GL_TRIANGLES, 0);
    buildLines();
}
