#pragma once

#include <QColor>
#include <QElapsedTimer>
#include <QImage>
#include <QPointF>
#include <QStringList>
#include <QVector>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <osg/BoundingBox>
#include <osg/BoundingSphere>
#include <osg/Group>
#include <osg/Vec4d>
#include <osg/ref_ptr>

#include "QelRangeImageParameter.h"
#include "TextOverlayManager.h"
#include "TextPrototype.h"

class OSGData;
class OSGDataManager;
class QelColorArray;
class QelImage;
class QelMatrix4;
class QelPointCloud;
class Qel3DPlane;
class QelRangeImage;
class QelVector3dArray;
class QelTriangleMesh;
class QelOSGWidget;
class QelColor;
class QelVar;
class QelVector3d;
class Qel3DShape;
class OSGDataStream;
class OSGPointCloud;
class ShaderADS;
class Shape;
class ShapeManager;
class ViewerManipulator;
class QTimer;
class QelCubeAxis3d;

// The 3D view of a window: owns the scene, the embedded viewer widget, the
// camera manipulator, the lighting program and the text overlays. The scene
// is set up once, when the viewer's OpenGL side first initialises.
class GLViewer : public QWidget {
    Q_OBJECT
public:
    explicit GLViewer(QWidget* parent = nullptr);
    ~GLViewer() override;

    QelOSGWidget* osgWidget() const { return osgWidget_; }
    ViewerManipulator* manipulator() const { return manipulator_; }
    osg::Group* root() const { return root_.get(); }
    osg::Group* axisGroup() const { return axisGroup_.get(); }
    osg::Group* dataGroup() const { return dataGroup_.get(); }
    osg::Group* shapeGroup() const { return shapeGroup_.get(); }
    ShaderADS* lighting() const { return lighting_.get(); }
    bool isInitialised() const { return initialised_; }

    // Installs the camera manipulator when there is none (needs the viewer).
    void installManipulator();

    QColor backgroundColor() const { return background_; }
    void setBackgroundColor(int r, int g, int b, int a);

    // The lighting program is attached while the light is on; with the
    // light off the data shows its plain colours.
    void setLightState(bool on);
    bool lightState() const { return lightOn_; }

    // Adds a screen-facing text (narrow strings are GBK) and returns its id.
    long addTextOverlay(const QelVar& text, const QelVector3d& position, float size,
                        const QelColor& colour);
    // 0, or 11100022 when no overlay has the id.
    long removeTextOverlay(long id);
    long removeAllTextOverlays();
    int textOverlayCount() const { return textOverlays_.count(); }
    const TextOverlayManager& textOverlays() const { return textOverlays_; }

    // Render objects (GLViewerObjects.cpp). Adds return the new id or a
    // status code >= 11000000; the info text follows every change.
    OSGDataManager& registry() const { return *registry_; }
    // replace: the new object takes the place of every render object, but
    // only once it is built and accepted; a refused one changes nothing.
    long addPointCloud(const QelPointCloud& cloud, bool replace = false);
    long addRangeImage(const QelRangeImage& image, bool replace = false);
    // Builds the new object first, then replaces every render object by it.
    long displayRangeImage(const QelRangeImage& image);
    long addTriangleMesh(const QelTriangleMesh& mesh, bool replace = false);
    long addImage(const QelImage& image, bool replace = false);
    long clearAllPointClouds();
    long clearAllRangeImages();
    long clearAllTriangleMeshes();
    long clearRenderObject(long id);
    long clearScene();
    long setElementState(long id, int mode);
    void setElementStateForAll(int mode);
    long setModelMatrix(long id, const QelMatrix4& matrix);
    long setObjectVisible(long id, bool visible);
    long setRenderColor(long id, const QelColorArray& colours);
    long setPointSize(long id, float size);
    long setLineWidth(long id, float width);
    long setPointRenderMode(long id, int mode);
    void setSamplingRatio(int step) { samplingStep_ = step; }
    void setUseHeightColours(bool on);
    int defaultRenderMode() const { return defaultMode_; }
    const QStringList& infoText() const { return infoText_; }

    // Shapes (GLViewerShapes.cpp). Show returns the new id, or 11100004
    // when the description is refused (the id is used up either way).
    long showShape(const Qel3DShape& shape);
    long clearShape(long id);
    long clearAllShapes();
    // mode: 1 lines, 4 surface.
    long setShapeMode(long id, int mode);
    int shapeCount() const;
    const ShapeManager& shapes() const { return *shapes_; }

    // Streamed range images (GLViewerStream.cpp). Initial clears the scene
    // and returns the stream's id; the steps come from the sampling ratio
    // or the automatic table.
    long initialRangeImage(QelRangeImageParameter parameter);
    long appendDataStream(long id, const void* samples, const void* colours, int type,
                          int startLine, int endLine);
    long finishDataStream(long id, QelRangeImage* image);

    // Camera, views, light, clipping and furniture (GLViewerView.cpp).
    void setCamera(const QelVector3d& eye, const QelVector3d& centre, const QelVector3d& up);
    void getCamera(QelVector3d* eye, QelVector3d* centre, QelVector3d* up);
    // 0 top, 1 bottom, 2 front, 3 back, 4 left, 5 right, anything else oblique.
    void moveToView(int view);
    void setProjection(bool orthographic);
    // Moves the rotation centre to the point and divides the distance by
    // factor; false, changing nothing, when the new distance would leave
    // [minDistance, maxDistance].
    bool zoom(const QelVector3d& point, float factor, double minDistance, double maxDistance);
    void zoomFit();
    void setLightParameter(float power, const QelVector3d& direction);
    void setLightCoefficients(float ambient, float diffuse, float specular);
    void setClipPlane(const Qel3DPlane& plane);
    void setTextPen(const QelColor& colour, long size);
    void getTextPen(QelColor* colour, long* size) const;
    void setBoundingBoxVisible(bool visible);
    // The view as a 3-channel 8-bit image: 11501008 without render objects,
    // 11501002 when the picture cannot be taken.
    long screenShot(QelImage* out);

    // The cube axis around the data and its grid (GLViewerAxis.cpp). The
    // axis exists while it is switched on and the data has a positive
    // extent on every axis; flat data simply has none.
    void setAxisVisible(bool visible);
    bool axisVisible() const { return axisOn_; }
    void setGridVisible(bool visible);
    QelCubeAxis3d* cubeAxis() const { return cubeAxis_.get(); }

    // The clip plane (a, b, c, d) when one is set.
    bool clipPlane(osg::Vec4d* plane) const;
    // In pick mode the camera stays still and each button release is
    // reported by sig_ClickPoint.
    void setPickMode(bool on);
    bool pickMode() const { return pickOn_; }

    // Selection by an outline drawn over the view (GLViewerSelect.cpp), in
    // widget coordinates: a free polygon (mode 0) or the rectangle spanned
    // by its first and last point (mode 1). It selects from the render
    // object added last: 11501008 without render objects, 11501009 when the
    // outline encloses nothing; 0 otherwise, also when nothing was selected
    // (the output is then untouched) or the object has no points to select.
    // Points: a cloud's points (with their colours), a range image's valid
    // samples, a mesh's vertices, in the object's own coordinates. 'used'
    // tells whether the outline was applied (then the lasso is spent).
    long selectPoints(const QVector<QPointF>& outline, int mode, bool keepInside,
                      QelPointCloud* out, bool* used);
    // Range images only: a copy of the image with every sample outside the
    // selection made invalid.
    long selectRangeSamples(const QVector<QPointF>& outline, int mode, bool keepInside,
                            QelRangeImage* out, bool* used);

    // The point budget (GLViewerMotion.cpp): while the camera moves (a
    // button held, or the wheel turned in the last 250 ms) a cloud draws at
    // most this many points, an even sample; 0 draws every point. The
    // default comes from QEL3D_POINT_BUDGET or is 600,000. Screenshots,
    // picking and lasso always see every point.
    void setPointBudget(long budget);
    long pointBudget() const { return pointBudget_; }
    bool isMoving() const { return moving_; }
    // The budget for the frame being drawn (0: every point), divided by the
    // view's device pixel ratio.
    unsigned int effectiveBudget() const;

    // Renders one frame and returns it (initialising the viewer first).
    QImage grabFrame();
    // Schedules a repaint, which runs the next frame.
    void requestRedraw();
    // After a change to the render objects: the bounding box follows them.
    void dataChanged();

public slots:
    // The camera starts or stops moving under the user's hand.
    void setMoving(bool moving);
    // Recolours every height-coloured render object against [min, max].
    void applyHeightRange(double min, double max);

signals:
    // A button release in pick mode, in window coordinates (y up, as the
    // viewer hands events on); delivered after the frame that saw it.
    void sig_ClickPoint(float x, float y);
    // The height range of a newly added render object.
    void sig_heightRange(double min, double max);
    // The inverse of the background colour, for texts drawn over the view.
    void sig_labelColour(const QColor& colour);
    // The status lines for the window: the first for log level 0, the
    // second (when there is one) for level 1.
    void sig_infoText(const QStringList& lines);

public slots:
    void initializeScene();

protected:
    // Number of render objects in the view; the registry overrides it.
    int renderObjectCount() const;

    bool manipulatorPending_ = false;

private:
    void applyLightState();
    // Creates the embedded viewer and the manipulator when they are missing,
    // so camera calls work before the first paint.
    void ensureViewer();
    ViewerManipulator* ensureManipulator();
    // Whether a widget (the colour bar, the lasso's layer) lies over the
    // frame, so a screenshot must paint widgets rather than read the frame.
    bool overlaysShown() const;
    void rebuildBoundingBox();
    void setUpPointBudget();
    void watchMotion(ViewerManipulator* manipulator);
    // Builds, re-sizes or drops the cube axis for the data's bounds.
    void rebuildCubeAxis();
    void dropCubeAxis();
    // What an outline selected: the object, its points in its own
    // coordinates with each one's index in the object (a range image's
    // pixel index), and which of them were chosen.
    struct Selection;
    // With onlyKind set, other kinds of object are not selected from.
    long selectByOutline(const QVector<QPointF>& outline, int mode, bool keepInside,
                         Selection* selection, int onlyKind = -1);
    // The inverse of the background, with its alpha.
    QColor labelColour() const;
    static osg::Vec4 toVec4(const QColor& colour);
    void repairProjection();
    void fitIfOutOfView(const osg::BoundingSphere& bound);
    // Takes a newly built object: refuses it when unusable or too large,
    // otherwise adds it (after clearing when replace is set). The second
    // form is given the box the object spans, already found to fit.
    long adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info);
    long adopt(std::unique_ptr<OSGData> object, bool replace, const QStringList& info,
               const osg::BoundingBox& box);
    // A point cloud the next display can build into instead of allocating.
    OSGPointCloud* reusablePointCloud(int points) const;
    void setInfoText(const QStringList& lines);
    // Under the scene lock, runs change(object) on the render object with
    // that id (11100022 when there is none) and redraws when it returns 0.
    template <typename Change>
    long changeObject(long id, Change change);
    OSGDataStream* findStream(long id) const;
    // The sampling ratio set by the host, or the automatic step for an image
    // of that size.
    int samplingStepFor(std::uint64_t width, std::uint64_t height) const;
    void requestStreamRedraw();
    // The same for the shape with that id.
    long changeShape(long id, const std::function<void(Shape&)>& change);
    // Infinite lines and planes follow the data's bounds.
    void fitShapesToScene();
    osg::BoundingBox dataBounds() const;
    static void fitToBounds(Shape& shape, const osg::BoundingBox& box);

    QelOSGWidget* osgWidget_ = nullptr;
    ViewerManipulator* manipulator_ = nullptr;  // owned by the viewer once installed
    bool initialised_ = false;
    osg::ref_ptr<osg::Group> root_;
    osg::ref_ptr<osg::Group> axisGroup_;
    osg::ref_ptr<osg::Group> dataGroup_;
    osg::ref_ptr<osg::Group> shapeGroup_;
    std::unique_ptr<ShaderADS> lighting_;
    QColor background_{Qt::black};
    bool lightOn_ = true;
    TextPrototype textPrototype_;
    TextOverlayManager textOverlays_;
    std::unique_ptr<OSGDataManager> registry_;
    std::unique_ptr<ShapeManager> shapes_;
    QElapsedTimer streamRedrawClock_;
    bool streamRedrawPending_ = false;
    QStringList infoText_;
    int defaultMode_ = 4;
    int samplingStep_ = 0;
    bool useHeightColours_ = true;
    bool bboxVisible_ = false;
    bool axisOn_ = false;
    bool gridOn_ = true;
    std::unique_ptr<QelCubeAxis3d> cubeAxis_;
    bool clipOn_ = false;
    bool pickOn_ = false;
    long pointBudget_ = 0;
    bool moving_ = false;
    // Set while a frame for a screenshot is drawn: every point counts.
    bool fullFrame_ = false;
    QTimer* settleTimer_ = nullptr;
    osg::Vec4 clipPlane_;
    osg::ref_ptr<osg::Group> bboxGroup_;
    QColor textPenColour_{Qt::white};
    long textPenSize_ = 12;
};
