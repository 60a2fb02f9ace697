#pragma once

// The one header a host includes: every data type of the data layer and the
// exported functions of the viewer in namespace QELMV.
//
// Every function takes the window handle that QelCreate3DWnd wrote first and
// returns a status: 0 for success, or a code >= 11000000. Functions that add
// something (display, add, show, draw) return the new object's id (>= 1)
// instead of 0. All functions must be called on the thread that runs the
// Qt event loop (the host's GUI thread).
#include "Qel3DData.h"

#define QEL_GRAPHICS_API __attribute__((visibility("default")))

namespace QELMV {

// How the elements of a render object are drawn.
enum Qel3DGraphicsDataType {
    QEL_3D_POINTS = 0,
    QEL_3D_LINES = 1,
    QEL_3D_TRIANGLES = 2,
};

// How a shape is drawn.
enum Qel3DGraphicsShapeMode {
    QEL_3D_SHAPE_WIREFRAME = 0,
    QEL_3D_SHAPE_SURFACE = 1,
};

// The standard views.
enum Qel3DPerspective {
    QEL_3D_VIEW_TOP = 0,
    QEL_3D_VIEW_BOTTOM = 1,
    QEL_3D_VIEW_FRONT = 2,
    QEL_3D_VIEW_BACK = 3,
    QEL_3D_VIEW_LEFT = 4,
    QEL_3D_VIEW_RIGHT = 5,
    QEL_3D_VIEW_OBLIQUE = 6,
};

// Plain points, or shaded sphere sprites.
enum Qel3DPointRenderMode {
    QEL_3D_POINT_PLAIN = 0,
    QEL_3D_POINT_SPRITE = 1,
};

// Called on the GUI thread for each point the user picks in select-point
// mode: the window's handle, the point, the user pointer given at
// registration.
typedef void (*QelSelectPointEvent)(long long window, QelVector3d& point, void* user);

// Window life cycle. The parent is an X11 window id, or a widget of the
// host's own QApplication; the void* form takes a QWidget* when the host runs
// its own QApplication, otherwise a pointer to an X11 window id.
QEL_GRAPHICS_API long QelCreate3DWnd(long long parent, long long* window);
QEL_GRAPHICS_API long QelCreate3DWnd(long long parent, int left, int top, int right, int bottom,
                                     long long* window);
QEL_GRAPHICS_API long QelCreate3DWnd(void* parent, long long* window);
QEL_GRAPHICS_API long QelMove3DWnd(long long window, int left, int top, int right, int bottom);
QEL_GRAPHICS_API long QelDestory3DWnd(long long window);
QEL_GRAPHICS_API long QelSet3DWndNumber(long long window, int number, bool visible);

// Data display.
QEL_GRAPHICS_API long QelDisplayPointCloud(long long window, QelPointCloud& cloud);
QEL_GRAPHICS_API long QelDisplayRangeImage(long long window, QelRangeImage& image);
QEL_GRAPHICS_API long QelDisplayTriangleMesh(long long window, QelTriangleMesh& mesh);
QEL_GRAPHICS_API long QelDisplay2DImage(long long window, QelImage& image);
QEL_GRAPHICS_API long QelAdd3DRenderObject(long long window, QelPointCloud& cloud);
QEL_GRAPHICS_API long QelAdd3DRenderObject(long long window, QelRangeImage& image);
QEL_GRAPHICS_API long QelAdd3DRenderObject(long long window, QelTriangleMesh& mesh);
QEL_GRAPHICS_API long QelShow3DShape(long long window, Qel3DShape& shape);
QEL_GRAPHICS_API long QelDraw3DTextOverlay(long long window, QelVar& text, QelVector3d& position,
                                           float size, QelColor& colour);
QEL_GRAPHICS_API long QelDrawMessageText(long long window, QelVar& text);
QEL_GRAPHICS_API long QelDrawMessageText(long long window, QelVar& text, QelPoint& position);

// Removing things.
QEL_GRAPHICS_API long QelClear3DScene(long long window);
QEL_GRAPHICS_API long QelClearRenderObject(long long window, long id);
QEL_GRAPHICS_API long QelClearAllPointCloud(long long window);
QEL_GRAPHICS_API long QelClearAllRangeImage(long long window);
QEL_GRAPHICS_API long QelClearAllTriangleMesh(long long window);
QEL_GRAPHICS_API long QelClear3DShape(long long window, long id);
QEL_GRAPHICS_API long QelClearAll3DShape(long long window);
QEL_GRAPHICS_API long QelClear3DTextOverlay(long long window, long id);
QEL_GRAPHICS_API long QelClearAll3DTextOverlay(long long window);

// Appearance of objects.
QEL_GRAPHICS_API long QelSetObjectVisible(long long window, long id, bool visible);
QEL_GRAPHICS_API long QelSetObjectModelMatrix(long long window, long id, QelMatrix4& matrix);
QEL_GRAPHICS_API long QelSetRenderColor(long long window, long id, QelColorArray& colours);
QEL_GRAPHICS_API long QelSetRenderLineWidth(long long window, long id, float width);
QEL_GRAPHICS_API long QelSet3DElementSize(long long window, long id, int size);
QEL_GRAPHICS_API long QelSet3DElementState(long long window, long id, Qel3DGraphicsDataType state);
QEL_GRAPHICS_API long QelSet3DElementState(long long window, Qel3DGraphicsDataType state);
QEL_GRAPHICS_API long QelSet3DShapeMode(long long window, int id, Qel3DGraphicsShapeMode mode);
QEL_GRAPHICS_API long QelSetPointRenderMode(long long window, int id, Qel3DPointRenderMode mode);
QEL_GRAPHICS_API long QelSetDefaultLUT(long long window, int table);
QEL_GRAPHICS_API long QelSetSamplingRatio(long long window, int ratio);
QEL_GRAPHICS_API long QelRenderByClippingPlane(long long window, Qel3DPlane& plane);

// View, camera, light.
QEL_GRAPHICS_API long QelSetCamera(long long window, QelVector3d& eye, QelVector3d& centre,
                                   QelVector3d& up);
QEL_GRAPHICS_API long QelGetCamera(long long window, QelVector3d* eye, QelVector3d* centre,
                                   QelVector3d* up);
QEL_GRAPHICS_API long QelSetPerspective(long long window, Qel3DPerspective view);
QEL_GRAPHICS_API long QelSetProjection(long long window, bool orthographic);
QEL_GRAPHICS_API long Qel3DZoom(long long window, QelVector3d& point, float factor);
QEL_GRAPHICS_API long Qel3DZoomFitWnd(long long window);
QEL_GRAPHICS_API long QelSetAxisVisible(long long window, bool visible);
QEL_GRAPHICS_API long QelSetGridVisible(long long window, bool visible);
QEL_GRAPHICS_API long QelSetLightState(long long window, bool on);
// Frames that cost what changed (on by default, off when the environment
// sets QEL3D_INCREMENTAL=0): a still view's last frame is shown again under
// the message, colour bar and lasso; a big cloud's still picture appears at
// once as a sample and fills in over the next frames; a stream's new lines
// and a new or changed shape, text or measurement are drawn over the kept
// picture. Off, every frame draws the whole scene.
QEL_GRAPHICS_API long QelSetIncrementalFrames(long long window, bool enable);
// Eye-dome lighting over the whole 3D scene; off by default. Darkens each
// pixel by how far its neighbours at 'radius' logical pixels (0.5..8) lie in
// front of it, more with a greater strength (> 0; 0.4 is mild); switching
// off ignores both.
QEL_GRAPHICS_API long QelSetEyeDomeLighting(long long window, bool enable, double strength,
                                            double radius);
QEL_GRAPHICS_API long QelSetLightParameter(long long window, float power, QelVector3d& direction);
QEL_GRAPHICS_API long QelSetLightParameter(long long window, float ambient, float diffuse,
                                           float specular);
QEL_GRAPHICS_API long QelSet3DBackgroundColor(long long window, QelColor& colour);

// Window furniture and interaction.
QEL_GRAPHICS_API long QelSet3DToolbarVisible(long long window, long mask, bool visible);
QEL_GRAPHICS_API long QelSet3DToolbarVisible(long long window, bool visible);
QEL_GRAPHICS_API long QelSet3DStatusbarVisible(long long window, bool visible);
QEL_GRAPHICS_API long QelSet3DStatusbarLogLevel(long long window, int level);
QEL_GRAPHICS_API long QelSet3DTextPen(long long window, QelColor& colour, long size);
QEL_GRAPHICS_API long QelGet3DTextPen(long long window, QelColor* colour, long* size);
QEL_GRAPHICS_API long Qel3DScreenShot(long long window, QelImage* image);
QEL_GRAPHICS_API long QelRegisterSelectPointEvent(long long window, QelSelectPointEvent callback,
                                                  void* user);
QEL_GRAPHICS_API long QelSelectPointsByLasso(long long window, QelPointCloud* selected,
                                             bool remove);
QEL_GRAPHICS_API long QelSelectPointsByLasso(long long window, QelRangeImage* selected,
                                             bool remove);

// Measurements between points in world coordinates, drawn in the view and
// kept with the shapes. kind: 0 distance (2 points), 1 angle at the middle
// point (3 points, degrees), 2 height of the 4th point above the plane
// through the first 3 (4 points, signed along (p2 - p1) x (p3 - p1)).
// Add returns the new id.
QEL_GRAPHICS_API long QelAdd3DMeasurement(long long window, int kind, QelVector3dArray& points);
QEL_GRAPHICS_API long QelGet3DMeasurement(long long window, long id, double* value);
QEL_GRAPHICS_API long QelClear3DMeasurement(long long window, long id);
QEL_GRAPHICS_API long QelClearAll3DMeasurement(long long window);
// The interactive tool: -1 off; 0, 1, 2 as above, the points taken by clicks.
QEL_GRAPHICS_API long QelSet3DMeasureMode(long long window, int kind);
typedef void (*QelMeasureCallback)(long long window, long id, int kind, double value, void* user);
// Called on the GUI thread for each measurement the tool completes.
QEL_GRAPHICS_API long QelRegisterMeasureEvent(long long window, QelMeasureCallback callback,
                                              void* user);

// A short English text for any status code this library or its data layer
// returns (never null): "unknown window handle", "argument 3 is out of
// range", ... Object ids and unknown codes get a text that says so.
QEL_GRAPHICS_API const char* QelGetStatusText(long code);

// Streaming a range image line by line while a sensor scans.
QEL_GRAPHICS_API long QelInitialRangeImage(long long window, int dataType, int width, int height,
                                           double resolutionX, double offsetX, double resolutionY,
                                           double offsetY, double resolutionZ, double offsetZ,
                                           double zMin, double zMax, int colourChannels);
QEL_GRAPHICS_API long QelAppendDataStream(long long window, long stream, void* samples,
                                          void* colours, int type, int startLine, int endLine);
QEL_GRAPHICS_API long QelFinishDataStream(long long window, long stream, QelRangeImage* image);

}  // namespace QELMV
