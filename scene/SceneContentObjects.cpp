// The content's render objects: each operation takes the scene lock,
// changes the registry, releases the lock, then updates the info text and
// tells the view.
#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <osg/ComputeBoundsVisitor>

#include "MemoryBudget.h"
#include "OSGDataManager.h"
#include "OSGImage.h"
#include "OSGPointCloud.h"
#include "OSGRangeImage.h"
#include "OSGTriangleMesh.h"
#include "ObjectIdCounter.h"
#include "QelImage.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "SamplingStep.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ShapeManager.h"
#include "StatusCodes.h"

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("SceneContent", text);
}

const char* dataTypeText(int type) {
    static const char* const kTexts[] = {"8U", "8S", "16U", "16S", "32S", "32F", "64F"};
    return (type >= 0 && type <= 6) ? kTexts[type] : "?";
}

}  // namespace

namespace {

// Extent values must stay within what a 32-bit integer coordinate holds.
bool extentFits(const osg::BoundingBox& box) {
    constexpr float kLimit = 2147483648.0f;
    return !box.valid() ||
           (box.xMax() <= kLimit && box.yMax() <= kLimit && box.zMax() <= kLimit &&
            box.xMin() >= -kLimit && box.yMin() >= -kLimit && box.zMin() >= -kLimit);
}

}  // namespace

long SceneContent::adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info) {
    if (!object->isValid()) return QelStatus::kObjectUnusable;
    osg::ComputeBoundsVisitor bounds;
    object->node()->accept(bounds);
    if (!extentFits(bounds.getBoundingBox())) return QelStatus::kExtentTooLarge;
    return adopt(std::move(object), replace, info, bounds.getBoundingBox());
}

long SceneContent::adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info,
                         const osg::BoundingBox& box) {
    const long id = object->id();
    const double minZ = object->minZ(), maxZ = object->maxZ();
    const bool intoEmptyScene = replace || registry_->count() == 0;
    {
        SceneLockGuard lock(lock_);
        if (replace) registry_->clear();
        registry_->add(std::move(object));
    }
    setInfoText(info);
    emit sig_heightRange(minZ, maxZ);
    emit sig_itemAdded(intoEmptyScene ? osg::BoundingSphere(box) : osg::BoundingSphere());
    emit sig_dataChanged();
    return id;
}

int SceneContent::samplingStepFor(std::uint64_t width, std::uint64_t height) const {
    return samplingStep_ > 0 ? samplingStep_ : SamplingStep::automatic(double(width) * height);
}

OSGPointCloud* SceneContent::reusablePointCloud(int points) const {
    for (int i = 0; i < registry_->count(); ++i) {
        OSGData* object = registry_->at(i);
        if (OSGPointCloud::canReuse(*object, points)) return static_cast<OSGPointCloud*>(object);
    }
    return nullptr;
}

long SceneContent::addPointCloud(const QelPointCloud& cloud, bool replace) {
    if (!MemoryBudget::fits(
            MemoryBudget::pointCloud(std::uint64_t(cloud.Length()), cloud.IsValidColor() ? 4 : 0)))
        return QelStatus::kCountTooLarge;
    const ObjectId id = ObjectIdCounter::take();
    const QString line = QStringLiteral("  ") + tr("Data Type: Point Cloud") + " \t " +
                         tr("Number of Points: ") + QString::number(cloud.Length());
    // A cloud replacing one of the same length is built into its storage.
    // That changes the displayed cloud, so every check comes first: a
    // refused call leaves the scene as it was.
    if (OSGPointCloud* previous = replace ? reusablePointCloud(cloud.Length()) : nullptr) {
        const osg::BoundingBox box = OSGPointCloud::extentOf(cloud);
        if (!extentFits(box)) return QelStatus::kExtentTooLarge;
        std::unique_ptr<OSGPointCloud> object;
        {
            // Its arrays are still drawn until the swap.
            SceneLockGuard lock(lock_);
            object = std::make_unique<OSGPointCloud>(cloud, RenderMode::Points, id,
                                                     useHeightColours_, *previous);
            object->applyDefaultColours();
        }
        return adopt(std::move(object), replace, {line}, box);
    }
    auto object = std::make_unique<OSGPointCloud>(cloud, RenderMode::Points, id, useHeightColours_);
    object->applyDefaultColours();
    return adopt(std::move(object), replace, {line});
}

namespace {

QStringList rangeImageInfo(const QelRangeImage& image) {
    const QString size = QString("%1 x %2").arg(image.Width()).arg(image.Height());
    const QString resolution = QString("%1|%2|%3")
                                   .arg(image.ResolutionX())
                                   .arg(image.ResolutionY())
                                   .arg(image.ResolutionZ());
    const QString brief =
        QStringLiteral("  ") + tr("Data Type: Range Image") + " \t " + tr("Image Size: ") + size;
    return {brief, brief + " \t " + tr("Resolution X|Y|Z: ") + resolution + " \t " +
                       dataTypeText(image.DataType())};
}

}  // namespace

long SceneContent::addRangeImage(const QelRangeImage& image, bool replace) {
    const std::uint64_t w = std::uint64_t(std::max(image.Width(), 0));
    const std::uint64_t h = std::uint64_t(std::max(image.Height(), 0));
    if (!MemoryBudget::fits(MemoryBudget::rangeImage(w, h,
                                                     QelRangeImage::SampleSize(image.DataType()),
                                                     image.ColorChannels(), samplingStepFor(w, h))))
        return QelStatus::kCountTooLarge;
    const ObjectId id = ObjectIdCounter::take();
    return adopt(
        std::make_unique<OSGRangeImage>(image, defaultMode_, id, samplingStep_, useHeightColours_),
        replace, rangeImageInfo(image));
}

long SceneContent::addTriangleMesh(const QelTriangleMesh& mesh, bool replace) {
    if (!MemoryBudget::fits(MemoryBudget::triangleMesh(std::uint64_t(mesh.NumVertices()),
                                                       std::uint64_t(mesh.NumTriangles()))))
        return QelStatus::kCountTooLarge;
    const ObjectId id = ObjectIdCounter::take();
    auto object = std::make_unique<OSGTriangleMesh>(mesh, defaultMode_, id);
    object->applyDefaultColours();
    const QString line = QStringLiteral("  ") + tr("Data Type: Triangle Mesh") + " \t " +
                         tr("Number of Vertices: ") + QString::number(mesh.NumVertices()) + "\t " +
                         tr("Number of Faces: ") + QString::number(mesh.NumTriangles());
    return adopt(std::move(object), replace, {line});
}

long SceneContent::addImage(const QelImage& image, bool replace) {
    // Drawn like a range image of at most two bytes a sample.
    const std::uint64_t w = std::uint64_t(std::max(image.Width(), 0));
    const std::uint64_t h = std::uint64_t(std::max(image.Height(), 0));
    if (!MemoryBudget::fits(
            MemoryBudget::rangeImage(w, h, 2, image.Channels(), samplingStepFor(w, h))))
        return QelStatus::kCountTooLarge;
    const ObjectId id = ObjectIdCounter::take();
    auto object = std::make_unique<OSGImage>(image, defaultMode_, id, samplingStep_);
    const QString line = QStringLiteral("  ") + tr("Data Type: Image2D") + " \t " +
                         tr("Image Size: ") +
                         QString("%1 x %2").arg(image.Width()).arg(image.Height());
    return adopt(std::move(object), replace, {line});
}

long SceneContent::clearAllPointClouds() {
    {
        SceneLockGuard lock(lock_);
        registry_->removeKind(ObjectKind::PointCloud);
    }
    setInfoText({tr("Clear Point Cloud")});
    emit sig_dataChanged();
    return QelStatus::kOk;
}

long SceneContent::clearAllRangeImages() {
    {
        SceneLockGuard lock(lock_);
        registry_->removeRangeImages();
    }
    setInfoText({tr("Clear Range Image")});
    emit sig_dataChanged();
    return QelStatus::kOk;
}

long SceneContent::clearAllTriangleMeshes() {
    {
        SceneLockGuard lock(lock_);
        registry_->removeKind(ObjectKind::TriangleMesh);
    }
    setInfoText({tr("Clear Triangle Mesh")});
    emit sig_dataChanged();
    return QelStatus::kOk;
}

long SceneContent::clearRenderObject(long id) {
    bool empty = false;
    {
        SceneLockGuard lock(lock_);
        if (!registry_->remove(id)) return QelStatus::kObjectNotFound;
        empty = registry_->count() == 0;
    }
    if (empty) setInfoText({QString()});
    emit sig_dataChanged();
    return QelStatus::kOk;
}

long SceneContent::setElementState(ObjectId id, RenderMode mode) {
    return changeObject(id, [&](OSGData& o) {
        o.setRenderMode(mode);
        return QelStatus::kOk;
    });
}

void SceneContent::setElementStateForAll(RenderMode mode) {
    {
        SceneLockGuard lock(lock_);
        registry_->setModeForAll(mode);
        defaultMode_ = mode;
    }
    emit sig_dataChanged();
}

long SceneContent::setPointRenderMode(ObjectId id, PointRenderMode mode) {
    return changeObject(id, [&](OSGData& o) {
        if (o.kind() != ObjectKind::PointCloud) return QelStatus::kObjectNotFound;
        static_cast<OSGPointCloud&>(o).setPointRenderMode(mode);
        return QelStatus::kOk;
    });
}

void SceneContent::setUseHeightColours(bool on) {
    {
        SceneLockGuard lock(lock_);
        useHeightColours_ = on;
        registry_->setSwitchForAll(on);
    }
    emit sig_dataChanged();
}

void SceneContent::applyHeightRange(double min, double max) {
    {
        SceneLockGuard lock(lock_);
        for (int i = 0; i < registry_->count(); ++i) {
            OSGData* object = registry_->at(i);
            if (object->heightColoured()) object->applyColourMap(min, max);
        }
    }
    emit sig_redraw();
}
