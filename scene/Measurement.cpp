#include "Measurement.h"

#include <cmath>
#include <osg/CopyOp>

#include "NodeMasks.h"

namespace {

// Segments of an angle's arc.
constexpr int kArcSegments = 32;

// p rotated from unit a towards unit b by t of their angle theta (spherical
// interpolation); a half turn goes through 'side'.
osg::Vec3d arcPoint(const osg::Vec3d& a, const osg::Vec3d& b, const osg::Vec3d& side, double theta,
                    double t) {
    if (std::sin(theta) < 1e-6) return a * std::cos(theta * t) + side * std::sin(theta * t);
    return (a * std::sin((1 - t) * theta) + b * std::sin(t * theta)) / std::sin(theta);
}

// The background a label colour is the inverse of, a little see-through.
osg::Vec4 backdropOf(const osg::Vec4& colour) {
    return osg::Vec4(1 - colour.r(), 1 - colour.g(), 1 - colour.b(), 0.8f);
}

// Any unit vector perpendicular to v.
osg::Vec3d perpendicular(const osg::Vec3d& v) {
    osg::Vec3d p = v ^ (std::fabs(v.x()) < 0.9 ? osg::Vec3d(1, 0, 0) : osg::Vec3d(0, 1, 0));
    p.normalize();
    return p;
}

}  // namespace

Measurement::Measurement(ObjectId id, const MeasurementGeometry& geometry,
                         const osgText::Text& prototype, const osg::Vec4& colour)
    : id_(id), geometry_(geometry), root_(new osg::Group), labelGeode_(new osg::Geode) {
    osg::StateSet* ss = root_->getOrCreateStateSet();
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    // Over the data, never hidden inside it.
    ss->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
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
        osg::ref_ptr<osgText::Text> line = new osgText::Text(prototype, osg::CopyOp::SHALLOW_COPY);
        // A shadow in the background's colour keeps the label readable over
        // the data (an outline reads a little better but draws each glyph
        // eight times more: 1,000 labels then cost a second a frame).
        line->setBackdropType(osgText::Text::DROP_SHADOW_BOTTOM_RIGHT);
        line->setBackdropColor(backdropOf(colour));
        line->setText(text.substr(from, end - from), osgText::String::ENCODING_UTF8);
        line->setPosition(geometry_.labelAnchor());
        line->setAxisAlignment(osgText::Text::SCREEN);
        line->setCharacterSizeMode(osgText::Text::SCREEN_COORDS);
        line->setAlignment(osgText::Text::LEFT_BASE_LINE);
        line->setColor(colour);
        line->setUseDisplayList(false);
        // Its bound follows the camera a frame late; the label is laid out
        // on screen every frame and never culled by it.
        line->setCullingActive(false);
        line->setUseVertexArrayObject(false);
        labelGeode_->addDrawable(line.get());
        labels_.push_back(line);
        from = end + 1;
    }
    // A label is shown whole or not at all: the clip plane does not cut it.
    labelGeode_->getOrCreateStateSet()->setMode(GL_CLIP_PLANE0, osg::StateAttribute::OFF);
    root_->addChild(labelGeode_.get());
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
    // The arc as a chain of segments.
    osg::Vec3d previous = p[1] + a * radius;
    for (int i = 1; i <= kArcSegments; ++i) {
        const osg::Vec3d next =
            p[1] + arcPoint(a, b, side, theta, double(i) / kArcSegments) * radius;
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
    // A square of the plane around the foot, a fifth as wide as the plane
    // points lie apart from it: enough to show the plane's tilt.
    double half = 0;
    for (int i = 0; i < 3; ++i)
        half = std::max(half, (p[i] - foot).length());
    half *= 0.2;
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

void Measurement::setColour(const osg::Vec4& colour) {
    for (const auto& line : labels_) {
        line->setColor(colour);
        line->setBackdropColor(backdropOf(colour));
    }
}

void Measurement::setItemVisible(bool visible) {
    visible_ = visible;
    root_->setNodeMask(visible ? NodeMasks::kNotPickable : 0u);
    if (changed_) changed_();
}

osg::BoundingBox Measurement::itemBounds() const {
    osg::BoundingBox box;
    for (const osg::Vec3d& p : geometry_.points())
        box.expandBy(osg::Vec3(p));
    return box;
}
