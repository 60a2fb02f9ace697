#include "GLViewer.h"

#include <QVBoxLayout>
#include <osg/DisplaySettings>
#include <osg/Notify>
#include <osgViewer/Viewer>

#include "GbkText.h"
#include "MRenderer.h"
#include "OSGDataManager.h"
#include "ObjectIdCounter.h"
#include "QelColor.h"
#include "QelCubeAxis3d.h"
#include "QelOSGWidget.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "SceneLockGuard.h"
#include "ShaderADS.h"
#include "ShapeManager.h"
#include "StatusCodes.h"
#include "ViewerManipulator.h"

GLViewer::GLViewer(QWidget* parent)
    : QWidget(parent),
      root_(new osg::Group),
      axisGroup_(new osg::Group),
      dataGroup_(new osg::Group),
      shapeGroup_(new osg::Group),
      registry_(std::make_unique<OSGDataManager>()),
      shapes_(std::make_unique<ShapeManager>(shapeGroup_.get())) {
    dataGroup_->addChild(registry_->group());
    osgWidget_ = new QelOSGWidget(this);
    osgWidget_->setFocusPolicy(Qt::StrongFocus);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(osgWidget_);
    connect(osgWidget_, &MOpenglWidget::initialized, this, &GLViewer::initializeScene);
    bboxGroup_ = new osg::Group;
    axisGroup_->addChild(bboxGroup_.get());
    root_->setName("root");
    dataGroup_->setName("data");
    shapeGroup_->setName("shapes");
    textOverlays_.group()->setName("text");
    setUpPointBudget();
}

int GLViewer::renderObjectCount() const {
    return registry_->count();
}

GLViewer::~GLViewer() {
    // The axis holds the viewer's camera; the viewer holds the manipulator,
    // and the widget's teardown releases both.
    cubeAxis_.reset();
    delete osgWidget_;
    osgWidget_ = nullptr;
}

void GLViewer::initializeScene() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer) return;
    viewer->setLightingMode(osg::View::NO_LIGHT);
    viewer->setSceneData(root_.get());
    root_->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);

    if (!initialised_ && root_->getNumChildren() == 0) {
        root_->addChild(axisGroup_.get());
        root_->addChild(dataGroup_.get());
        root_->addChild(shapeGroup_.get());
        root_->addChild(textOverlays_.group());
        lighting_ = std::make_unique<ShaderADS>(dataGroup_.get());
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

    if ((renderObjectCount() > 0 || manipulatorPending_) && !manipulator_) installManipulator();
    osg::DisplaySettings::instance()->setNumMultiSamples(4);
    osg::setNotifyLevel(osg::ALWAYS);
    camera->setCullingMode(camera->getCullingMode() & ~osg::CullSettings::SMALL_FEATURE_CULLING);
    camera->setClearColor(osg::Vec4(background_.red() / 255.0f, background_.green() / 255.0f,
                                    background_.blue() / 255.0f, background_.alpha() / 255.0f));
    initialised_ = true;
    if (axisOn_ && !manipulator_) {
        installManipulator();
        rebuildCubeAxis();
    }
    applyLightState();
    textPrototype_.text();
}

void GLViewer::installManipulator() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer || manipulator_) return;
    manipulator_ = new ViewerManipulator(osgWidget_, root_.get());
    manipulator_->setPickMode(pickOn_ ? 1 : 0);
    // Queued: the release arrives inside a frame, which holds the scene lock.
    connect(manipulator_, &ViewerManipulator::sig_ClickPoint, this, &GLViewer::sig_ClickPoint,
            Qt::QueuedConnection);
    watchMotion(manipulator_);
    SceneLockGuard lock(osgWidget_);
    viewer->setCameraManipulator(manipulator_);  // starts from a view of the whole scene
}

void GLViewer::setPickMode(bool on) {
    pickOn_ = on;
    if (ViewerManipulator* m = ensureManipulator()) m->setPickMode(on ? 1 : 0);
}

void GLViewer::setBackgroundColor(int r, int g, int b, int a) {
    background_ = QColor(r, g, b, a);
    if (osgViewer::Viewer* viewer = osgWidget_->viewer()) {
        SceneLockGuard lock(osgWidget_);
        viewer->getCamera()->setClearColor(
            osg::Vec4(r / 255.0f, g / 255.0f, b / 255.0f, a / 255.0f));
        if (cubeAxis_) cubeAxis_->setLabelColor(toVec4(labelColour()));
    }
    emit sig_labelColour(QColor(255 - r, 255 - g, 255 - b, 255));
    dataChanged();  // the bounding box is drawn in the inverted background colour
}

void GLViewer::setLightState(bool on) {
    lightOn_ = on;
    if (initialised_) applyLightState();
    requestRedraw();
}

void GLViewer::applyLightState() {
    if (!lighting_) return;
    SceneLockGuard lock(osgWidget_);
    lighting_->detach();
    if (lightOn_) lighting_->attach();
}

long GLViewer::addTextOverlay(const QelVar& text, const QelVector3d& position, float size,
                              const QelColor& colour) {
    long id = 0;
    {
        SceneLockGuard lock(osgWidget_);
        id = ObjectIdCounter::take();
        std::wstring content;
        if (text.ValType() == QEL_VAR_STRING)
            content = GbkText::toWide(text.S());
        else if (text.ValType() == QEL_VAR_WSTRING)
            content = text.WS();
        const osg::Vec4 rgba(colour.r / 255.0f, colour.g / 255.0f, colour.b / 255.0f,
                             colour.a / 255.0f);
        textOverlays_.add(std::make_unique<TextOverlay>(
            *textPrototype_.text(), static_cast<unsigned int>(id), content,
            osg::Vec3(position.x, position.y, position.z), size, rgba));
    }
    if (initialised_ && !manipulator_) installManipulator();
    requestRedraw();
    return id;
}

long GLViewer::removeTextOverlay(long id) {
    if (id < 0) return QelStatus::kObjectNotFound;
    {
        SceneLockGuard lock(osgWidget_);
        if (!textOverlays_.remove(static_cast<unsigned int>(id))) return QelStatus::kObjectNotFound;
    }
    requestRedraw();
    return 0;
}

long GLViewer::removeAllTextOverlays() {
    {
        SceneLockGuard lock(osgWidget_);
        textOverlays_.clear();
    }
    requestRedraw();
    return 0;
}

QImage GLViewer::grabFrame() {
    if (!osgWidget_->renderer()) osgWidget_->grab();  // the first paint creates the viewer
    QImage image;
    fullFrame_ = true;
    osgWidget_->grabImage(image);
    fullFrame_ = false;
    return image;
}

void GLViewer::dataChanged() {
    if (bboxVisible_) rebuildBoundingBox();
    if (axisOn_) rebuildCubeAxis();
    fitShapesToScene();
    requestRedraw();
}

void GLViewer::requestRedraw() {
    osgWidget_->requestRedraw();
    osgWidget_->update();
}
