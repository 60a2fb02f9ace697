#include "QelTrimeshFromLines.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "EarClipping.h"
#include "QelDataStatus.h"
#include "SimplePolygon.h"

QelTrimeshFromLines::QelTrimeshFromLines(const osg::Vec3Array& vertices,
                                         const std::vector<unsigned int>& lines)
    : vertices_(vertices), lines_(lines) {}

long QelTrimeshFromLines::initialize() {
    initialized_ = false;
    triangles_.clear();
    const size_t nv = vertices_.size();
    if (lines_.size() % 2 != 0) return QELMV::QEL_DATA_INVALID_ARGUMENT;
    for (unsigned int index : lines_)
        if (index >= nv) return QELMV::QEL_DATA_INVALID_ARGUMENT;
    for (const osg::Vec3f& v : vertices_)
        if (!std::isfinite(v.x()) || !std::isfinite(v.y()) || !std::isfinite(v.z()))
            return QELMV::QEL_DATA_INVALID_ARGUMENT;

    // Neighbour lists without repeated segments or self-loops.
    std::vector<std::vector<unsigned int>> neighbours(nv);
    for (size_t k = 0; k + 1 < lines_.size(); k += 2) {
        const unsigned int a = lines_[k], b = lines_[k + 1];
        if (a == b) continue;
        auto& na = neighbours[a];
        if (std::find(na.begin(), na.end(), b) != na.end()) continue;
        na.push_back(b);
        neighbours[b].push_back(a);
    }

    std::vector<char> seen(nv, 0);
    for (size_t start = 0; start < nv; ++start) {
        if (seen[start] || neighbours[start].empty()) continue;
        // Collect the connected group, checking that it is a single cycle.
        std::vector<unsigned int> group{static_cast<unsigned int>(start)};
        seen[start] = 1;
        bool cycle = true;
        for (size_t g = 0; g < group.size(); ++g) {
            const auto& nb = neighbours[group[g]];
            if (nb.size() != 2) cycle = false;
            for (unsigned int m : nb)
                if (!seen[m]) {
                    seen[m] = 1;
                    group.push_back(m);
                }
        }
        if (!cycle || group.size() < 3) continue;

        // Walk the cycle in order.
        std::vector<unsigned int> loop{static_cast<unsigned int>(start)};
        unsigned int prev = static_cast<unsigned int>(start), cur = neighbours[start][0];
        while (cur != start) {
            loop.push_back(cur);
            const auto& nb = neighbours[cur];
            const unsigned int nextVertex = nb[0] == prev ? nb[1] : nb[0];
            prev = cur;
            cur = nextVertex;
        }
        std::vector<Point> points;
        points.reserve(loop.size());
        for (unsigned int index : loop) {
            const osg::Vec3f& v = vertices_[index];
            points.push_back({v.x(), v.y(), v.z()});
        }
        SimplePolygon polygon(points);
        if (polygon.initialize() != 0) continue;
        EarClipping clipper(polygon);
        std::vector<Triangle> triangles;
        if (clipper.initialize() != 0 || !clipper.getTriangles(triangles)) continue;
        for (const Triangle& t : triangles) {
            triangles_.push_back(loop[static_cast<std::size_t>(t.a)]);
            triangles_.push_back(loop[static_cast<std::size_t>(t.b)]);
            triangles_.push_back(loop[static_cast<std::size_t>(t.c)]);
        }
    }
    initialized_ = true;
    return QELMV::QEL_DATA_OK;
}

bool QelTrimeshFromLines::getTrimesh(std::vector<unsigned int>& triangles) const {
    if (!initialized_ || triangles_.empty()) return false;
    triangles = triangles_;
    return true;
}
