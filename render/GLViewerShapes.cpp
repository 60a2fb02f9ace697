// GLViewer's shapes: each operation changes the shape list under the scene
// lock, then asks for a redraw.
#include <osg/ComputeBoundsVisitor>

#include "GLViewer.h"
#include "ObjectIdCounter.h"
#include "QelOSGWidget.h"
#include "SceneLockGuard.h"
#include "ShapeFactory.h"
#include "ShapeManager.h"
#include "StatusCodes.h"

long GLViewer::showShape(const Qel3DShape& description) {
    // The id is taken before the build: a refused shape uses one up.
    const long id = ObjectIdCounter::take();
    std::unique_ptr<Shape> shape = createShape(description, static_cast<unsigned int>(id));
    if (!shape) return QelStatus::kShapeRefused;
    // Only a new infinite shape needs the data's bounds; the others are
    // fitted already.
    if (shape->resizesToScene()) fitToBounds(*shape, dataBounds());
    {
        SceneLockGuard lock(osgWidget_);
        shapes_->add(std::move(shape));
    }
    if (initialised_ && !manipulator_) installManipulator();
    requestRedraw();
    return id;
}

long GLViewer::clearShape(long id) {
    bool removed = false;
    {
        SceneLockGuard lock(osgWidget_);
        removed = id >= 0 && shapes_->remove(static_cast<unsigned int>(id));
    }
    if (!removed) return QelStatus::kObjectNotFound;
    requestRedraw();
    return QelStatus::kOk;
}

long GLViewer::clearAllShapes() {
    {
        SceneLockGuard lock(osgWidget_);
        shapes_->clear();
    }
    requestRedraw();
    return QelStatus::kOk;
}

long GLViewer::setShapeMode(long id, int mode) {
    return changeShape(id, [mode](Shape& s) { s.setShapeMode(mode); });
}

int GLViewer::shapeCount() const {
    return shapes_->count();
}

long GLViewer::changeShape(long id, const std::function<void(Shape&)>& change) {
    {
        SceneLockGuard lock(osgWidget_);
        Shape* shape = id >= 0 ? shapes_->find(static_cast<unsigned int>(id)) : nullptr;
        if (!shape) return QelStatus::kObjectNotFound;
        change(*shape);
    }
    requestRedraw();
    return QelStatus::kOk;
}

osg::BoundingBox GLViewer::dataBounds() const {
    osg::ComputeBoundsVisitor visitor;
    dataGroup_->accept(visitor);
    return visitor.getBoundingBox();
}

void GLViewer::fitToBounds(Shape& shape, const osg::BoundingBox& box) {
    if (box.valid()) shape.fitToScene(box._min, box._max, box.radius(), box.center());
}

void GLViewer::fitShapesToScene() {
    if (shapes_->count() == 0) return;
    const osg::BoundingBox box = dataBounds();
    SceneLockGuard lock(osgWidget_);
    shapes_->forEach([&](Shape& s) {
        if (s.resizesToScene()) fitToBounds(s, box);
    });
}
