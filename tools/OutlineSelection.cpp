#include "OutlineSelection.h"

#include <cstring>
#include <osgViewer/Viewer>

#include "GLViewer.h"
#include "OSGDataManager.h"
#include "OSGPointCloud.h"
#include "OSGRangeImage.h"
#include "OSGTriangleMesh.h"
#include "Qel3DGraphicsIO.h"
#include "QelOSGWidget.h"
#include "QelPointArray.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "RangePixelReader.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "StatusCodes.h"

namespace {

// The outline in the camera's window pixels (y up), closed by repeating its
// first point: a free polygon, or the four corners of the rectangle spanned
// by its first and last point.
QelPointArray screenPolygon(const QVector<QPointF>& outline, LassoShape shape, double height,
                            double ratio) {
    QVector<QPointF> corners = outline;
    if (shape == LassoShape::Rectangle) {
        const QPointF a = outline.first(), b = outline.last();
        corners = {a, QPointF(b.x(), a.y()), b, QPointF(a.x(), b.y())};
    }
    corners.append(corners.first());
    QelPointArray polygon;
    for (const QPointF& p : corners)
        polygon.Append(QelPoint(p.x() * ratio, height - p.y() * ratio));
    return polygon;
}

osg::Matrixd worldMatrixOf(const osg::Node* node) {
    const osg::NodePathList paths = node ? node->getParentalNodePaths() : osg::NodePathList();
    return paths.empty() ? osg::Matrixd() : osg::computeLocalToWorld(paths.front());
}

// Writes the data type's invalid marker into one sample.
void invalidate(unsigned char* data, long long index, int dataType) {
    const double marker = RangePixelReader::marker(dataType);
    auto put = [&](auto value) {
        std::memcpy(data + index * static_cast<long long>(sizeof value), &value, sizeof value);
    };
    switch (dataType) {
        case QEL_8U:
            return put(static_cast<unsigned char>(marker));
        case QEL_8S:
            return put(static_cast<signed char>(marker));
        case QEL_16U:
            return put(static_cast<unsigned short>(marker));
        case QEL_16S:
            return put(static_cast<short>(marker));
        case QEL_32S:
            return put(static_cast<int>(marker));
        case QEL_32F:
            return put(static_cast<float>(marker));
        default:
            return put(marker);
    }
}

}  // namespace

struct OutlineSelection::Selection {
    const OSGData* object = nullptr;
    QelVector3dArray points;
    std::vector<long long> sources;
    std::vector<int> chosen;
};

namespace {

// The points an outline selects from, in the object's own coordinates; false
// for kinds without points.
bool pointsOf(const OSGData& object, QelVector3dArray* points, std::vector<long long>* sources,
              const osg::Node** drawn) {
    sources->clear();
    *drawn = object.geometry();
    switch (object.kind()) {
        case ObjectKind::PointCloud:
            *points = static_cast<const OSGPointCloud&>(object).points();
            break;
        case ObjectKind::TriangleMesh:
            *points = static_cast<const OSGTriangleMesh&>(object).source().DeepCopyVertex();
            break;
        case ObjectKind::RangeImage: {
            const auto& image = static_cast<const OSGRangeImage&>(object);
            *points = image.sourcePoints(sources);
            *drawn = image.levelCount() > 0 ? image.levelGeometry(0) : nullptr;
            return true;
        }
        default:
            return false;
    }
    for (int i = 0; i < points->Length(); ++i)
        sources->push_back(i);
    return true;
}

// The points where they are drawn: through the object's model matrix.
QelVector3dArray placed(const QelVector3dArray& points, const osg::Matrixd& toWorld) {
    QelVector3dArray world = points;
    for (int i = 0; i < world.Length(); ++i) {
        const osg::Vec3d w = osg::Vec3d(points[i].x, points[i].y, points[i].z) * toWorld;
        world[i] = QelVector3d(float(w.x()), float(w.y()), float(w.z()));
    }
    return world;
}

}  // namespace

long OutlineSelection::select(const QVector<QPointF>& outline, LassoShape shape, bool keepInside,
                              Selection* selection, const ObjectKind* onlyKind) {
    const OSGDataManager& registry = view_.content().registry();
    QelOSGWidget* widget = view_.osgWidget();
    if (registry.count() == 0) return QelStatus::kNoRenderObject;
    if (outline.size() < 2) return QelStatus::kLassoTooShort;
    osgViewer::Viewer* viewer = view_.viewer();
    const osg::Viewport* viewport = viewer ? viewer->getCamera()->getViewport() : nullptr;
    if (!viewport || widget->width() < 1) return QelStatus::kLassoTooShort;
    const OSGData* last = registry.at(registry.count() - 1);
    if (onlyKind && last->kind() != *onlyKind) return 0;
    const osg::Node* drawn = nullptr;
    if (!pointsOf(*last, &selection->points, &selection->sources, &drawn)) return 0;
    const QelPointArray polygon =
        screenPolygon(outline, shape, viewport->height(), viewport->width() / widget->width());
    // Most objects carry no model matrix: their points are used as they are.
    const osg::Matrixd toWorld = worldMatrixOf(drawn);
    const QelVector3dArray moved =
        toWorld.isIdentity() ? QelVector3dArray() : placed(selection->points, toWorld);
    QelVector3dArray kept;
    Qel3DIntArray indices;
    if (Qel3DGraphicsIO().GetPointsInScreenPolygon(*viewer->getCamera(),
                                                   toWorld.isIdentity() ? selection->points : moved,
                                                   polygon, &kept, &indices, keepInside) != 0)
        return QelStatus::kLassoTooShort;  // an outline without area
    selection->chosen.assign(indices.Data(), indices.Data() + indices.Length());
    selection->object = last;
    return 0;
}

long OutlineSelection::selectPoints(const QVector<QPointF>& outline, LassoShape shape,
                                    bool keepInside, QelPointCloud* out, bool* used) {
    view_.viewer();  // the first paint creates the viewer, outside the lock
    SceneLockGuard lock(view_.osgWidget());
    Selection s;
    const long status = select(outline, shape, keepInside, &s);
    *used = s.object != nullptr;
    if (status != 0 || !s.object || s.chosen.empty()) return status;
    QelVector3dArray points(static_cast<int>(s.chosen.size()));
    for (size_t k = 0; k < s.chosen.size(); ++k)
        points[int(k)] = s.points[s.chosen[k]];
    out->SetPoints(points);
    if (s.object->kind() != ObjectKind::PointCloud) return 0;
    // A cloud's own colours go with its points.
    const QelColorArray& colours = static_cast<const OSGPointCloud*>(s.object)->ownColours();
    QelColorArray picked;
    if (colours.IsEmpty() || !picked.Create(points.Length(), colours.Channel())) return 0;
    const size_t c = static_cast<size_t>(colours.Channel());
    for (size_t k = 0; k < s.chosen.size(); ++k)
        std::memcpy(picked.Data() + c * k, colours.Data() + c * size_t(s.chosen[k]), c);
    out->SetColors(picked);
    return 0;
}

long OutlineSelection::selectRangeSamples(const QVector<QPointF>& outline, LassoShape shape,
                                          bool keepInside, QelRangeImage* out, bool* used) {
    view_.viewer();
    SceneLockGuard lock(view_.osgWidget());
    Selection s;
    const ObjectKind rangeImages = ObjectKind::RangeImage;
    const long status = select(outline, shape, keepInside, &s, &rangeImages);
    *used = s.object != nullptr;
    if (status != 0 || !s.object || s.chosen.empty()) return status;
    QelRangeImage image = static_cast<const OSGRangeImage*>(s.object)->source().DeepCopy();
    const long long n = static_cast<long long>(image.Width()) * image.Height();
    std::vector<bool> keep(static_cast<size_t>(n), false);
    for (int k : s.chosen)
        keep[static_cast<size_t>(s.sources[static_cast<size_t>(k)])] = true;
    for (long long i = 0; i < n; ++i)
        if (!keep[static_cast<size_t>(i)]) invalidate(image.Data(), i, image.DataType());
    *out = image;
    return 0;
}
