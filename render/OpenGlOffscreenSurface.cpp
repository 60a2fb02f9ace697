#include "OpenGlOffscreenSurface.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLFunctions_3_0>
#include <QOpenGLPaintDevice>
#include <stdexcept>

#include "GraphicsDriver.h"
#include "QelLog.h"

OpenGlOffscreenSurface::OpenGlOffscreenSurface(QScreen* screen, const QSize& size)
    : QOffscreenSurface(screen), size_(size) {
    setFormat(surfaceFormat());
    create();
    initializeInternal();
}

OpenGlOffscreenSurface::~OpenGlOffscreenSurface() {
    if (context_) {
        context_->makeCurrent(this);
        deleteFbos();
        delete paintDevice_;
        paintDevice_ = nullptr;
        context_->doneCurrent();
        delete context_;
        context_ = nullptr;
    }
    destroy();
}

QSurfaceFormat OpenGlOffscreenSurface::surfaceFormat() {
    // The scene graph uses fixed-function state, which a core profile lacks.
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setDepthBufferSize(std::max(24, format.depthBufferSize()));
    format.setStencilBufferSize(std::max(8, format.stencilBufferSize()));
    format.setSamples(0);
    return format;
}

void OpenGlOffscreenSurface::initializeInternal() {
    if (initialized_.exchange(true)) return;
    context_ = new QOpenGLContext();
    context_->setFormat(format());
    if (!context_->create()) {
        initialized_ = false;
        delete context_;
        context_ = nullptr;
        throw std::runtime_error(
            "OpenGlOffscreenSurface::initializeInternal() - Failed to create OpenGL context!");
    }
    context_->makeCurrent(this);
    functions_ = context_->functions();
    functions_->initializeOpenGLFunctions();
    functions30_ = context_->versionFunctions<QOpenGLFunctions_3_0>();
    if (functions30_) functions30_->initializeOpenGLFunctions();
    const GLubyte* renderer = functions_->glGetString(GL_RENDERER);
    GraphicsDriver::noteRenderer(renderer ? reinterpret_cast<const char*>(renderer) : "");
    recreateFbo();
}

void OpenGlOffscreenSurface::deleteFbos() {
    if (fbo_) fbo_->release();
    delete fbo_;
    fbo_ = nullptr;
    if (resolvedFbo_) resolvedFbo_->release();
    delete resolvedFbo_;
    resolvedFbo_ = nullptr;
}

void OpenGlOffscreenSurface::recreateFbo() {
    if (!context_ || (fbo_ && fbo_->size() == size_)) return;
    deleteFbos();
    QOpenGLFramebufferObjectFormat fboFormat;
    fboFormat.setAttachment(QOpenGLFramebufferObject::CombinedDepthStencil);
    fboFormat.setSamples(0);
    fboFormat.setInternalTextureFormat(GL_RGBA);
    fbo_ = new QOpenGLFramebufferObject(size_, fboFormat);
    if (!fbo_->isValid())
        throw std::runtime_error(
            "OpenGlOffscreenSurface::recreateFbo() - Failed to create background FBO!");
    fbo_->bind();
    functions_->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    fbo_->release();
    if (format().samples() >= 1) {
        QOpenGLFramebufferObjectFormat resolveFormat;
        resolveFormat.setInternalTextureFormat(GL_RGBA);
        resolvedFbo_ = new QOpenGLFramebufferObject(size_, resolveFormat);
        if (!resolvedFbo_->isValid())
            throw std::runtime_error(
                "OpenGlOffscreenSurface::recreateFbo() - Failed to create resolve FBO!");
        resolvedFbo_->bind();
        functions_->glClear(GL_COLOR_BUFFER_BIT);
        resolvedFbo_->release();
    }
    if (!paintDevice_) paintDevice_ = new QOpenGLPaintDevice();
    paintDevice_->setSize(size_);
}

void OpenGlOffscreenSurface::makeCurrentLocked() {
    if (!context_ || !fbo_)
        throw std::runtime_error(
            "OpenGlOffscreenSurface::makeCurrent() - Window not yet properly initialized!");
    context_->makeCurrent(this);
}

void OpenGlOffscreenSurface::makeCurrent() {
    makeCurrentLocked();
}

void OpenGlOffscreenSurface::doneCurrent() {
    if (context_) context_->doneCurrent();
}

QSize OpenGlOffscreenSurface::size() const {
    return size_;
}

unsigned int OpenGlOffscreenSurface::defaultFramebufferObject() const {
    return fbo_ ? fbo_->handle() : 0;
}

void OpenGlOffscreenSurface::resize(const QSize& size) {
    {
        std::lock_guard<std::mutex> lock(mutex_);
        makeCurrentLocked();
        size_ = size;
        recreateFbo();
    }
    resizeGL(size.width(), size.height());
    emit resized();
}

void OpenGlOffscreenSurface::render() {
    std::lock_guard<std::mutex> lock(mutex_);
    makeCurrentLocked();
    fbo_->bind();
    if (!initializeGLDone_) {
        initializeGL();
        initializeGLDone_ = true;
    }
    paintGL();
    fbo_->bind();  // the frame may have bound other framebuffers
    functions_->glFlush();
    updatePending_ = false;
}

QOpenGLFramebufferObject* OpenGlOffscreenSurface::bindReadSource() {
    QOpenGLFramebufferObject* source = fbo_;
    if (resolvedFbo_ && functions30_) {
        QOpenGLFramebufferObject::blitFramebuffer(resolvedFbo_, fbo_);
        if (functions_->glGetError() != GL_NO_ERROR)
            qCDebug(qelLog) << "OpenGlOffscreenSurface::bindReadSource() - OpenGL error";
        source = resolvedFbo_;
    }
    source->bind();
    if (functions30_) functions30_->glReadBuffer(GL_COLOR_ATTACHMENT0);
    return source;
}

void OpenGlOffscreenSurface::readPixels(unsigned char* rgba) {
    std::lock_guard<std::mutex> lock(mutex_);
    makeCurrentLocked();
    bindReadSource();
    functions_->glPixelStorei(GL_PACK_ALIGNMENT, 4);
    functions_->glReadPixels(0, 0, size_.width(), size_.height(), GL_RGBA, GL_UNSIGNED_BYTE, rgba);
    fbo_->bind();
}

QImage OpenGlOffscreenSurface::grabFramebuffer() {
    std::lock_guard<std::mutex> lock(mutex_);
    makeCurrentLocked();
    QOpenGLFramebufferObject* source = bindReadSource();
    const GLenum internal = source->format().internalTextureFormat();
    QImage image;
    if (internal == GL_RGBA || internal == GL_RGBA8) {
        image = QImage(size_, QImage::Format_RGBA8888);
        functions_->glReadPixels(0, 0, size_.width(), size_.height(), GL_RGBA, GL_UNSIGNED_BYTE,
                                 image.bits());
    } else if (internal == GL_BGRA) {
        image = QImage(size_, QImage::Format_ARGB32);
        functions_->glReadPixels(0, 0, size_.width(), size_.height(), GL_BGRA, GL_UNSIGNED_BYTE,
                                 image.bits());
    } else {
        qCDebug(qelLog)
            << "OpenGlOffscreenSurface::grabFramebuffer() - Unsupported framebuffer format"
            << internal << "!";
    }
    fbo_->bind();
    return image.mirrored(false, true);
}

void OpenGlOffscreenSurface::swapBuffers() {
    std::lock_guard<std::mutex> lock(mutex_);
    makeCurrentLocked();
    functions_->glFlush();
    if (functions30_) {
        functions30_->glBindFramebuffer(GL_READ_FRAMEBUFFER, fbo_->handle());
        functions30_->glBindFramebuffer(GL_DRAW_FRAMEBUFFER, 0);
        functions30_->glBlitFramebuffer(
            0, 0, size_.width(), size_.height(), 0, 0, size_.width(), size_.height(),
            GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT, GL_NEAREST);
        functions30_->glBindFramebuffer(GL_FRAMEBUFFER, fbo_->handle());
    } else {
        functions_->glBindFramebuffer(GL_FRAMEBUFFER, 0);
        functions_->glBindFramebuffer(GL_FRAMEBUFFER, fbo_->handle());
    }
    if (functions_->glGetError() != GL_NO_ERROR)
        qCDebug(qelLog) << "OpenGlOffscreenSurface::swapBuffersInternal() - OpenGL error";
    context_->swapBuffers(this);
    emit frameSwapped();
}

void OpenGlOffscreenSurface::update() {
    if (!updatePending_.exchange(true))
        QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest));
}

bool OpenGlOffscreenSurface::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::UpdateRequest:
            render();
            return true;
        case QEvent::UpdateLater:
            update();
            return true;
        default:
            return QOffscreenSurface::event(event);
    }
}
