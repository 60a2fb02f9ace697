#include "MeasureTool.h"

#include <osgViewer/Viewer>

#include "ClipPlane.h"
#include "GLViewer.h"
#include "MeasurementGeometry.h"
#include "NodeMasks.h"
#include "PickHandler.h"
#include "PointPicker.h"
#include "QelOSGWidget.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ScreenProjection.h"
#include "ViewDecorations.h"

namespace {

osg::ref_ptr<osg::Geometry> makeGeometry(GLenum mode) {
    osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
    // Buffer and array objects, as the data's geometries.
    g->setUseDisplayList(false);
    g->setUseVertexBufferObjects(true);
    g->setUseVertexArrayObject(true);
    g->setVertexArray(new osg::Vec3Array);
    auto* colour = new osg::Vec4Array;
    colour->push_back(osg::Vec4(1, 1, 1, 1));
    g->setColorArray(colour, osg::Array::BIND_OVERALL);
    g->addPrimitiveSet(new osg::DrawArrays(mode, 0, 0));
    return g;
}

void setVertices(osg::Geometry* g, const std::vector<osg::Vec3d>& points) {
    auto* vertices = static_cast<osg::Vec3Array*>(g->getVertexArray());
    vertices->clear();
    for (const osg::Vec3d& p : points)
        vertices->push_back(osg::Vec3(p));
    vertices->dirty();
    // With array objects a resized array reaches the GL only when handed over again.
    g->setVertexArray(vertices);
    static_cast<osg::DrawArrays*>(g->getPrimitiveSet(0))->setCount(GLsizei(points.size()));
    g->getPrimitiveSet(0)->dirty();
    g->dirtyBound();
}

}  // namespace

MeasureTool::MeasureTool(GLViewer* view, QObject* parent)
    : QObject(parent),
      view_(view),
      progress_(new osg::Geode),
      marks_(makeGeometry(GL_POINTS)),
      rubber_(makeGeometry(GL_LINE_STRIP)) {
    // The release arrives inside a frame, which holds the scene lock: the
    // pick runs after it. Moves only reshape the rubber line of this frame.
    handler_ = new PickHandler(
        [this](float x, float y) {
            QMetaObject::invokeMethod(
                this, [this, x, y] { clickAt(x, y); }, Qt::QueuedConnection);
        },
        [this](float x, float y) { moveTo(x, y); });
    view_->addEventHandler(handler_.get());
    progress_->addDrawable(marks_.get());
    progress_->addDrawable(rubber_.get());
    osg::StateSet* ss = progress_->getOrCreateStateSet();
    ss->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    ss->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
    ss->setRenderBinDetails(1002, "RenderBin");
    ss->setAttributeAndModes(new ScaledPoint(7.0f));
    ss->setAttributeAndModes(new ScaledLineWidth(1.5f));
    progress_->setNodeMask(0u);
    view_->content().measureGroup()->addChild(progress_.get());
}

MeasureTool::~MeasureTool() {
    handler_->setEnabled(false);
}

void MeasureTool::setKind(std::optional<MeasureKind> kind) {
    if (kind != kind_) cancel();
    kind_ = kind;
    handler_->setEnabled(kind.has_value());
}

void MeasureTool::cancel() {
    points_.clear();
    cursor_.reset();
    redrawProgress();
}

void MeasureTool::clickAt(float x, float y) {
    if (!kind_) return;
    osgViewer::Viewer* viewer = view_->osgWidget()->viewer();
    if (!viewer || !viewer->getCamera()->getViewport()) return;
    osg::Vec4d clip;
    const bool clipped = view_->clip().clipPlane(&clip);
    PickHit hit;
    bool found = false;
    {
        SceneLockGuard lock(view_->osgWidget());
        found = PointPicker::pick(*viewer->getCamera(), *view_->root(), x, y, &hit,
                                  clipped ? &clip : nullptr, &view_->content().registry(), true);
    }
    if (!found) return;
    points_.push_back(hit.position);
    if (static_cast<int>(points_.size()) < MeasurementGeometry::pointCount(*kind_)) {
        redrawProgress();
        return;
    }
    const std::vector<osg::Vec3d> points = points_;
    cancel();
    const MeasureKind kind = *kind_;
    const long id = view_->content().addMeasurement(kind, points);
    double value = 0;
    // Points on one spot (an angle's leg of no length) make no measurement.
    if (view_->content().measurement(id, &value) == 0) emit sig_measured(id, kind, value);
}

void MeasureTool::moveTo(float x, float y) {
    if (points_.empty()) return;
    osgViewer::Viewer* viewer = view_->osgWidget()->viewer();
    if (!viewer) return;
    // The cursor at the depth of the last point.
    const ScreenProjection view(*viewer->getCamera());
    if (!view.valid()) return;
    const osg::Vec3d last = view.toWindow(points_.back());
    cursor_ = view.toWorld(osg::Vec3d(x, y, last.z()));
    redrawProgress();
}

void MeasureTool::redrawProgress() {
    {
        SceneLockGuard lock(view_->osgWidget());
        const osg::Vec4 colour = [this] {
            const QColor c = view_->decorations().labelColour();
            return osg::Vec4(c.redF(), c.greenF(), c.blueF(), 1.0f);
        }();
        for (osg::Geometry* g : {marks_.get(), rubber_.get()}) {
            auto* colours = static_cast<osg::Vec4Array*>(g->getColorArray());
            (*colours)[0] = colour;
            colours->dirty();
        }
        setVertices(marks_.get(), points_);
        std::vector<osg::Vec3d> line = points_;
        if (cursor_ && !line.empty()) line.push_back(*cursor_);
        setVertices(rubber_.get(), line);
        progress_->setNodeMask(points_.empty() ? 0u : NodeMasks::kNotPickable);
    }
    // The marks and the rubber line lie over the data, which stays.
    view_->requestOverlayRedraw();
}
