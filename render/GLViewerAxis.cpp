// GLViewer's cube axis and the height range the colour legend sets.
#include <osgViewer/Viewer>

#include "GLViewer.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "QelCubeAxis3d.h"
#include "QelOSGWidget.h"
#include "SceneLockGuard.h"
#include "ViewerManipulator.h"

void GLViewer::setAxisVisible(bool visible) {
    axisOn_ = visible;
    if (visible) {
        ensureViewer();
        if (!manipulator_) installManipulator();
    }
    rebuildCubeAxis();
    requestRedraw();
}

void GLViewer::setGridVisible(bool visible) {
    gridOn_ = visible;
    if (cubeAxis_) {
        SceneLockGuard lock(osgWidget_);
        cubeAxis_->setGridVisible(visible);
    }
    requestRedraw();
}

osg::Vec4 GLViewer::toVec4(const QColor& c) {
    return osg::Vec4(c.red() / 255.0f, c.green() / 255.0f, c.blue() / 255.0f, c.alpha() / 255.0f);
}

QColor GLViewer::labelColour() const {
    return QColor(255 - background_.red(), 255 - background_.green(), 255 - background_.blue(),
                  background_.alpha());
}

void GLViewer::rebuildCubeAxis() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    const osg::BoundingBox box = axisOn_ && viewer ? dataBounds() : osg::BoundingBox();
    SceneLockGuard lock(osgWidget_);
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
        if (clipOn_) cubeAxis_->setClipPlane(clipPlane_);
        root_->addChild(cubeAxis_->node());
    } catch (const char*) {
        dropCubeAxis();  // data flat on some axis: no box to draw
    }
}

void GLViewer::dropCubeAxis() {
    if (!cubeAxis_) return;
    root_->removeChild(cubeAxis_->node());
    cubeAxis_.reset();
}

void GLViewer::applyHeightRange(double min, double max) {
    {
        SceneLockGuard lock(osgWidget_);
        for (int i = 0; i < registry_->count(); ++i) {
            OSGData* object = registry_->at(i);
            if (object->heightColoured()) object->applyColourMap(min, max);
        }
    }
    requestRedraw();
}
