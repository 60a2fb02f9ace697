#include "Qel3DGraphicsIO.h"

#include <cstddef>
#include <osg/Camera>
#include <osg/Viewport>

#include "ParallelFor.h"
#include "QelDataStatus.h"
#include "ScreenPolygon.h"

using namespace QELMV;

long Qel3DGraphicsIO::GetPointsInScreenPolygon(const osg::Camera& camera,
                                               const QelVector3dArray& points,
                                               const QelPointArray& polygon, QelVector3dArray* out,
                                               bool keepInside) {
    return GetPointsInScreenPolygon(camera, points, polygon, out, nullptr, keepInside);
}

long Qel3DGraphicsIO::GetPointsInScreenPolygon(const osg::Camera& camera,
                                               const QelVector3dArray& points,
                                               const QelPointArray& polygon, QelVector3dArray* out,
                                               Qel3DIntArray* indices, bool keepInside) {
    const osg::Viewport* viewport = camera.getViewport();
    if (!out || !viewport || viewport->width() <= 0 || viewport->height() <= 0)
        return QEL_DATA_INVALID_ARGUMENT;
    std::vector<double> xy;
    xy.reserve(static_cast<std::size_t>(polygon.Length()) * 2);
    for (int i = 0; i < polygon.Length(); ++i) {
        xy.push_back(polygon[i].x);
        xy.push_back(polygon[i].y);
    }
    qel::ScreenPolygon outline;
    if (!outline.build(xy)) return QEL_DATA_DEGENERATE;

    // Row-vector convention: clip = p * view * projection.
    const osg::Matrixd view = camera.getViewMatrix();
    const osg::Matrixd clip = view * camera.getProjectionMatrix();
    const double vx = viewport->x(), vy = viewport->y();
    const double halfW = viewport->width() * 0.5, halfH = viewport->height() * 0.5;

    const size_t n = static_cast<std::size_t>(points.Length());
    std::vector<unsigned char> keep(n, 0);
    const float* p = points.Data();
    qel::parallelFor(
        n,
        [&](size_t begin, size_t end) {
            for (size_t i = begin; i < end; ++i) {
                if (!points[static_cast<int>(i)].IsValid()) continue;
                const double x = p[3 * i], y = p[3 * i + 1], z = p[3 * i + 2];
                const double eyeZ = x * view(0, 2) + y * view(1, 2) + z * view(2, 2) + view(3, 2);
                const double w = x * clip(0, 3) + y * clip(1, 3) + z * clip(2, 3) + clip(3, 3);
                bool inside = false;
                if (eyeZ < 0.0 && w > 0.0) {  // in front of the eye
                    const double cx = x * clip(0, 0) + y * clip(1, 0) + z * clip(2, 0) + clip(3, 0);
                    const double cy = x * clip(0, 1) + y * clip(1, 1) + z * clip(2, 1) + clip(3, 1);
                    const double sx = vx + (cx / w + 1.0) * halfW;
                    const double sy = vy + (cy / w + 1.0) * halfH;
                    inside = outline.contains(sx, sy);
                }
                keep[i] = inside == keepInside;
            }
        },
        65536);

    size_t kept = 0;
    for (unsigned char k : keep)
        kept += k;
    QelVector3dArray selected(static_cast<int>(kept));
    Qel3DIntArray selectedIndices;
    if (indices) selectedIndices.SetSize(static_cast<int>(kept));
    int j = 0;
    for (size_t i = 0; i < n; ++i) {
        if (!keep[i]) continue;
        selected[j] = points[static_cast<int>(i)];
        if (indices) selectedIndices[j] = static_cast<int>(i);
        ++j;
    }
    *out = std::move(selected);
    if (indices) *indices = std::move(selectedIndices);
    return QEL_DATA_OK;
}
