// Exported functions: showing, removing and styling render objects.
#include <cmath>

#include "ArgumentChecks.h"
#include "ClipPlane.h"
#include "ColorMapIndex.h"
#include "ExceptionStatus.h"
#include "GLViewer.h"
#include "ModeNumbers.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "SceneContent.h"
#include "StatusCodes.h"
#include "WindowRegistry.h"

namespace QELMV {

namespace {

constexpr unsigned long kMaxCount = 2147483647ul;

long checkCloud(const QelPointCloud& cloud, bool needValid) {
    if (cloud.Length() <= 0) return QelStatus::kPointCloudEmpty;
    if (needValid && cloud.NumValidPoints() == 0) return QelStatus::kNoValidPoints;
    if (static_cast<unsigned long>(cloud.Length()) > kMaxCount) return QelStatus::kCountTooLarge;
    return 0;
}

long checkRangeImage(const QelRangeImage& image) {
    const unsigned long long samples =
        static_cast<unsigned long long>(image.Width() < 0 ? 0 : image.Width()) *
        static_cast<unsigned long long>(image.Height() < 0 ? 0 : image.Height());
    if (samples == 0) return QelStatus::kRangeImageEmpty;
    if (samples > kMaxCount) return QelStatus::kCountTooLarge;
    return 0;
}

long checkMesh(const QelTriangleMesh& mesh) {
    if (mesh.NumVertices() <= 0) return QelStatus::kMeshNoVertices;
    if (mesh.NumTriangles() <= 0) return QelStatus::kMeshNoTriangles;
    if (mesh.NumValidVertices() == 0) return QelStatus::kMeshNoValidVertices;
    if (mesh.NumValidTriangles() == 0) return QelStatus::kMeshNoValidTriangles;
    return 0;
}

}  // namespace

long QelDisplayPointCloud(long long window, QelPointCloud& cloud) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkCloud(cloud, false)) return status;
    return v->addPointCloud(cloud, true);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelDisplayRangeImage(long long window, QelRangeImage& image) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkRangeImage(image)) return status;
    return v->addRangeImage(image, true);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelDisplayTriangleMesh(long long window, QelTriangleMesh& mesh) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkMesh(mesh)) return status;
    return v->addTriangleMesh(mesh, true);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelDisplay2DImage(long long window, QelImage& image) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (image.Width() <= 0 || image.Height() <= 0) return QelStatus::kImageEmpty;
    if (static_cast<unsigned int>(image.BitDepth()) > 3) return QelStatus::kImageTypeRefused;
    return v->addImage(image, true);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelAdd3DRenderObject(long long window, QelPointCloud& cloud) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkCloud(cloud, true)) return status;
    return v->addPointCloud(cloud);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelAdd3DRenderObject(long long window, QelRangeImage& image) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkRangeImage(image)) return status;
    return v->addRangeImage(image);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelAdd3DRenderObject(long long window, QelTriangleMesh& mesh) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (long status = checkMesh(mesh)) return status;
    return v->addTriangleMesh(mesh);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelDraw3DTextOverlay(long long window, QelVar& text, QelVector3d& position, float size,
                          QelColor& colour) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (text.ValType() != QEL_VAR_STRING && text.ValType() != QEL_VAR_WSTRING)
        return QelStatus::argument(2);
    if (!position.IsValid()) return QelStatus::argument(3);
    if (!(size > 0) || !std::isfinite(size)) return QelStatus::argument(4);
    return v->addTextOverlay(text, position, size, colour);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelClear3DScene(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearScene();
}

long QelClearRenderObject(long long window, long id) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearRenderObject(id);
}

long QelClearAllPointCloud(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearAllPointClouds();
}

long QelClearAllRangeImage(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearAllRangeImages();
}

long QelClearAllTriangleMesh(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->clearAllTriangleMeshes();
}

long QelClear3DTextOverlay(long long window, long id) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->removeTextOverlay(id);
}

long QelClearAll3DTextOverlay(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->removeAllTextOverlays();
}

long QelSetObjectVisible(long long window, long id, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->setVisible(id, visible);
}

long QelSetObjectModelMatrix(long long window, long id, QelMatrix4& matrix) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!Qel3DAxisTransform().IsPoseMatrix(matrix) || !QelArguments::usableTranslation(matrix))
        return QelStatus::kNotAPose;
    return v->setModelMatrix(id, matrix);
}

long QelSetRenderColor(long long window, long id, QelColorArray& colours) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    return v->setColours(id, colours);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetRenderLineWidth(long long window, long id, float width) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!(width > 0.0f && width <= 10.0f)) return QelStatus::argument(3);
    return v->setLineWidth(id, width);
}

long QelSet3DElementSize(long long window, long id, int size) {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (size < 1) return QelStatus::argument(3);
    return v->setPointSize(id, static_cast<float>(size));
}

long QelSet3DElementState(long long window, long id, Qel3DGraphicsDataType state) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(state) > 2) return QelStatus::argument(3);
    return v->setElementState(id, ModeNumbers::renderMode(state));
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSet3DElementState(long long window, Qel3DGraphicsDataType state) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(state) > 2) return QelStatus::argument(2);
    w->setElementStateForAll(ModeNumbers::renderMode(state));
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetPointRenderMode(long long window, int id, Qel3DPointRenderMode mode) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (static_cast<int>(mode) >= 2) return QelStatus::argument(3);
    return v->setPointRenderMode(id, ModeNumbers::pointRenderMode(mode));
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetDefaultLUT(long long window, int table) try {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(table) > 6) return QelStatus::argument(2);
    ColorMapIndex::set(table);
    WindowRegistry::find(window)->colourTableChanged();
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSetSamplingRatio(long long window, int ratio) try {
    QEL_ON_GUI_THREAD_ONLY();
    SceneContent* v = WindowRegistry::findContent(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (ratio < 0) return QelStatus::argument(2);
    v->setSamplingRatio(ratio);
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelRenderByClippingPlane(long long window, Qel3DPlane& plane) try {
    QEL_ON_GUI_THREAD_ONLY();
    GLViewer* v = WindowRegistry::findViewer(window);
    if (!v) return QelStatus::kUnknownWindow;
    if (!QelArguments::usablePlane(plane)) return QelStatus::kClipPlaneInvalid;
    v->clip().setClipPlane(plane);
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

}  // namespace QELMV
