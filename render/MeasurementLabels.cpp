#include "MeasurementLabels.h"

#include <osgUtil/CullVisitor>

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

}  // namespace

osg::Vec2d MeasurementLabels::extentOf(const Measurement& measurement, float size) {
    auto it = extents_.find(measurement.itemId());
    if (it != extents_.end() && it->second.size == size) return it->second.pixels;
    const osgText::Text& label = *measurement.label();
    osg::ref_ptr<osgText::Text> probe = new osgText::Text;
    probe->setFont(const_cast<osgText::Font*>(label.getFont()));
    probe->setCharacterSizeMode(osgText::Text::SCREEN_COORDS);
    probe->setCharacterSize(size);
    probe->setText(label.getText());
    const osg::BoundingBox& box = probe->getBoundingBox();
    const osg::Vec2d pixels(box.xMax() - box.xMin(), box.yMax() - box.yMin());
    extents_[measurement.itemId()] = Extent{size, pixels};
    return pixels;
}

bool MeasurementLabels::Box::overlaps(const Box& o, double margin) const {
    return left < o.right + margin && o.left < right + margin && bottom < o.top + margin &&
           o.bottom < top + margin;
}

void MeasurementLabels::operator()(osg::Node* node, osg::NodeVisitor* visitor) {
    auto* cull = dynamic_cast<osgUtil::CullVisitor*>(visitor);
    const osg::Camera* camera = cull ? cull->getCurrentCamera() : nullptr;
    if (camera && measurements_.count() > 0) {
        const ScreenProjection view(*camera);
        const double ratio = PixelRatio::of(camera);
        const float size = static_cast<float>(kLabelSize * ratio);
        const double gap = kGap * ratio, margin = kMargin * ratio;
        std::vector<Box> taken;
        if (const QelCubeAxis3d* axis = decorations_.cubeAxis())
            for (const QelCubeAxis3d::Label& l : axis->labels())
                taken.push_back(Box{0, l.left, l.bottom, l.right, l.top});
        boxes_.clear();
        for (int i = 0; i < measurements_.count() && view.valid(); ++i) {
            Measurement* m = measurements_.at(i);
            if (m->node()->getNodeMask() == 0) continue;
            osgText::Text* text = m->label();
            if (text->getCharacterHeight() != size) text->setCharacterSize(size);
            const osg::Vec2d extent = extentOf(*m, size);
            const double w = extent.x(), h = extent.y();
            const osg::Vec3d anchor = m->geometry().labelAnchor();
            const osg::Vec3d at = view.toWindow(anchor);
            // Right above, right below, left above, left below, above, below,
            // right, left; then the same a ring further out, and so on.
            const osg::Vec2d step(w + gap, h + gap);
            Box chosen{m->itemId(), 0, 0, 0, 0};
            osg::Vec2d offset;
            bool found = false;
            for (int ring = 0; ring < kRings && !found; ++ring) {
                const double rx = gap + ring * step.x(), ry = gap + ring * step.y();
                const osg::Vec2d offsets[] = {{rx, ry - gap},      {rx, -h - ry + gap},
                                              {-w - rx, ry - gap}, {-w - rx, -h - ry + gap},
                                              {-w / 2, ry},        {-w / 2, -h - ry},
                                              {rx, -h / 2},        {-w - rx, -h / 2}};
                for (const osg::Vec2d& o : offsets) {
                    const Box box{m->itemId(), at.x() + o.x(), at.y() + o.y(), at.x() + o.x() + w,
                                  at.y() + o.y() + h};
                    // Inside the view, clear of every label placed.
                    bool free = box.left >= 0 && box.bottom >= 0 && box.right <= view.width() &&
                                box.top <= view.height();
                    for (const Box& t : taken)
                        free = free && !box.overlaps(t, margin);
                    if (ring == 0 && o == offsets[0]) {
                        chosen = box;  // where it goes when no place is free
                        offset = o;
                    }
                    if (free) {
                        chosen = box;
                        offset = o;
                        found = true;
                        break;
                    }
                }
            }
            text->setPosition(osg::Vec3(view.shifted(anchor, offset)));
            taken.push_back(chosen);
            boxes_.push_back(chosen);
        }
    }
    traverse(node, visitor);
}
