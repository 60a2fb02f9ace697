#include "EyeDomeLighting.h"

#include <osgUtil/CullVisitor>

#include "EyeDomePass.h"
#include "GLViewer.h"
#include "NodeMasks.h"
#include "PixelRatio.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "RenderBins.h"
#include "SceneLockGuard.h"
#include "ViewDecorations.h"

namespace {

// After the data (bin 0) and what is see-through (bin 10), before the
// decorations (moved after it while the pass is on), the texts and the
// measurements.
constexpr int kPassBin = RenderBins::kEyeDomePass;
static_assert(kPassBin < ViewDecorations::kAfterDataBin, "the decorations stay unshaded");

// Sets the pass for each frame: the radius in the frame's device pixels,
// and half resolution while the camera moves.
class FrameSettings : public osg::NodeCallback {
public:
    FrameSettings(EyeDomePass& pass, const EyeDomeLighting& lighting, const PointBudget& budget)
        : pass_(pass), lighting_(lighting), budget_(budget) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        auto* cull = dynamic_cast<osgUtil::CullVisitor*>(visitor);
        const float ratio = cull ? PixelRatio::of(cull->getCurrentCamera()) : 1.0f;
        pass_.setRadius(float(lighting_.radius() * ratio));
        pass_.setStrength(float(lighting_.strength()));
        pass_.setScale(budget_.isMoving() ? 2 : 1);
        traverse(node, visitor);
    }

private:
    EyeDomePass& pass_;
    const EyeDomeLighting& lighting_;
    const PointBudget& budget_;
};

}  // namespace

EyeDomeLighting::EyeDomeLighting(GLViewer& view)
    : view_(view), node_(new osg::Geode), pass_(new EyeDomePass) {
    node_->setName("eye-dome lighting");
    node_->addDrawable(pass_.get());
    node_->setNodeMask(NodeMasks::kNotPickable);
    node_->setCullingActive(false);
    node_->getOrCreateStateSet()->setRenderBinDetails(kPassBin, "RenderBin");
    node_->setCullCallback(new FrameSettings(*pass_, *this, view_.budget()));
}

EyeDomeLighting::~EyeDomeLighting() {
    if (on_) view_.root()->removeChild(node_.get());
}

void EyeDomeLighting::setEnabled(bool on, double strength, double radius) {
    strength_ = strength;
    radius_ = radius;
    if (on != on_) {
        view_.decorations().drawAfterData(ViewDecorations::AfterData::EyeDome, on);
        SceneLockGuard lock(view_.osgWidget());
        if (on)
            view_.root()->addChild(node_.get());
        else
            view_.root()->removeChild(node_.get());
        on_ = on;
    }
    view_.requestRedraw();
}
