#include "SceneContent.h"

#include <osg/ComputeBoundsVisitor>

#include "ColourBytes.h"
#include "GbkText.h"
#include "NodeMasks.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "ObjectIdCounter.h"
#include "QelColor.h"
#include "QelColorArray.h"
#include "QelMatrix4.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "SceneItem.h"
#include "SceneLockGuard.h"
#include "ShapeFactory.h"
#include "ShapeManager.h"
#include "StatusCodes.h"

SceneContent::SceneContent()
    : dataGroup_(new osg::Group),
      shapeGroup_(new osg::Group),
      registry_(std::make_unique<OSGDataManager>()),
      shapes_(std::make_unique<ShapeManager>(shapeGroup_.get())) {
    dataGroup_->addChild(registry_->group());
    dataGroup_->setName("data");
    shapeGroup_->setName("shapes");
    shapeGroup_->setNodeMask(NodeMasks::kNotPickable);
    textOverlays_.group()->setName("text");
}

SceneContent::~SceneContent() = default;

SceneItem* SceneContent::find(ObjectId id) const {
    if (OSGData* object = registry_->find(id)) return object;
    if (Shape* shape = shapes_->find(id)) return shape;
    if (TextOverlay* text = textOverlays_.find(id)) return text;
    return measurements_.find(id);
}

int SceneContent::renderObjectCount() const {
    return registry_->count();
}

int SceneContent::shapeCount() const {
    return shapes_->count();
}

osg::BoundingBox SceneContent::dataBounds() const {
    osg::ComputeBoundsVisitor visitor;
    dataGroup_->accept(visitor);
    return visitor.getBoundingBox();
}

void SceneContent::setInfoText(const QStringList& lines) {
    infoText_ = lines;
    emit sig_infoText(lines);
}

long SceneContent::changeItem(ObjectId id, const std::function<bool(SceneItem&)>& change) {
    bool renderObject = false;
    {
        SceneLockGuard lock(lock_);
        SceneItem* item = find(id);
        if (!item || !change(*item)) return QelStatus::kObjectNotFound;
        renderObject = registry_->find(id) != nullptr;
    }
    // Render objects move the data's bounds; shapes, texts and measurements
    // are drawn over the data.
    if (renderObject)
        emit sig_dataChanged();
    else
        emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::changeObject(ObjectId id, const std::function<long(OSGData&)>& change) {
    long status = QelStatus::kOk;
    {
        SceneLockGuard lock(lock_);
        OSGData* object = registry_->find(id);
        status = object ? change(*object) : QelStatus::kObjectNotFound;
    }
    if (status == QelStatus::kOk) emit sig_dataChanged();
    return status;
}

long SceneContent::setModelMatrix(ObjectId id, const QelMatrix4& matrix) {
    // Column vectors in, the scene graph's row vectors out: the transpose,
    // element by element.
    const QelMatrix4 t = matrix.Transposed();
    osg::Matrix m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m(r, c) = t.Value(r, c);
    return changeItem(id, [&](SceneItem& item) { return item.applyItemMatrix(m); });
}

long SceneContent::setVisible(ObjectId id, bool visible) {
    return changeItem(id, [&](SceneItem& item) {
        item.setItemVisible(visible);
        return true;
    });
}

long SceneContent::setColours(ObjectId id, const QelColorArray& colours) {
    if (!find(id)) return QelStatus::kObjectNotFound;
    if (colours.IsEmpty()) return QelStatus::kColorRefused;
    if (colours.Channel() < 3) return QelStatus::kColorChannels;
    osg::ref_ptr<osg::Vec4Array> converted = new osg::Vec4Array;
    converted->reserve(size_t(colours.Length()));
    for (int i = 0; i < colours.Length(); ++i) {
        const QelColor c = colours[i];
        converted->push_back(ColourBytes::toVec4(c.r, c.g, c.b, c.a));
    }
    const long status =
        changeItem(id, [&](SceneItem& item) { return item.setItemColours(*converted); });
    // The item is there: a refusal is the colours' count.
    return status == QelStatus::kObjectNotFound ? QelStatus::kColorRefused : status;
}

long SceneContent::setPointSize(ObjectId id, float size) {
    return changeItem(id, [&](SceneItem& item) { return item.setItemPointSize(size); });
}

long SceneContent::setLineWidth(ObjectId id, float width) {
    return changeItem(id, [&](SceneItem& item) { return item.setItemLineWidth(width); });
}

long SceneContent::showShape(const Qel3DShape& description) {
    // The id is taken before the build: a refused shape uses one up.
    const ObjectId id = ObjectIdCounter::take();
    std::unique_ptr<Shape> shape = createShape(description, id);
    if (!shape) return QelStatus::kShapeRefused;
    // Only a new infinite shape needs the data's bounds; the others are
    // fitted already.
    const osg::BoundingBox box = dataBounds();
    if (shape->resizesToScene() && box.valid())
        shape->fitToScene(box._min, box._max, box.radius(), box.center());
    {
        SceneLockGuard lock(lock_);
        shapes_->add(std::move(shape));
    }
    emit sig_itemAdded(osg::BoundingSphere());
    emit sig_overlayChanged();
    return id;
}

long SceneContent::clearShape(ObjectId id) {
    {
        SceneLockGuard lock(lock_);
        if (!shapes_->remove(id) && !measurements_.remove(id)) return QelStatus::kObjectNotFound;
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::clearAllShapes() {
    {
        SceneLockGuard lock(lock_);
        shapes_->clear();
        measurements_.clear();
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::setShapeMode(ObjectId id, RenderMode mode) {
    {
        SceneLockGuard lock(lock_);
        Shape* shape = shapes_->find(id);
        if (!shape) return QelStatus::kObjectNotFound;
        shape->setShapeMode(mode);
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

void SceneContent::fitShapesToScene() {
    if (shapes_->count() == 0) return;
    const osg::BoundingBox box = dataBounds();
    if (!box.valid()) return;
    SceneLockGuard lock(lock_);
    shapes_->forEach([&](Shape& s) {
        if (s.resizesToScene()) s.fitToScene(box._min, box._max, box.radius(), box.center());
    });
}

long SceneContent::addTextOverlay(const QelVar& text, const QelVector3d& position, float size,
                                  const QelColor& colour) {
    ObjectId id = 0;
    {
        SceneLockGuard lock(lock_);
        id = ObjectIdCounter::take();
        std::wstring content;
        if (text.ValType() == QEL_VAR_STRING)
            content = GbkText::toWide(text.S());
        else if (text.ValType() == QEL_VAR_WSTRING)
            content = text.WS();
        textOverlays_.add(std::make_unique<TextOverlay>(
            *textPrototype_.text(), id, content, osg::Vec3(position.x, position.y, position.z),
            size, ColourBytes::toVec4(colour.r, colour.g, colour.b, colour.a)));
    }
    emit sig_itemAdded(osg::BoundingSphere());
    emit sig_overlayChanged();
    return id;
}

long SceneContent::removeTextOverlay(ObjectId id) {
    {
        SceneLockGuard lock(lock_);
        if (!textOverlays_.remove(id)) return QelStatus::kObjectNotFound;
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::removeAllTextOverlays() {
    {
        SceneLockGuard lock(lock_);
        textOverlays_.clear();
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::clearScene() {
    {
        SceneLockGuard lock(lock_);
        registry_->clear();
        shapes_->clear();
        textOverlays_.clear();
        measurements_.clear();
    }
    setInfoText({QString()});
    emit sig_dataChanged();
    return QelStatus::kOk;
}
