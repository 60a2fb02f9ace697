#include "ViewDecorations.h"

#include <osg/ComputeBoundsVisitor>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgViewer/Viewer>
#include <stdexcept>

#include "ClipPlane.h"
#include "ColourBytes.h"
#include "GLViewer.h"
#include "NodeMasks.h"
#include "QelColor.h"
#include "QelCubeAxis3d.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"

namespace {
osg::Vec4 toVec4(const QColor& c) {
    return ColourBytes::toVec4(c.red(), c.green(), c.blue(), c.alpha());
}
}  // namespace

ViewDecorations::ViewDecorations(GLViewer& view) : view_(view), group_(new osg::Group) {}

ViewDecorations::~ViewDecorations() {
    // The axis holds the viewer's camera: it goes before the viewer.
    cubeAxis_.reset();
}

void ViewDecorations::viewerReady() {
    if (osgViewer::Viewer* viewer = view_.osgWidget()->viewer())
        viewer->getCamera()->setClearColor(toVec4(background_));
    if (axisOn_ && !view_.manipulator()) {
        view_.installManipulator();
        rebuildCubeAxis();
    }
}

void ViewDecorations::followData() {
    if (bboxVisible_) rebuildBoundingBox();
    if (axisOn_) rebuildCubeAxis();
}

void ViewDecorations::setBackgroundColor(int r, int g, int b, int a) {
    background_ = QColor(r, g, b, a);
    if (osgViewer::Viewer* viewer = view_.osgWidget()->viewer()) {
        SceneLockGuard lock(view_.osgWidget());
        viewer->getCamera()->setClearColor(toVec4(background_));
        if (cubeAxis_) cubeAxis_->setLabelColor(toVec4(labelColour()));
    }
    view_.content().setMeasurementColour(toVec4(labelColour()));
    emit view_.sig_labelColour(QColor(255 - r, 255 - g, 255 - b, 255));
    view_.dataChanged();  // the bounding box is drawn in the inverted background colour
}

QColor ViewDecorations::labelColour() const {
    return QColor(255 - background_.red(), 255 - background_.green(), 255 - background_.blue(),
                  background_.alpha());
}

void ViewDecorations::setTextPen(const QelColor& colour, long size) {
    textPenColour_ = QColor(colour.r, colour.g, colour.b, colour.a);
    textPenSize_ = size;
}

void ViewDecorations::getTextPen(QelColor* colour, long* size) const {
    if (colour)
        *colour =
            QelColor(textPenColour_.red(), textPenColour_.green(), textPenColour_.blue(), 255);
    if (size) *size = textPenSize_;
}

void ViewDecorations::setBoundingBoxVisible(bool visible) {
    bboxVisible_ = visible;
    rebuildBoundingBox();  // empties the box when hidden
    view_.requestRedraw();
}

// Twelve edges of the data's axis-aligned box, in the inverted background
// colour so they stay visible on any background.
void ViewDecorations::rebuildBoundingBox() {
    SceneLockGuard lock(view_.osgWidget());
    group_->removeChildren(0, group_->getNumChildren());
    if (!bboxVisible_) return;
    osg::ComputeBoundsVisitor bounds;
    view_.content().dataGroup()->accept(bounds);
    const osg::BoundingBox& box = bounds.getBoundingBox();
    if (!box.valid()) return;
    auto* corners = new osg::Vec3Array;
    for (int i = 0; i < 8; ++i)
        corners->push_back(box.corner(i));
    static const GLushort edges[] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 2, 1, 3,
                                     4, 6, 5, 7, 0, 4, 1, 5, 2, 6, 3, 7};
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    // Drawn the way the data's geometries are (buffer and array objects).
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setUseVertexArrayObject(true);
    geometry->setVertexArray(corners);
    auto* colour = new osg::Vec4Array;
    colour->push_back(osg::Vec4(1.0f - background_.redF(), 1.0f - background_.greenF(),
                                1.0f - background_.blueF(), 1.0f));
    geometry->setColorArray(colour, osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(new osg::DrawElementsUShort(GL_LINES, 24, edges));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(geometry);
    geode->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    group_->addChild(geode);
}

void ViewDecorations::setAxisVisible(bool visible) {
    axisOn_ = visible;
    if (visible) {
        view_.ensureManipulator();
    }
    rebuildCubeAxis();
    view_.requestRedraw();
}

void ViewDecorations::setGridVisible(bool visible) {
    gridOn_ = visible;
    if (cubeAxis_) {
        SceneLockGuard lock(view_.osgWidget());
        cubeAxis_->setGridVisible(visible);
    }
    view_.requestRedraw();
}

void ViewDecorations::rebuildCubeAxis() {
    osgViewer::Viewer* viewer = view_.osgWidget()->viewer();
    const osg::BoundingBox box =
        axisOn_ && viewer ? view_.content().dataBounds() : osg::BoundingBox();
    SceneLockGuard lock(view_.osgWidget());
    if (!box.valid()) {
        dropCubeAxis();
        return;
    }
    try {
        if (cubeAxis_) {
            cubeAxis_->setBounds(box.xMin(), box.xMax(), box.yMin(), box.yMax(), box.zMin(),
                                 box.zMax());
            return;
        }
        osg::ref_ptr<osg::Camera> camera = viewer->getCamera();
        cubeAxis_ = std::make_unique<QelCubeAxis3d>(camera, box.xMin(), box.xMax(), box.yMin(),
                                                    box.yMax(), box.zMin(), box.zMax());
        cubeAxis_->setLabelColor(toVec4(labelColour()));
        if (!gridOn_) cubeAxis_->setGridVisible(false);
        if (view_.clip().isOn()) cubeAxis_->setClipPlane(view_.clip().plane());
        cubeAxis_->node()->setNodeMask(NodeMasks::kNotPickable);
        placeInBin(cubeAxis_->node());
        view_.root()->addChild(cubeAxis_->node());
    } catch (const std::runtime_error&) {
        dropCubeAxis();  // data flat on some axis: no box to draw
    }
}

void ViewDecorations::drawAfterData(AfterData reason, bool on) {
    const unsigned int bit = static_cast<unsigned int>(reason);
    const bool before = afterDataReasons_ != 0;
    afterDataReasons_ = on ? (afterDataReasons_ | bit) : (afterDataReasons_ & ~bit);
    if ((afterDataReasons_ != 0) == before) return;
    SceneLockGuard lock(view_.osgWidget());
    placeInBin(group_.get());
    if (cubeAxis_) placeInBin(cubeAxis_->node());
}

void ViewDecorations::placeInBin(osg::Node* node) const {
    // Untouched until asked: the scene's own order stays byte for byte.
    if (afterDataReasons_ == 0 && !node->getStateSet()) return;
    osg::StateSet* ss = node->getOrCreateStateSet();
    if (afterDataReasons_ != 0)
        ss->setRenderBinDetails(kAfterDataBin, "RenderBin");
    else
        ss->setRenderBinToInherit();
}

void ViewDecorations::dropCubeAxis() {
    if (!cubeAxis_) return;
    view_.root()->removeChild(cubeAxis_->node());
    cubeAxis_.reset();
}
