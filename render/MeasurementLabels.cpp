#include "MeasurementLabels.h"

#include <osgUtil/CullVisitor>

#include "ClipPlane.h"
#include "MeasurementSet.h"
#include "PixelRatio.h"
#include "QelCubeAxis3d.h"
#include "ScreenProjection.h"
#include "ViewDecorations.h"

namespace {

// Logical pixels between a label and its anchor, and kept free around it.
constexpr double kGap = 6.0;
constexpr double kMargin = 2.0;
// How far out a crowded label may go: rings of candidate places, each a
// label's size further from its anchor.
constexpr int kRings = 6;
// The pitch of label lines, in character heights.
constexpr double kLineStep = 1.2;
// How far glyphs reach below their base line, in character heights.
constexpr double kDescent = 0.25;

}  // namespace

const MeasurementLabels::Extent& MeasurementLabels::extentOf(const Measurement& measurement,
                                                             float size) {
    auto it = extents_.find(measurement.itemId());
    if (it != extents_.end() && it->second.size == size) return it->second;
    Extent& extent = extents_[measurement.itemId()];
    extent = Extent{size, 0, 0};
    for (const std::string& line : measurement.labelLines())
        extent.width = std::max(extent.width, canvas_.textWidth(line));
    extent.lineHeight = size * kLineStep;
    return extent;
}

namespace {

// The lines a measurement draws, as pairs of world points.
std::vector<std::pair<osg::Vec3d, osg::Vec3d>> segmentsOf(const MeasurementGeometry& g) {
    const std::vector<osg::Vec3d>& p = g.points();
    switch (g.kind()) {
        case MeasureKind::Distance:
            return {{p[0], p[1]}};
        case MeasureKind::Angle:
            return {{p[1], p[0]}, {p[1], p[2]}};
        case MeasureKind::Height:
            return {{p[3], g.foot()}};
    }
    return {};
}

// Whether the window segment a-b passes through the box grown by margin
// (Liang-Barsky clipping).
bool crosses(const osg::Vec2d& a, const osg::Vec2d& b, const MeasurementLabels::Box& box,
             double margin) {
    const osg::Vec2d d = b - a;
    double t0 = 0, t1 = 1;
    const double p[4] = {-d.x(), d.x(), -d.y(), d.y()};
    const double q[4] = {a.x() - (box.left - margin), (box.right + margin) - a.x(),
                         a.y() - (box.bottom - margin), (box.top + margin) - a.y()};
    for (int k = 0; k < 4; ++k) {
        if (p[k] == 0) {
            if (q[k] < 0) return false;
            continue;
        }
        const double t = q[k] / p[k];
        if (p[k] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1) return false;
    }
    return true;
}

}  // namespace

bool MeasurementLabels::layoutChanged(const osg::Camera& camera) {
    std::vector<double> key;
    // Where things land on the screen, not their depth: the near and far
    // planes follow what is shown, and a label does not move with them.
    const osg::Matrixd& view = camera.getViewMatrix();
    key.assign(view.ptr(), view.ptr() + 16);
    const osg::Matrixd& projection = camera.getProjectionMatrix();
    for (int k = 0; k < 16; ++k)
        if (k != 10 && k != 14) key.push_back(projection.ptr()[k]);
    if (const osg::Viewport* v = camera.getViewport())
        key.insert(key.end(), {v->width(), v->height()});
    key.push_back(PixelRatio::of(&camera));
    const osg::Vec4& plane = clip_.plane();
    key.insert(key.end(), {clip_.isOn() ? 1.0 : 0.0, plane.x(), plane.y(), plane.z(), plane.w()});
    const QelCubeAxis3d* axis = decorations_.cubeAxis();
    key.push_back(axis ? double(axis->labels().size()) : -1.0);
    const osg::Vec4& colour = measurements_.colour();
    key.insert(key.end(), {colour.r(), colour.g(), colour.b(), colour.a()});
    for (int i = 0; i < measurements_.count(); ++i) {
        key.push_back(double(measurements_.at(i)->itemId()));
        key.push_back(measurements_.at(i)->visible() ? 1.0 : 0.0);
    }
    if (key == layoutKey_) return false;
    layoutKey_ = std::move(key);
    return true;
}

bool MeasurementLabels::Box::overlaps(const Box& o, double margin) const {
    return left < o.right + margin && o.left < right + margin && bottom < o.top + margin &&
           o.bottom < top + margin;
}

void MeasurementLabels::operator()(osg::Node* node, osg::NodeVisitor* visitor) {
    auto* cull = dynamic_cast<osgUtil::CullVisitor*>(visitor);
    const osg::Camera* camera = cull ? cull->getCurrentCamera() : nullptr;
    // Nothing to do while there is nothing to show and nothing shown.
    const bool idle = measurements_.count() == 0 && canvas_.empty();
    if (camera && !idle && layoutChanged(*camera)) {
        const ScreenProjection view(*camera);
        const double ratio = PixelRatio::of(camera);
        const float size = static_cast<float>(kLabelSize * ratio);
        const double gap = kGap * ratio, margin = kMargin * ratio;
        canvas_.begin(view.width(), view.height(), size);
        std::vector<Box> taken;
        if (const QelCubeAxis3d* axis = decorations_.cubeAxis())
            for (const QelCubeAxis3d::Label& l : axis->labels())
                taken.push_back(Box{0, l.left, l.bottom, l.right, l.top});
        // Labels keep off every measurement's lines too.
        std::vector<std::pair<osg::Vec2d, osg::Vec2d>> drawn;
        for (int i = 0; i < measurements_.count() && view.valid(); ++i) {
            if (!measurements_.at(i)->visible()) continue;
            for (const auto& s : segmentsOf(measurements_.at(i)->geometry())) {
                const osg::Vec3d a = view.toWindow(s.first), b = view.toWindow(s.second);
                drawn.emplace_back(osg::Vec2d(a.x(), a.y()), osg::Vec2d(b.x(), b.y()));
            }
        }
        boxes_.clear();
        for (int i = 0; i < measurements_.count() && view.valid(); ++i) {
            Measurement* m = measurements_.at(i);
            if (!m->visible()) continue;
            const osg::Vec3d anchor = m->geometry().labelAnchor();
            const bool cut =
                clip_.isOn() && osg::Vec4d(clip_.plane()) * osg::Vec4d(anchor, 1.0) < 0;
            if (cut) continue;
            const Extent& extent = extentOf(*m, size);
            const auto& lines = m->labelLines();
            const double w = extent.width, h = extent.lineHeight * double(lines.size());
            const osg::Vec3d at = view.toWindow(anchor);
            // Right above, right below, left above, left below, above, below,
            // right, left; then the same a ring further out, and so on. First
            // off every measurement's lines, then only off the labels; a label
            // with no free place is left out, as the axis leaves out its own.
            const osg::Vec2d step(w + gap, h + gap);
            Box chosen{m->itemId(), 0, 0, 0, 0};
            bool found = false;
            for (int pass = 0; pass < 2 && !found; ++pass)
                for (int ring = 0; ring < kRings && !found; ++ring) {
                    const double rx = gap + ring * step.x(), ry = gap + ring * step.y();
                    const osg::Vec2d offsets[] = {{rx, ry - gap},      {rx, -h - ry + gap},
                                                  {-w - rx, ry - gap}, {-w - rx, -h - ry + gap},
                                                  {-w / 2, ry},        {-w / 2, -h - ry},
                                                  {rx, -h / 2},        {-w - rx, -h / 2}};
                    for (const osg::Vec2d& o : offsets) {
                        const Box box{m->itemId(), at.x() + o.x(), at.y() + o.y(),
                                      at.x() + o.x() + w, at.y() + o.y() + h};
                        bool free = box.left >= 0 && box.bottom >= 0 && box.right <= view.width() &&
                                    box.top <= view.height();
                        for (const Box& t : taken)
                            free = free && !box.overlaps(t, margin);
                        if (pass == 0)
                            for (const auto& l : drawn)
                                free = free && !crosses(l.first, l.second, box, margin);
                        if (free) {
                            chosen = box;
                            found = true;
                            break;
                        }
                    }
                }
            if (!found) continue;
            // The lines from the box's top down, each on its base line, a
            // descent above the bottom of its row.
            for (size_t k = 0; k < lines.size(); ++k)
                canvas_.text(chosen.left,
                             chosen.top - extent.lineHeight * double(k + 1) + kDescent * size,
                             lines[k], measurements_.colour());
            taken.push_back(chosen);
            boxes_.push_back(chosen);
        }
        canvas_.end();
    }
    traverse(node, visitor);
}
