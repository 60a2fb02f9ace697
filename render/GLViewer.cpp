#include "GLViewer.h"

#include <QTimer>
#include <QVBoxLayout>
#include <osg/DisplaySettings>
#include <osg/Notify>
#include <osgViewer/Viewer>

#include "CameraController.h"
#include "ClipPlane.h"
#include "EyeDomeLighting.h"
#include "LightController.h"
#include "MeasurementLabels.h"
#include "PointBudget.h"
#include "ProgressiveFrames.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ScreenCapture.h"
#include "ViewDecorations.h"
#include "ViewerManipulator.h"

GLViewer::GLViewer(QWidget* parent)
    : QWidget(parent), root_(new osg::Group), content_(std::make_unique<SceneContent>()) {
    osgWidget_ = new QelOSGWidget(this);
    content_->setLock(osgWidget_);
    osgWidget_->setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(osgWidget_);
    connect(osgWidget_, &MOpenglWidget::initialized, this, &GLViewer::initializeScene);
    root_->setName("root");
    camera_ = std::make_unique<CameraController>(*this);
    light_ = std::make_unique<LightController>(*this);
    clip_ = std::make_unique<ClipPlane>(*this);
    decorations_ = std::make_unique<ViewDecorations>(*this);
    capture_ = std::make_unique<ScreenCapture>(*this);
    progressive_ = std::make_unique<ProgressiveFrames>(*this);  // the budget hands frames to it
    budget_ = new PointBudget(*this);
    handlers_.push_back(budget_);
    eyeDome_ = std::make_unique<EyeDomeLighting>(*this);
    followContent();
}

void GLViewer::followContent() {
    SceneContent* content = content_.get();
    connect(content, &SceneContent::sig_dataChanged, this, &GLViewer::dataChanged);
    connect(content, &SceneContent::sig_redraw, this, &GLViewer::requestRedraw);
    connect(content, &SceneContent::sig_overlayChanged, this, &GLViewer::requestOverlayRedraw);
    connect(content, &SceneContent::sig_streamGrew, this, &GLViewer::requestStreamRedraw);
    connect(content, &SceneContent::sig_heightRange, this, &GLViewer::sig_heightRange);
    connect(content, &SceneContent::sig_infoText, this, &GLViewer::sig_infoText);
    connect(content, &SceneContent::sig_itemAdded, this, [this](const osg::BoundingSphere& bound) {
        if (initialised_ && !manipulator_)
            installManipulator();
        else if (bound.valid() && manipulator_)
            camera_->fitIfOutOfView(bound);
    });
}

GLViewer::~GLViewer() {
    // The axis holds the viewer's camera; the viewer holds the manipulator
    // and the event handlers, and the widget's teardown releases them.
    // The eye-dome pass leaves the scene while its context still exists,
    // which then frees its textures.
    eyeDome_.reset();
    progressive_.reset();
    decorations_.reset();
    delete osgWidget_;
    osgWidget_ = nullptr;
}

osgViewer::Viewer* GLViewer::viewer() {
    if (!osgWidget_->renderer()) osgWidget_->grab();  // the first paint creates the viewer
    return osgWidget_->viewer();
}

void GLViewer::initializeScene() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer) return;
    viewer->setLightingMode(osg::View::NO_LIGHT);
    viewer->setSceneData(root_.get());
    root_->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);

    if (!initialised_ && root_->getNumChildren() == 0) {
        root_->addChild(decorations_->group());
        root_->addChild(content_->dataGroup());
        root_->addChild(content_->shapeGroup());
        root_->addChild(content_->textGroup());
        root_->addChild(content_->measureGroup());
        measurementLabels_ = new MeasurementLabels(content_->measurements(), *decorations_, *clip_);
        content_->measureGroup()->addCullCallback(measurementLabels_.get());
        content_->measureGroup()->addChild(measurementLabels_->canvas());
        light_->attachTo(content_->dataGroup());
        progressive_->setEnabled(osgWidget_->isIncremental());
        installEventHandlers();
    }

    // Keep the picture undistorted for the window's shape.
    osg::Camera* camera = viewer->getCamera();
    double fovy = 0, aspect = 1, zNear = 1, zFar = 10000;
    const osg::GraphicsContext* gc = camera->getGraphicsContext();
    if (gc && gc->getTraits() && gc->getTraits()->height > 0 &&
        camera->getProjectionMatrixAsPerspective(fovy, aspect, zNear, zFar) && aspect > 0) {
        const double ratio = (double(gc->getTraits()->width) / gc->getTraits()->height) / aspect;
        if (ratio != 1.0) {
            osg::Matrixd projection = camera->getProjectionMatrix();
            projection.postMultScale(osg::Vec3d(1.0 / ratio, 1.0, 1.0));
            camera->setProjectionMatrix(projection);
        }
    }

    if (content_->renderObjectCount() > 0 && !manipulator_) installManipulator();
    // Four samples a pixel where the surface offers them.
    osg::DisplaySettings::instance()->setNumMultiSamples(4);
    osg::setNotifyLevel(osg::ALWAYS);
    camera->setCullingMode(camera->getCullingMode() & ~osg::CullSettings::SMALL_FEATURE_CULLING);
    initialised_ = true;
    decorations_->viewerReady();
    light_->apply();
    content_->loadFont();
}

void GLViewer::installManipulator() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer || manipulator_) return;
    manipulator_ = new ViewerManipulator(osgWidget_, root_.get());
    SceneLockGuard lock(osgWidget_);
    viewer->setCameraManipulator(manipulator_);  // starts from a view of the whole scene
}

ViewerManipulator* GLViewer::ensureManipulator() {
    viewer();
    if (!manipulator_) installManipulator();
    return manipulator_;
}

void GLViewer::addEventHandler(osgGA::GUIEventHandler* handler) {
    handlers_.push_front(handler);
    if (initialised_) installEventHandlers();
}

void GLViewer::installEventHandlers() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer) return;
    SceneLockGuard lock(osgWidget_);
    viewer->getEventHandlers().clear();
    for (const auto& handler : handlers_)
        viewer->addEventHandler(handler.get());
}

QImage GLViewer::grabFrame() {
    return capture_->grabFrame();
}

// A frame draws the whole scan so far, so a scanner's bands would each pay
// for one: bands ask for at most one redraw every 100 ms, and the last band
// of a burst is drawn when the interval has passed.
void GLViewer::requestStreamRedraw() {
    constexpr int kIntervalMs = 100;
    if (!streamRedrawClock_.isValid() || streamRedrawClock_.elapsed() >= kIntervalMs) {
        streamRedrawClock_.start();
        streamGrew();
        return;
    }
    if (streamRedrawPending_) return;
    streamRedrawPending_ = true;
    QTimer::singleShot(kIntervalMs - int(streamRedrawClock_.elapsed()), this, [this] {
        streamRedrawPending_ = false;
        streamRedrawClock_.start();
        streamGrew();
    });
}

void GLViewer::streamGrew() {
    followDataBounds();
    // Only the new bands, when the kept picture allows.
    progressive_->streamGrew();
    osgWidget_->requestRedraw();
    osgWidget_->requestFrame();
}

void GLViewer::followDataBounds() {
    decorations_->followData();
    content_->fitShapesToScene();
}

void GLViewer::dataChanged() {
    followDataBounds();
    requestRedraw();
    progressive_->start();
}

void GLViewer::requestOverlayRedraw() {
    progressive_->overlaysChanged();
    osgWidget_->requestRedraw();
    osgWidget_->requestFrame();
}

void GLViewer::requestRedraw() {
    progressive_->stop();
    osgWidget_->requestRedraw();
    osgWidget_->requestFrame();
}

void GLViewer::setIncremental(bool on) {
    osgWidget_->setIncremental(on);
    if (initialised_) progressive_->setEnabled(on);
    requestRedraw();
}
