#include "Measurement.h"

#include <algorithm>
#include <cmath>

namespace {

// An angle's arc is a chain of segments, one for every few degrees of it
// (a hundred pixels out, a chord then strays a sixth of a pixel), and at
// least a few.
constexpr double kArcStepDegrees = 6.0;
constexpr int kMinArcSegments = 4;

// p rotated from unit a towards unit b by t of their angle theta (spherical
// interpolation); a half turn goes through 'side'.
osg::Vec3d arcPoint(const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& side, double theta,
                    double t) {
    if (std::sin(theta) < 1e-6) return a * std::cos(theta * t) + side * std::sin(theta * t);
    return (a * std::sin((1 - t) * theta) + b * std::sin(t * theta)) / std::sin(theta);
}

// Any unit vector perpendicular to v.
osg::Vec3d perpendicular(const osg::Vec3d& v) {
    osg::Vec3d p = v ^ (std::fabs(v.x()) < 0.9 ? osg::Vec3d(1, 0, 0) : osg::Vec3d(0, 1, 0));
    p.normalize();
    return p;
}

}  // namespace

Measurement::Measurement(ObjectId id, const MeasurementGeometry& geometry)
    : id_(id), geometry_(geometry) {
    switch (geometry_.kind()) {
        case MeasureKind::Distance:
            buildDistance();
            break;
        case MeasureKind::Angle:
            buildAngle();
            break;
        case MeasureKind::Height:
            buildHeight();
            break;
    }
    // One text a line: the view stacks them itself, at the same pitch at
    // any pixel ratio.
    const std::string text = geometry_.label();
    size_t from = 0;
    while (from <= text.size()) {
        const size_t end = std::min(text.find('\n', from), text.size());
        labels_.push_back(text.substr(from, end - from));
        from = end + 1;
    }
}

void Measurement::buildDistance() {
    const std::vector<osg::Vec3d>& p = geometry_.points();
    addLines({p[0], p[1]});
    addMarks({p[0], p[1]});
}

void Measurement::buildAngle() {
    const std::vector<osg::Vec3d>& p = geometry_.points();
    addLines({p[1], p[0], p[1], p[2]});
    addMarks({p[0], p[1], p[2]});
    osg::Vec3d a = p[0] - p[1], b = p[2] - p[1];
    const double radius = 0.3 * std::min(a.length(), b.length());
    a.normalize();
    b.normalize();
    const double theta = geometry_.value() * M_PI / 180.0;
    const osg::Vec3d side = perpendicular(a);
    const int segments =
        std::max(kMinArcSegments, int(std::ceil(geometry_.value() / kArcStepDegrees)));
    osg::Vec3d previous = p[1] + a * radius;
    for (int i = 1; i <= segments; ++i) {
        const osg::Vec3d next = p[1] + arcPoint(a, b, side, theta, double(i) / segments) * radius;
        addLines({previous, next});
        previous = next;
    }
}

void Measurement::buildHeight() {
    const std::vector<osg::Vec3d>& p = geometry_.points();
    const osg::Vec3d& foot = geometry_.foot();
    addMarks({p[0], p[1], p[2], p[3]});
    drawing_.dashes.push_back(osg::Vec3(p[3]));
    drawing_.dashes.push_back(osg::Vec3(foot));
    // A small square of the plane around the foot, a fifth as wide as the
    // farthest plane point lies from it: enough to show the plane's tilt,
    // little enough that many patches cost little to fill.
    double half = 0;
    for (int i = 0; i < 3; ++i)
        half = std::max(half, (p[i] - foot).length());
    half *= 0.1;
    osg::Vec3d u = p[1] - p[0];
    u.normalize();
    const osg::Vec3d v = geometry_.normal() ^ u;
    const osg::Vec3d c[4] = {foot - u * half - v * half, foot + u * half - v * half,
                             foot + u * half + v * half, foot - u * half + v * half};
    addLines({c[0], c[1], c[1], c[2], c[2], c[3], c[3], c[0]});
    for (int k : {0, 1, 2, 0, 2, 3})
        drawing_.patches.push_back(osg::Vec3(c[k]));
}

void Measurement::addLines(std::initializer_list<osg::Vec3d> pairs) {
    for (const osg::Vec3d& v : pairs)
        drawing_.lines.push_back(osg::Vec3(v));
}

void Measurement::addMarks(std::initializer_list<osg::Vec3d> marks) {
    for (const osg::Vec3d& v : marks)
        drawing_.marks.push_back(osg::Vec3(v));
}

void Measurement::setItemVisible(bool visible) {
    visible_ = visible;
    if (changed_) changed_();
}

osg::BoundingBox Measurement::itemBounds() const {
    osg::BoundingBox box;
    for (const osg::Vec3d& p : geometry_.points())
        box.expandBy(osg::Vec3(p));
    return box;
}
