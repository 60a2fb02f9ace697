#include "MOpenglWidget.h"

#include <QDebug>
#include <QKeyEvent>
#include <QOpenGLContext>
#include <QPainter>
#include <osg/ContextData>
#include <osg/GLObjects>
#include <stdexcept>

#include "ExamplePaintSurface.h"
#include "MRenderer.h"
#include "QelLog.h"

namespace {

// QEL3D_INCREMENTAL=0 draws a frame for every paint.
bool incrementalByDefault() {
    const QByteArray value = qgetenv("QEL3D_INCREMENTAL");
    return value.isEmpty() || value != "0";
}

}  // namespace

MOpenglWidget::MOpenglWidget(int flag, QWidget* parent)
    : QWidget(parent), flag_(flag), incremental_(incrementalByDefault()) {
    surface_ = new ExamplePaintSurface(nullptr, QSize(1, 1));
    connect(surface_, &ExamplePaintSurface::sig_initializeGL, this, &MOpenglWidget::initializeGL);
    connect(surface_, &ExamplePaintSurface::sig_resizeGL, this, &MOpenglWidget::resizeGL);
    connect(surface_, &ExamplePaintSurface::sig_paintGL, this, &MOpenglWidget::paintGL);
}

MOpenglWidget::MOpenglWidget(QWidget* parent) : MOpenglWidget(0, parent) {}

MOpenglWidget::~MOpenglWidget() {
    teardownRenderer();
    delete surface_;
}

// The scene graph library frees GL objects when its window closes; doing it
// in this order, with the context current, is what keeps its exit clean.
void MOpenglWidget::teardownRenderer() {
    if (!renderer_) return;
    try {
        surface_->makeCurrent();
    } catch (const std::runtime_error&) {
        // No context: nothing GL-side can be released.
    }
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> window = renderer_->graphicsWindow();
    // Release the scene's GL objects (vertex array states included) now,
    // while the context is current; nodes that outlive the viewer would
    // otherwise leave them for the library's exit-time clean-up, which
    // frees them twice.
    if (osg::Node* scene = renderer_->getSceneData(); scene && window)
        scene->releaseGLObjects(window->getState());
    renderer_->setSceneData(nullptr);
    const unsigned int contextId = window ? window->getState()->getContextID() : 0;
    if (window) window->close(true);
    MRenderer::recycle(renderer_);
    renderer_ = nullptr;
    window = nullptr;
    if (osg::getContextData(contextId)) {
        osg::getContextData(contextId)->deleteAllGLObjects();
        osg::ContextData::decrementContextIDUsageCount(contextId);
    }
    surface_->doneCurrent();
}

osgViewer::Viewer* MOpenglWidget::viewer() const {
    return renderer_;
}

float MOpenglWidget::pixelRatio() const {
    // The ratio of the screen the widget's window is on; it changes when
    // the window moves to another screen.
    const qreal ratio = devicePixelRatioF();
    return ratio > 0 ? static_cast<float>(ratio) : 1.0f;
}

QSize MOpenglWidget::deviceSize() const {
    // Rounded as the toolkit rounds a widget's backing store and grab().
    return size() * static_cast<qreal>(pixelRatio());
}

void MOpenglWidget::initializeGL() {
    emit newRender();
    emit initialized();
}

void MOpenglWidget::resizeGL(int width, int height) {
    if (renderer_) renderer_->resize(width, height, pixelRatio());
}

void MOpenglWidget::paintGL() {
    if (!renderer_) return;
    renderer_->sceneLock().readLock();
    if (firstFrame_) {
        firstFrame_ = false;
        renderer_->getCamera()->getGraphicsContext()->setDefaultFboId(
            surface_->defaultFramebufferObject());
    }
    inFrame_ = true;
    renderer_->frame();
    inFrame_ = false;
    renderer_->sceneLock().readUnlock();
}

bool MOpenglWidget::renderFrame() {
    try {
        const QSize device = deviceSize();
        if (surface_->size() != device && !device.isEmpty())
            surface_->resize(device);
        else if (renderer_ && renderer_->pixelRatio() != pixelRatio())
            resizeGL(device.width(), device.height());  // same pixels, another ratio
        surface_->render();
        return true;
    } catch (const std::runtime_error& error) {
        // Never let a GL failure unwind through the host's event loop.
        qCWarning(qelLog) << error.what();
        return false;
    }
}

bool MOpenglWidget::overlaysCover(const QRegion& region) const {
    const QWidget* owner = parentWidget();
    if (!owner) return false;
    QRegion covered;
    for (const QObject* child : owner->children()) {
        const auto* w = qobject_cast<const QWidget*>(child);
        if (w && w != this && !w->isWindow() && w->isVisible())
            covered += QRegion(w->geometry()).translated(-pos());
    }
    return (region - covered).isEmpty();
}

void MOpenglWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    // Only the widgets over the view changed: the scene's last frame stands.
    const bool reuse = incremental_ && !frameWanted_ && renderer_ && !lastFrame_.isNull() &&
                       lastFrame_.size() == deviceSize() &&
                       lastFrame_.devicePixelRatio() == pixelRatio() &&
                       overlaysCover(event->region());
    if (!reuse) {
        frameWanted_ = false;
        if (!renderFrame()) {
            painter.fillRect(rect(), Qt::black);
            return;
        }
        lastFrame_ = surface_->grabFramebuffer().convertToFormat(QImage::Format_RGB32);
        // The frame has device pixels: painted one to one, not scaled.
        lastFrame_.setDevicePixelRatio(pixelRatio());
        ++paintedFrames_;
    }
    painter.drawImage(QRectF(rect()), lastFrame_, QRectF(lastFrame_.rect()));
}

void MOpenglWidget::resizeEvent(QResizeEvent*) {
    try {
        if (!deviceSize().isEmpty()) surface_->resize(deviceSize());
    } catch (const std::runtime_error& error) {
        qCWarning(qelLog) << error.what();
    }
}

void MOpenglWidget::grabImage(QImage& out) {
    if (!renderer_ || !renderFrame()) return;
    out = surface_->grabFramebuffer();
}

bool MOpenglWidget::grabPixels(std::vector<unsigned char>& rgba, QSize& size) {
    if (!renderer_ || !renderFrame()) return false;
    size = surface_->size();
    rgba.resize(std::size_t(size.width()) * std::size_t(size.height()) * 4);
    surface_->readPixels(rgba.data());
    return !size.isEmpty();
}

void MOpenglWidget::grabImage(QImage& out, double width, double height) {
    if (!renderer_) return;
    const QSize old = surface_->size();
    try {
        surface_->resize(QSize(static_cast<int>(width), static_cast<int>(height)));
        surface_->render();
        out = surface_->grabFramebuffer();
        surface_->resize(old);
        surface_->render();
    } catch (const std::runtime_error& error) {
        qCWarning(qelLog) << error.what();
    }
}

void MOpenglWidget::keyPressEvent(QKeyEvent* event) {
    if (renderer_) renderer_->keyPressEvent(event);
}

void MOpenglWidget::keyReleaseEvent(QKeyEvent* event) {
    if (renderer_) renderer_->keyReleaseEvent(event);
}

void MOpenglWidget::mousePressEvent(QMouseEvent* event) {
    if (!renderer_) return;
    renderer_->mousePressEvent(event);
    renderer_->updateParent();
    event->ignore();
}

void MOpenglWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!renderer_) return;
    renderer_->mouseReleaseEvent(event);
    renderer_->updateParent();
}

void MOpenglWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!renderer_) return;
    renderer_->mouseDoubleClickEvent(event);
    renderer_->updateParent();
    event->ignore();
}

void MOpenglWidget::mouseMoveEvent(QMouseEvent* event) {
    if (!renderer_) return;
    renderer_->mouseMoveEvent(event);
    renderer_->updateParent();
}

void MOpenglWidget::wheelEvent(QWheelEvent* event) {
    if (!renderer_) return;
    renderer_->wheelEvent(event);
    renderer_->updateParent();
}
