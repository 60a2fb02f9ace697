#pragma once

#include <QImage>
#include <QOffscreenSurface>
#include <QSize>
#include <atomic>
#include <mutex>

class QOpenGLContext;
class QOpenGLFramebufferObject;
class QOpenGLFunctions;
class QOpenGLFunctions_3_0;
class QOpenGLPaintDevice;
class QScreen;

// An OpenGL context with no window: every frame is drawn into a framebuffer
// object and read back into a QImage, for painting a widget and for
// screenshots. Failures to create the context or the framebuffer object
// are thrown as C-string exceptions.
class OpenGlOffscreenSurface : public QOffscreenSurface {
    Q_OBJECT
public:
    OpenGlOffscreenSurface(QScreen* screen = nullptr, const QSize& size = QSize(1, 1));
    ~OpenGlOffscreenSurface() override;

    // The surface format used for every context: the application default,
    // raised to a compatibility profile with depth and stencil, no samples.
    static QSurfaceFormat surfaceFormat();

    void makeCurrent();
    void doneCurrent();
    void resize(const QSize& size);
    QSize size() const override;
    QOpenGLContext* context() const { return context_; }
    unsigned int defaultFramebufferObject() const;
    bool hasResolveFramebuffer() const { return resolvedFbo_ != nullptr; }
    // The last frame, upright.
    QImage grabFramebuffer();
    // The last frame's pixels into rgba (size().width() x size().height()
    // pixels of red, green, blue, alpha bytes), rows bottom up as OpenGL
    // keeps them: no flip and no conversion on the way.
    void readPixels(unsigned char* rgba);
    void swapBuffers();

signals:
    void frameSwapped();
    void resized();

public slots:
    // Posts one UpdateRequest however often it is called before it is handled.
    void update();
    void render();

protected:
    virtual void initializeGL() {}
    virtual void resizeGL(int, int) {}
    virtual void paintGL() {}
    bool event(QEvent* event) override;

private:
    void initializeInternal();
    void recreateFbo();
    void makeCurrentLocked();
    void deleteFbos();
    // Binds the framebuffer that holds the last frame single-sampled.
    QOpenGLFramebufferObject* bindReadSource();

    std::atomic_bool initialized_{false};
    std::atomic_bool updatePending_{false};
    bool initializeGLDone_ = false;
    std::mutex mutex_;
    QOpenGLContext* context_ = nullptr;
    QOpenGLFunctions* functions_ = nullptr;
    QOpenGLFunctions_3_0* functions30_ = nullptr;
    QOpenGLPaintDevice* paintDevice_ = nullptr;
    QOpenGLFramebufferObject* fbo_ = nullptr;
    QOpenGLFramebufferObject* resolvedFbo_ = nullptr;
    QSize size_;
};
