// The content's measurements: added, read and removed under the scene lock.
#include "ObjectIdCounter.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "StatusCodes.h"

long SceneContent::addMeasurement(MeasureKind kind, const std::vector<osg::Vec3d>& points) {
    MeasurementGeometry geometry;
    if (long status = MeasurementGeometry::make(kind, points, &geometry)) return status;
    const ObjectId id = ObjectIdCounter::take();
    auto measurement = std::make_unique<Measurement>(id, geometry);
    {
        SceneLockGuard lock(lock_);
        measurements_.add(std::move(measurement));
    }
    emit sig_itemAdded(osg::BoundingSphere());
    emit sig_overlayChanged();
    return id;
}

long SceneContent::measurement(ObjectId id, double* value) const {
    const Measurement* m = measurements_.find(id);
    if (!m) return QelStatus::kObjectNotFound;
    *value = m->geometry().value();
    return QelStatus::kOk;
}

long SceneContent::clearMeasurement(ObjectId id) {
    {
        SceneLockGuard lock(lock_);
        if (!measurements_.remove(id)) return QelStatus::kObjectNotFound;
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

long SceneContent::clearAllMeasurements() {
    {
        SceneLockGuard lock(lock_);
        measurements_.clear();
    }
    emit sig_overlayChanged();
    return QelStatus::kOk;
}

void SceneContent::setMeasurementColour(const osg::Vec4& colour) {
    SceneLockGuard lock(lock_);
    measurements_.setColour(colour);
}

osg::BoundingBox SceneContent::overlayBounds() const {
    osg::BoundingBox box;
    for (int i = 0; i < measurements_.count(); ++i)
        box.expandBy(measurements_.at(i)->itemBounds());
    box.expandBy(textOverlays_.bounds());
    box.expandBy(SceneItem::boundsOf(*shapeGroup_));
    return box;
}
