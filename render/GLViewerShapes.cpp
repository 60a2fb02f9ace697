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
    {
        SceneLockGuard lock(osgWidget_);
        shapes_->add(std::move(shape));
    }
    if (initialised_ && !manipulator_) installManipulator();
    fitShapesToScene();
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

void GLViewer::fitShapesToScene() {
    if (shapes_->count() == 0) return;
    osg::ComputeBoundsVisitor visitor;
    dataGroup_->accept(visitor);
    const osg::BoundingBox& box = visitor.getBoundingBox();
    if (!box.valid()) return;
    SceneLockGuard lock(osgWidget_);
    shapes_->forEach(
        [&](Shape& s) { s.fitToScene(box._min, box._max, box.radius(), box.center()); });
}
