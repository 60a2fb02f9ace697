// The cube axis's ticks, labels and titles: placed outside the box's
// outline, in screen pixels, leaving out any that would touch another.
#include <cmath>

#include "CubeAxisBox.h"
#include "ScreenProjection.h"

using namespace CubeAxisBox;

namespace {

const osg::Vec4 kAxisColours[3] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
const char* const kTitles[3] = {"X", "Y", "Z"};

// Pixels kept free around every label.
constexpr double kLabelMargin = 2.0;

// Half the size of a w x h box measured along a screen direction.
double halfExtent(const osg::Vec2d& direction, double w, double h) {
    return 0.5 * (std::abs(direction.x()) * w + std::abs(direction.y()) * h);
}

}  // namespace

QelCubeAxis3d::AxisPlacement QelCubeAxis3d::placeAxis(int axis, const Layout& layout,
                                                      const ScreenProjection& view) const {
    AxisPlacement p;
    const int e = layout.edge[axis];
    if (e < 0) return p;
    p.from = corner(kEdges[e][0]);
    p.to = corner(kEdges[e][1]);
    const osg::Vec2d d = toScreen(view.toWindow(p.to)) - toScreen(view.toWindow(p.from));
    const double length = d.length();
    p.along = d / length;
    const double lo = bounds_[2 * axis], hi = bounds_[2 * axis + 1];
    // The densest round step whose labels fit along the edge without touching.
    double tried = 0.0;
    for (int intervals = tickCount_; intervals >= 1; --intervals) {
        const double step = AxisTicks::step(lo, hi, intervals);
        if (step == tried) continue;
        tried = step;
        std::vector<AxisTicks::Tick> ticks = AxisTicks::ticks(lo, hi, step);
        std::vector<osg::ref_ptr<osgText::Text>> texts;
        double widest = 0.0, tallest = 0.0;
        for (const AxisTicks::Tick& tick : ticks) {
            texts.push_back(makeText(tick.label, px(labelSize_)));
            const osg::BoundingBox& box = texts.back()->getBoundingBox();
            widest = std::max(widest, double(box.xMax() - box.xMin()));
            tallest = std::max(tallest, double(box.yMax() - box.yMin()));
        }
        const double pitch = length * step / (hi - lo);
        if (pitch >= 2.0 * halfExtent(p.along, widest, tallest) + px(labelGap_)) {
            p.ticks = std::move(ticks);
            p.texts = std::move(texts);
            break;
        }
    }
    return p;
}

void QelCubeAxis3d::rebuildLabels(const Layout& layout, const ScreenProjection& view) {
    labels_.clear();
    texts_->removeDrawables(0, texts_->getNumDrawables());
    std::array<AxisPlacement, 3> placed;
    for (int axis = 0; axis < 3; ++axis)
        placed[axis] = placeAxis(axis, layout, view);

    // Places a text centred 'offset' pixels from a point of the box in the
    // screen direction 'towards', unless it would touch a placed one.
    auto place = [&](osgText::Text* text, const osg::Vec3d& anchor, const osg::Vec2d& towards,
                     double offset, int axis, bool title) {
        const osg::BoundingBox& box = text->getBoundingBox();
        const double w = box.xMax() - box.xMin(), h = box.yMax() - box.yMin();
        const osg::Vec3d window = view.toWindow(anchor);
        const osg::Vec2d c = toScreen(window) + towards * offset;
        Label label{text->getText().createUTF8EncodedString(),
                    axis,
                    title,
                    c.x() - w / 2,
                    c.y() - h / 2,
                    c.x() + w / 2,
                    c.y() + h / 2};
        for (const Label& other : labels_)
            if (label.left < other.right + px(kLabelMargin) &&
                other.left < label.right + px(kLabelMargin) &&
                label.bottom < other.top + px(kLabelMargin) &&
                other.bottom < label.top + px(kLabelMargin))
                return;
        text->setPosition(view.toWorld(osg::Vec3d(c.x(), c.y(), window.z())));
        texts_->addDrawable(text);
        labels_.push_back(label);
    };

    osg::ref_ptr<osg::Vec3Array> ticks = new osg::Vec3Array;
    const double titleDistance = px(titleSize_) * labelOffset_;
    for (int axis = 0; axis < 3; ++axis) {
        AxisPlacement& p = placed[axis];
        osg::ref_ptr<osg::Vec3Array> line = new osg::Vec3Array, pointer = new osg::Vec3Array;
        if (layout.edge[axis] >= 0) {
            line->push_back(p.from);
            line->push_back(p.to);
            pointer->push_back(p.to);
            pointer->push_back(view.shifted(p.to, p.along * (0.5 * titleDistance)));
            if (kept(p.to)) {
                osg::ref_ptr<osgText::Text> title = makeText(kTitles[axis], 2.0f * px(titleSize_));
                const osg::BoundingBox& box = title->getBoundingBox();
                const osg::Vec2d& o = layout.outward[axis];
                // Beyond the axis end, and clear of the box's outline.
                const osg::Vec2d towards =
                    p.along * titleDistance +
                    o * (halfExtent(o, box.xMax() - box.xMin(), box.yMax() - box.yMin()) +
                         px(kLabelMargin));
                place(title.get(), p.to, towards / towards.length(), towards.length(), axis, true);
            }
        }
        setLines(axisLines_[axis].get(), line.get(), kAxisColours[axis]);
        setLines(directionLines_[axis].get(), pointer.get(), kAxisColours[axis]);
    }
    for (int axis = 0; axis < 3; ++axis) {
        const AxisPlacement& p = placed[axis];
        const osg::Vec2d& o = layout.outward[axis];
        const double lo = bounds_[2 * axis], hi = bounds_[2 * axis + 1];
        for (size_t i = 0; i < p.ticks.size(); ++i) {
            const osg::Vec3d anchor =
                p.from + (p.to - p.from) * ((p.ticks[i].value - lo) / (hi - lo));
            ticks->push_back(anchor);
            ticks->push_back(view.shifted(anchor, o * px(tickLength_)));
            if (!kept(anchor)) continue;
            const osg::BoundingBox& box = p.texts[i]->getBoundingBox();
            const double offset = px(tickLength_) + px(labelGap_) +
                                  halfExtent(o, box.xMax() - box.xMin(), box.yMax() - box.yMin());
            place(p.texts[i].get(), anchor, o, offset, axis, false);
        }
    }
    setLines(tickLines_.get(), ticks.get(), labelColor_);
}

osg::ref_ptr<osgText::Text> QelCubeAxis3d::makeText(const std::string& content, float size) const {
    osg::ref_ptr<osgText::Text> text = new osgText::Text;
    if (font_) text->setFont(font_);
    text->setCharacterSizeMode(osgText::Text::SCREEN_COORDS);
    text->setCharacterSize(size);
    text->setAxisAlignment(osgText::Text::SCREEN);
    text->setAlignment(osgText::Text::CENTER_CENTER);
    text->setColor(labelColor_);
    text->setUseDisplayList(false);
    text->setUseVertexBufferObjects(true);
    text->setUseVertexArrayObject(false);
    text->setText(content);
    return text;
}
