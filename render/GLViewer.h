#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QStringList>
#include <QWidget>
#include <list>
#include <memory>
#include <osg/Group>
#include <osg/ref_ptr>

namespace osgGA {
class GUIEventHandler;
}
namespace osgViewer {
class Viewer;
}
class CameraController;
class ClipPlane;
class EyeDomeLighting;
class LightController;
class MeasurementLabels;
class PointBudget;
class ProgressiveFrames;
class QelOSGWidget;
class SceneContent;
class ScreenCapture;
class ViewDecorations;
class ViewerManipulator;

// The 3D view of a window: the embedded viewer widget, the root of the
// scene and the wiring between what the view shows (its content) and how
// it shows it (camera, light, clip plane, decorations, capture, point
// budget, eye-dome lighting). The scene is set up once, when the viewer's OpenGL side first
// initialises.
class GLViewer : public QWidget {
    Q_OBJECT
public:
    explicit GLViewer(QWidget* parent = nullptr);
    ~GLViewer() override;

    QelOSGWidget* osgWidget() const { return osgWidget_; }
    // The embedded viewer, created by a first paint when there is none yet.
    osgViewer::Viewer* viewer();
    ViewerManipulator* manipulator() const { return manipulator_; }
    osg::Group* root() const { return root_.get(); }
    bool isInitialised() const { return initialised_; }

    SceneContent& content() const { return *content_; }
    CameraController& camera() const { return *camera_; }
    LightController& light() const { return *light_; }
    ClipPlane& clip() const { return *clip_; }
    ViewDecorations& decorations() const { return *decorations_; }
    ScreenCapture& capture() const { return *capture_; }
    PointBudget& budget() const { return *budget_; }
    EyeDomeLighting& eyeDome() const { return *eyeDome_; }
    ProgressiveFrames& progressive() const { return *progressive_; }
    // Frames that cost what changed (the last frame shown again under the
    // widgets over the view, progressive still pictures, streams and
    // overlays over the kept picture), or every frame whole when off. On
    // unless the environment sets QEL3D_INCREMENTAL=0.
    void setIncremental(bool on);
    // Where the measurement labels went in the last frame (null before one).
    const MeasurementLabels* measurementLabels() const { return measurementLabels_.get(); }

    // Installs the camera manipulator when there is none (needs the viewer).
    void installManipulator();
    // The manipulator, creating the viewer and the manipulator first when
    // they are missing, so camera calls work before the first paint.
    ViewerManipulator* ensureManipulator();
    // Puts an event handler ahead of the view's own (so a tool that takes a
    // click keeps it from the camera); handlers wait for the viewer.
    void addEventHandler(osgGA::GUIEventHandler* handler);

    // Renders one frame and returns it (initialising the viewer first).
    QImage grabFrame();
    // Schedules a repaint, which runs the next frame.
    void requestRedraw();
    // Schedules a repaint after a change to what is drawn over the data only
    // (texts, measurements, a tool's marks): the data need not be drawn again.
    void requestOverlayRedraw();
    // After a change to the render objects: what is fitted to them follows.
    void dataChanged();

signals:
    // The height range of a newly added render object.
    void sig_heightRange(double min, double max);
    // The inverse of the background colour, for texts drawn over the view.
    void sig_labelColour(const QColor& colour);
    // The status lines for the window: the first for log level 0, the
    // second (when there is one) for level 1.
    void sig_infoText(const QStringList& lines);

public slots:
    void initializeScene();

private:
    // Connects the content's signals to what the view does about them.
    void followContent();
    // Streams redraw at most every 100 ms.
    void requestStreamRedraw();
    // A stream's new bands: what follows the data follows, and the next
    // frame draws them.
    void streamGrew();
    // The box, the axis and the shapes that fit the scene follow the data.
    void followDataBounds();
    void installEventHandlers();

    QelOSGWidget* osgWidget_ = nullptr;
    ViewerManipulator* manipulator_ = nullptr;  // owned by the viewer once installed
    bool initialised_ = false;
    osg::ref_ptr<osg::Group> root_;
    std::unique_ptr<SceneContent> content_;
    std::unique_ptr<CameraController> camera_;
    std::unique_ptr<LightController> light_;
    std::unique_ptr<ClipPlane> clip_;
    std::unique_ptr<ViewDecorations> decorations_;
    std::unique_ptr<ScreenCapture> capture_;
    osg::ref_ptr<PointBudget> budget_;
    std::unique_ptr<EyeDomeLighting> eyeDome_;
    std::unique_ptr<ProgressiveFrames> progressive_;
    osg::ref_ptr<MeasurementLabels> measurementLabels_;
    std::list<osg::ref_ptr<osgGA::GUIEventHandler>> handlers_;
    QElapsedTimer streamRedrawClock_;
    bool streamRedrawPending_ = false;
};
