#include "ProgressiveFrames.h"

#include <QPointer>
#include <QTimer>
#include <QtGlobal>
#include <algorithm>
#include <cmath>
#include <osgGA/CameraManipulator>
#include <osgViewer/Viewer>
#include <vector>

#include "GLViewer.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "OSGDataStream.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ViewDecorations.h"

namespace {

// Lets through only the render objects the frame draws.
class Gate : public osg::NodeCallback {
public:
    explicit Gate(const ProgressiveFrames& frames) : frames_(frames) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        osg::Group* group = node->asGroup();
        if (!group) {
            traverse(node, visitor);
            return;
        }
        for (unsigned int i = 0; i < group->getNumChildren(); ++i)
            if (frames_.drawsNow(group->getChild(i))) group->getChild(i)->accept(*visitor);
    }

private:
    const ProgressiveFrames& frames_;
};

double frameMsFromEnvironment() {
    bool ok = false;
    const double ms = qEnvironmentVariable("QEL3D_REFINE_MS").toDouble(&ok);
    return ok && ms >= 10 && ms <= 10000 ? ms : ProgressiveFrames::kFrameMs;
}

}  // namespace

ProgressiveFrames::ProgressiveFrames(GLViewer& view)
    : view_(view), gate_(new Gate(*this)), frameMs_(frameMsFromEnvironment()) {
    kept_.onKept([this] { remember(); });
}

ProgressiveFrames::~ProgressiveFrames() {
    setEnabled(false);
}

void ProgressiveFrames::setEnabled(bool on) {
    if (on == enabled_) return;
    // The steps hang beside the render objects; their bins order them.
    osg::Group* data = view_.content().dataGroup();
    osg::Group* objects = view_.content().registry().group();
    view_.decorations().drawAfterData(ViewDecorations::AfterData::KeptFrame, on);
    SceneLockGuard lock(view_.osgWidget());
    if (on) {
        data->addChild(kept_.snapshotNode());
        data->addChild(kept_.restoreNode());
        objects->addCullCallback(gate_.get());
    } else {
        data->removeChild(kept_.snapshotNode());
        data->removeChild(kept_.restoreNode());
        objects->removeCullCallback(gate_.get());
    }
    enabled_ = on;
    stop();
}

void ProgressiveFrames::stop() {
    startPending_ = false;
    refining_ = false;
    wholeWanted_ = true;
}

bool ProgressiveFrames::drawsNow(const osg::Node* node) const {
    return !kept_.isRestoring() || drawing_.count(node) > 0;
}

bool ProgressiveFrames::sameView() const {
    osgViewer::Viewer* viewer = view_.osgWidget()->viewer();
    if (!viewer || !viewer->getCamera()->getViewport()) return false;
    const osg::Camera* camera = viewer->getCamera();
    const osg::Viewport* v = camera->getViewport();
    // The manipulator sets the view after this point of the frame: what it
    // will set counts.
    const osgGA::CameraManipulator* m = viewer->getCameraManipulator();
    const osg::Matrixd view = m ? m->getInverseMatrix() : camera->getViewMatrix();
    return view == viewMatrix_ && camera->getProjectionMatrix() == projection_ &&
           v->x() == viewport_[0] && v->y() == viewport_[1] && v->width() == viewport_[2] &&
           v->height() == viewport_[3];
}

void ProgressiveFrames::remember() {
    osg::Camera* camera = view_.osgWidget()->viewer()->getCamera();
    viewMatrix_ = camera->getViewMatrix();
    projection_ = camera->getProjectionMatrix();
    const osg::Viewport* v = camera->getViewport();
    viewport_[0] = v ? v->x() : 0;
    viewport_[1] = v ? v->y() : 0;
    viewport_[2] = v ? v->width() : 0;
    viewport_[3] = v ? v->height() : 0;
}

void ProgressiveFrames::wholeFrame(const OSGDataManager& registry, unsigned int budget) {
    for (int i = 0; i < registry.count(); ++i)
        registry.at(i)->setDrawBudget(budget);
    kept_.setRestoring(false);
    drawing_.clear();
    wholeWanted_ = false;
    appendPending_ = false;
    overlayPending_ = false;
}

bool ProgressiveFrames::appendFrame(const OSGDataManager& registry) {
    if (wholeWanted_ || !appendPending_ || refining_ || startPending_ || !sameView()) return false;
    // The new bands must lie within the kept picture's depth range, or the
    // whole frame would have another one.
    std::vector<OSGDataStream*> streams;
    for (int i = 0; i < registry.count(); ++i) {
        auto* stream = dynamic_cast<OSGDataStream*>(registry.at(i));
        if (!stream || !stream->hasTail() || stream->node()->getNodeMask() == 0) continue;
        if (!withinDepthRange(stream->tailBounds())) return false;
        streams.push_back(stream);
    }
    if (streams.empty()) return false;
    view_.osgWidget()->viewer()->getCamera()->setComputeNearFarMode(
        osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
    kept_.setRestoring(true);
    drawing_.clear();
    for (OSGDataStream* stream : streams) {
        stream->drawTail();
        drawing_.insert(stream->node());
    }
    appendPending_ = false;
    overlayPending_ = false;  // drawn anew with the bands
    ++appendFrames_;
    return true;
}

bool ProgressiveFrames::withinDepthRange(const osg::BoundingBox& box) const {
    if (!box.valid()) return true;
    double left, right, bottom, top, zNear, zFar;
    const bool ortho = projection_(3, 3) != 0.0;
    if (!(ortho ? projection_.getOrtho(left, right, bottom, top, zNear, zFar)
                : projection_.getFrustum(left, right, bottom, top, zNear, zFar)))
        return false;
    for (int c = 0; c < 8; ++c) {
        const double depth = -(osg::Vec3d(box.corner(c)) * viewMatrix_).z();
        if (!(depth >= zNear && depth <= zFar)) return false;
    }
    return true;
}

bool ProgressiveFrames::overlayFrame() {
    if (wholeWanted_ || !overlayPending_ || refining_ || startPending_ || appendPending_ ||
        !sameView() || !withinDepthRange(view_.content().overlayBounds()))
        return false;
    view_.osgWidget()->viewer()->getCamera()->setComputeNearFarMode(
        osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
    kept_.setRestoring(true);
    drawing_.clear();  // none of the data
    overlayPending_ = false;
    ++overlayFrames_;
    return true;
}

void ProgressiveFrames::beginFrame(const OSGDataManager& registry, unsigned int budget,
                                   bool whole) {
    osgViewer::Viewer* viewer = view_.osgWidget()->viewer();
    osg::Camera* camera = viewer ? viewer->getCamera() : nullptr;
    if (camera)
        camera->setComputeNearFarMode(osg::CullSettings::COMPUTE_NEAR_FAR_USING_BOUNDING_VOLUMES);
    // Shapes draw after the kept picture: anew over the data on every frame.
    const bool possible = enabled_ && camera && !whole;
    if (!possible) {
        if (whole || !enabled_) stop();
        wholeFrame(registry, budget);
        return;
    }
    // New bands while a cloud fills in: a whole frame shows both.
    if (appendPending_ && refining_) stop();
    if (appendFrame(registry) || overlayFrame()) return;
    if (refining_ && !sameView()) startPending_ = true;  // the camera moved: start over
    if (startPending_) {
        startPending_ = false;
        progress_.clear();
        const long budget = view_.budget().budget();
        const unsigned int sample = budget > 0 ? unsigned(std::max(1L, budget / kFirstShare)) : 0;
        for (int i = 0; i < registry.count(); ++i) {
            OSGData* object = registry.at(i);
            const unsigned int slices = object->sliceCount(sample);
            if (slices > 1 && object->node()->getNodeMask() != 0) {
                progress_[object->id()] = Progress{slices, 1};
                object->setDrawSlices(slices, 0, 1);
            } else {
                object->setDrawBudget(0);
            }
        }
        kept_.setRestoring(false);
        drawing_.clear();
        refining_ = !progress_.empty();
        // A whole frame, but for the clouds' later slices.
        wholeWanted_ = appendPending_ = overlayPending_ = false;
        pace_.restart();
        slicesPerFrame_ = 1;
        clock_.start();
    } else if (refining_) {
        // Go on from the kept picture, at its depth range: the next slices
        // of the clouds not yet complete, as many as the pace of the frames
        // so far fits in frameMs_.
        const double lastMs = double(clock_.restart());
        pace_.add(slicesPerFrame_, lastMs);
        slicesPerFrame_ = pace_.slicesFor(frameMs_);
        camera->setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
        kept_.setRestoring(true);
        drawing_.clear();
        bool complete = true;
        for (int i = 0; i < registry.count(); ++i) {
            OSGData* object = registry.at(i);
            auto it = progress_.find(object->id());
            if (it == progress_.end() || it->second.done >= it->second.slices) continue;
            Progress& p = it->second;
            const unsigned int to = std::min(p.slices, p.done + slicesPerFrame_);
            object->setDrawSlices(p.slices, p.done, to);
            p.done = to;
            drawing_.insert(object->node());
            complete = complete && p.done >= p.slices;
        }
        ++refineFrames_;
        refining_ = !complete;
    } else {
        wholeFrame(registry, budget);
        return;
    }
    // The next slices follow once this frame is on the screen.
    if (refining_) {
        QPointer<QelOSGWidget> widget = view_.osgWidget();
        QTimer::singleShot(0, widget, [widget] {
            if (widget) widget->requestFrame();
        });
    }
}
