#include "MeasurementSet.h"

#include <algorithm>
#include <osg/BlendFunc>
#include <osg/LineStipple>

#include "NodeMasks.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"

namespace {

// Sizes in logical pixels.
constexpr float kLineWidth = 2.0f;
constexpr float kMarkSize = 7.0f;
// The patches' see-through share of the colour.
constexpr float kPatchAlpha = 0.25f;

osg::ref_ptr<osg::Geometry> makeGeometry(GLenum mode, osg::Vec4Array* colour) {
    osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
    // Drawn the way the data's geometries are (buffer and array objects):
    // client-side arrays between them upset the GL driver.
    g->setUseDisplayList(false);
    g->setUseVertexBufferObjects(true);
    g->setUseVertexArrayObject(true);
    g->setVertexArray(new osg::Vec3Array);
    g->setColorArray(colour, osg::Array::BIND_OVERALL);
    g->addPrimitiveSet(new osg::DrawArrays(mode, 0, 0));
    // Refilled as the set is culled, after the bound was tested.
    g->setCullingActive(false);
    return g;
}

void fill(osg::Geometry* g, const std::vector<osg::Vec3>& vertices) {
    auto* array = static_cast<osg::Vec3Array*>(g->getVertexArray());
    array->assign(vertices.begin(), vertices.end());
    array->dirty();
    // A grown array reaches the GL through array objects only when handed
    // over again.
    g->setVertexArray(array);
    const GLenum mode = g->getPrimitiveSet(0)->getMode();
    g->setPrimitiveSet(0, new osg::DrawArrays(mode, 0, GLsizei(vertices.size())));
    g->dirtyBound();
}

osg::Vec4Array* oneColour(const osg::Vec4& colour) {
    auto* array = new osg::Vec4Array;
    array->push_back(colour);
    return array;
}

// Rebuilds the set's geometries, when they changed, as the group is culled.
class Refresh : public osg::NodeCallback {
public:
    explicit Refresh(MeasurementSet& set) : set_(set) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        set_.refresh();
        traverse(node, visitor);
    }

private:
    MeasurementSet& set_;
};

}  // namespace

MeasurementSet::MeasurementSet()
    : group_(new osg::Group),
      drawn_(new osg::Geode),
      colour_(oneColour(osg::Vec4(1, 1, 1, 1))),
      patchColour_(oneColour(osg::Vec4(1, 1, 1, kPatchAlpha))) {
    group_->setName("measurements");
    // Drawn after the data and the shapes, like the texts; never picked.
    group_->getOrCreateStateSet()->setRenderBinDetails(1001, "RenderBin");
    group_->setNodeMask(NodeMasks::kNotPickable);
    osg::StateSet* ss = drawn_->getOrCreateStateSet();
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    // Over the data, never hidden inside it.
    ss->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    ss->setAttributeAndModes(new ScaledLineWidth(kLineWidth));
    ss->setAttributeAndModes(new ScaledPoint(kMarkSize));
    lines_ = makeGeometry(GL_LINES, colour_.get());
    marks_ = makeGeometry(GL_POINTS, colour_.get());
    dashes_ = makeGeometry(GL_LINES, colour_.get());
    // Dashes of 4 pixels.
    dashes_->getOrCreateStateSet()->setAttributeAndModes(new osg::LineStipple(4, 0x5555));
    patches_ = makeGeometry(GL_TRIANGLES, patchColour_.get());
    osg::StateSet* patch = patches_->getOrCreateStateSet();
    patch->setAttributeAndModes(new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
    // In the set's own bin, after everything the eye-dome pass shades.
    patch->setRenderBinDetails(1001, "RenderBin");
    for (osg::Geometry* g : {patches_.get(), lines_.get(), dashes_.get(), marks_.get()})
        drawn_->addDrawable(g);
    drawn_->setCullingActive(false);
    group_->addChild(drawn_.get());
    group_->setCullCallback(new Refresh(*this));
}

void MeasurementSet::add(std::unique_ptr<Measurement> measurement) {
    measurement->onChange([this] { dirty_ = true; });
    measurements_.push_back(std::move(measurement));
    dirty_ = true;
}

bool MeasurementSet::remove(ObjectId id) {
    const auto it = std::find_if(measurements_.begin(), measurements_.end(),
                                 [&](const auto& m) { return m->itemId() == id; });
    if (it == measurements_.end()) return false;
    measurements_.erase(it);
    dirty_ = true;
    return true;
}

void MeasurementSet::clear() {
    measurements_.clear();
    dirty_ = true;
}

Measurement* MeasurementSet::find(ObjectId id) const {
    for (const auto& m : measurements_)
        if (m->itemId() == id) return m.get();
    return nullptr;
}

void MeasurementSet::setColour(const osg::Vec4& colour) {
    (*colour_)[0] = colour;
    colour_->dirty();
    (*patchColour_)[0] = osg::Vec4(colour.r(), colour.g(), colour.b(), kPatchAlpha);
    patchColour_->dirty();
}

void MeasurementSet::refresh() {
    if (!dirty_) return;
    dirty_ = false;
    MeasurementDrawing all;
    for (const auto& m : measurements_) {
        if (!m->visible()) continue;
        const MeasurementDrawing& d = m->drawing();
        all.lines.insert(all.lines.end(), d.lines.begin(), d.lines.end());
        all.marks.insert(all.marks.end(), d.marks.begin(), d.marks.end());
        all.dashes.insert(all.dashes.end(), d.dashes.begin(), d.dashes.end());
        all.patches.insert(all.patches.end(), d.patches.begin(), d.patches.end());
    }
    fill(lines_.get(), all.lines);
    fill(marks_.get(), all.marks);
    fill(dashes_.get(), all.dashes);
    fill(patches_.get(), all.patches);
}
