// GLViewer's render-object operations: each takes the scene lock, changes
// the registry, releases the lock, then updates the info text and asks for
// a redraw.
#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <osg/ComputeBoundsVisitor>

#include "GLViewer.h"
#include "MemoryBudget.h"
#include "OSGDataManager.h"
#include "OSGImage.h"
#include "OSGPointCloud.h"
#include "OSGRangeImage.h"
#include "OSGTriangleMesh.h"
#include "ObjectIdCounter.h"
#include "QelImage.h"
#include "QelMatrix4.h"
#include "QelOSGWidget.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "SamplingStep.h"
#include "SceneLockGuard.h"
#include "Shape.h"
#include "ShapeManager.h"
#include "StatusCodes.h"

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("GLViewer", text);
}

const char* dataTypeText(int type) {
    static const char* const kTexts[] = {"8U", "8S", "16U", "16S", "32S", "32F", "64F"};
    return (type >= 0 && type <= 6) ? kTexts[type] : "?";
}

}  // namespace

void GLViewer::setInfoText(const QStringList& lines) {
    infoText_ = lines;
    emit sig_infoText(lines);
}

namespace {

// Extent values must stay within what a 32-bit integer coordinate holds.
bool extentFits(const osg::BoundingBox& box) {
    constexpr float kLimit = 2147483648.0f;
    return !box.valid() ||
           (box.xMax() <= kLimit && box.yMax() <= kLimit && box.zMax() <= kLimit &&
            box.xMin() >= -kLimit && box.yMin() >= -kLimit && box.zMin() >= -kLimit);
}

}  // namespace

long GLViewer::adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info) {
    if (!object->isValid()) return QelStatus::kObjectUnusable;
    osg::ComputeBoundsVisitor bounds;
    object->node()->accept(bounds);
    if (!extentFits(bounds.getBoundingBox())) return QelStatus::kExtentTooLarge;
    return adopt(std::move(object), replace, info, bounds.getBoundingBox());
}

long GLViewer::adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info,
                     const osg::BoundingBox& box) {
    const long id = object->id();
    const double minZ = object->minZ(), maxZ = object->maxZ();
    const bool intoEmptyScene = replace || registry_->count() == 0;
    {
        SceneLockGuard lock(osgWidget_);
        if (replace) registry_->clear();
        registry_->add(std::move(object));
    }
    setInfoText(info);
    emit sig_heightRange(minZ, maxZ);
    if (initialised_ && !manipulator_)
        installManipulator();
    else if (intoEmptyScene && manipulator_)
        fitIfOutOfView(osg::BoundingSphere(box));
    dataChanged();
    return id;
}

int GLViewer::samplingStepFor(std::uint64_t width, std::uint64_t height) const {
    return samplingStep_ > 0 ? samplingStep_ : SamplingStep::automatic(double(width) * height);
}

OSGPointCloud* GLViewer::reusablePointCloud(int points) const {
    for (int i = 0; i < registry_->count(); ++i) {
        OSGData* object = registry_->at(i);
        if (OSGPointCloud::canReuse(*object, points)) return static_cast<OSGPointCloud*>(object);
    }
    return nullptr;
}

long GLViewer::addPointCloud(const QelPointCloud& cloud, bool replace) {
    if (!MemoryBudget::fits(
            MemoryBudget::pointCloud(std::uint64_t(cloud.Length()), cloud.IsValidColor() ? 4 : 0)))
        return QelStatus::kCountTooLarge;
    const long id = ObjectIdCounter::take();
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
            SceneLockGuard lock(osgWidget_);
            object = std::make_unique<OSGPointCloud>(cloud, 0, static_cast<int>(id),
                                                     useHeightColours_, *previous);
            object->applyDefaultColours();
        }
        return adopt(std::move(object), replace, {line}, box);
    }
    auto object =
        std::make_unique<OSGPointCloud>(cloud, 0, static_cast<int>(id), useHeightColours_);
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

long GLViewer::addRangeImage(const QelRangeImage& image, bool replace) {
    const std::uint64_t w = std::uint64_t(std::max(image.Width(), 0));
    const std::uint64_t h = std::uint64_t(std::max(image.Height(), 0));
    if (!MemoryBudget::fits(MemoryBudget::rangeImage(w, h,
                                                     QelRangeImage::SampleSize(image.DataType()),
                                                     image.ColorChannels(), samplingStepFor(w, h))))
        return QelStatus::kCountTooLarge;
    const long id = ObjectIdCounter::take();
    return adopt(std::make_unique<OSGRangeImage>(image, defaultMode_, static_cast<int>(id),
                                                 samplingStep_, useHeightColours_),
                 replace, rangeImageInfo(image));
}

long GLViewer::displayRangeImage(const QelRangeImage& image) {
    return addRangeImage(image, true);
}

long GLViewer::addTriangleMesh(const QelTriangleMesh& mesh, bool replace) {
    if (!MemoryBudget::fits(MemoryBudget::triangleMesh(std::uint64_t(mesh.NumVertices()),
                                                       std::uint64_t(mesh.NumTriangles()))))
        return QelStatus::kCountTooLarge;
    const long id = ObjectIdCounter::take();
    auto object = std::make_unique<OSGTriangleMesh>(mesh, defaultMode_, static_cast<int>(id));
    object->applyDefaultColours();
    const QString line = QStringLiteral("  ") + tr("Data Type: Triangle Mesh") + " \t " +
                         tr("Number of Vertices: ") + QString::number(mesh.NumVertices()) + "\t " +
                         tr("Number of Faces: ") + QString::number(mesh.NumTriangles());
    return adopt(std::move(object), replace, {line});
}

long GLViewer::addImage(const QelImage& image, bool replace) {
    // Drawn like a range image of at most two bytes a sample.
    const std::uint64_t w = std::uint64_t(std::max(image.Width(), 0));
    const std::uint64_t h = std::uint64_t(std::max(image.Height(), 0));
    if (!MemoryBudget::fits(
            MemoryBudget::rangeImage(w, h, 2, image.Channels(), samplingStepFor(w, h))))
        return QelStatus::kCountTooLarge;
    const long id = ObjectIdCounter::take();
    auto object =
        std::make_unique<OSGImage>(image, defaultMode_, static_cast<int>(id), samplingStep_);
    const QString line = QStringLiteral("  ") + tr("Data Type: Image2D") + " \t " +
                         tr("Image Size: ") +
                         QString("%1 x %2").arg(image.Width()).arg(image.Height());
    return adopt(std::move(object), replace, {line});
}

long GLViewer::clearAllPointClouds() {
    {
        SceneLockGuard lock(osgWidget_);
        registry_->removeKind(OSGData::PointCloud);
    }
    setInfoText({tr("Clear Point Cloud")});
    dataChanged();
    return QelStatus::kOk;
}

long GLViewer::clearAllRangeImages() {
    {
        SceneLockGuard lock(osgWidget_);
        registry_->removeRangeImages();
    }
    setInfoText({tr("Clear Range Image")});
    dataChanged();
    return QelStatus::kOk;
}

long GLViewer::clearAllTriangleMeshes() {
    {
        SceneLockGuard lock(osgWidget_);
        registry_->removeKind(OSGData::TriangleMesh);
    }
    setInfoText({tr("Clear Triangle Mesh")});
    dataChanged();
    return QelStatus::kOk;
}

long GLViewer::clearRenderObject(long id) {
    bool empty = false;
    {
        SceneLockGuard lock(osgWidget_);
        if (!registry_->remove(static_cast<int>(id))) return QelStatus::kObjectNotFound;
        empty = registry_->count() == 0;
    }
    if (empty) setInfoText({QString()});
    dataChanged();
    return QelStatus::kOk;
}

long GLViewer::clearScene() {
    {
        SceneLockGuard lock(osgWidget_);
        registry_->clear();
        shapes_->clear();
        textOverlays_.clear();
    }
    setInfoText({QString()});
    dataChanged();
    return QelStatus::kOk;
}

template <typename Change>
long GLViewer::changeObject(long id, Change change) {
    long status = QelStatus::kOk;
    {
        SceneLockGuard lock(osgWidget_);
        OSGData* object = registry_->find(static_cast<int>(id));
        status = object ? change(*object) : QelStatus::kObjectNotFound;
    }
    if (status == QelStatus::kOk) dataChanged();
    return status;
}

long GLViewer::setElementState(long id, int mode) {
    return changeObject(id, [&](OSGData& o) {
        o.setRenderMode(mode);
        return QelStatus::kOk;
    });
}

void GLViewer::setElementStateForAll(int mode) {
    {
        SceneLockGuard lock(osgWidget_);
        registry_->setModeForAll(mode);
        defaultMode_ = mode;
    }
    dataChanged();
}

long GLViewer::setModelMatrix(long id, const QelMatrix4& matrix) {
    // Column vectors in, the scene graph's row vectors out: the transpose,
    // element by element.
    const QelMatrix4 t = matrix.Transposed();
    osg::Matrix m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m(r, c) = t.Value(r, c);
    const long status = changeObject(id, [&](OSGData& o) {
        o.setMatrix(m);
        return QelStatus::kOk;
    });
    if (status != QelStatus::kObjectNotFound) return status;
    return changeShape(id, [&](Shape& s) { s.applyMatrix(m); });
}

long GLViewer::setObjectVisible(long id, bool visible) {
    const long status = changeObject(id, [&](OSGData& o) {
        o.setVisible(visible);
        return QelStatus::kOk;
    });
    if (status != QelStatus::kObjectNotFound) return status;
    return changeShape(id, [&](Shape& s) { s.setVisible(visible); });
}

long GLViewer::setRenderColor(long id, const QelColorArray& colours) {
    const long status = changeObject(id, [&](OSGData& o) {
        if (colours.IsEmpty()) return QelStatus::kColorRefused;
        if (colours.Channel() < 3) return QelStatus::kColorChannels;
        if (!o.setColors(colours)) return QelStatus::kColorRefused;
        o.markHostColoured();
        return QelStatus::kOk;
    });
    if (status != QelStatus::kObjectNotFound) return status;
    // A shape takes the array's first colour.
    if (colours.IsEmpty()) return shapes_->find(unsigned(id)) ? QelStatus::kColorRefused : status;
    if (colours.Channel() < 3)
        return shapes_->find(unsigned(id)) ? QelStatus::kColorChannels : status;
    const osg::ref_ptr<osg::Vec4Array> converted = OSGData::toFloatColours(colours, nullptr);
    return changeShape(id, [&](Shape& s) { s.setColor(*converted); });
}

long GLViewer::setPointSize(long id, float size) {
    const long status = changeObject(id, [&](OSGData& o) {
        o.setPointSize(size);
        return QelStatus::kOk;
    });
    if (status != QelStatus::kObjectNotFound) return status;
    return changeShape(id, [&](Shape& s) { s.setPointSize(size); });
}

long GLViewer::setLineWidth(long id, float width) {
    const long status = changeObject(id, [&](OSGData& o) {
        o.setLineWidth(width);
        return QelStatus::kOk;
    });
    if (status != QelStatus::kObjectNotFound) return status;
    return changeShape(id, [&](Shape& s) { s.setLineWidth(width); });
}

long GLViewer::setPointRenderMode(long id, int mode) {
    return changeObject(id, [&](OSGData& o) {
        if (o.kind() != OSGData::PointCloud) return QelStatus::kObjectNotFound;
        static_cast<OSGPointCloud&>(o).setPointRenderMode(mode);
        return QelStatus::kOk;
    });
}

void GLViewer::setUseHeightColours(bool on) {
    {
        SceneLockGuard lock(osgWidget_);
        useHeightColours_ = on;
        registry_->setSwitchForAll(on);
    }
    dataChanged();
}
