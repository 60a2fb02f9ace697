#pragma once

#include <QImage>
#include <QWidget>
#include <vector>

class ExamplePaintSurface;
class MRenderer;
namespace osgViewer {
class Viewer;
}

// A plain widget that shows a scene-graph viewer: a paint runs one frame
// into an offscreen framebuffer, reads it back and paints the image. A paint
// of only what the widgets over the view cover (a message, the colour bar,
// the lasso's stroke changed) shows the last frame again instead: they
// change nothing in the scene. There is no timer; frames follow paints
// only. Input events go to the renderer.
class MOpenglWidget : public QWidget {
    Q_OBJECT
public:
    // True while a frame runs, with the scene lock held for reading.
    bool frameInProgress() const { return inFrame_; }
    MOpenglWidget(int flag, QWidget* parent = nullptr);
    explicit MOpenglWidget(QWidget* parent = nullptr);
    ~MOpenglWidget() override;

    osgViewer::Viewer* viewer() const;
    MRenderer* renderer() const { return renderer_; }
    ExamplePaintSurface* surface() const { return surface_; }

    // Renders once and returns the frame, in device pixels.
    void grabImage(QImage& out);
    // Renders once at another size (device pixels) and returns that frame; the surface is
    // put back to its size and rendered again afterwards.
    void grabImage(QImage& out, double width, double height);
    // Renders once and reads the frame as OpenGL keeps it: rows bottom up,
    // red, green, blue, alpha bytes. The frame's size goes to size; false
    // when nothing could be drawn.
    bool grabPixels(std::vector<unsigned char>& rgba, QSize& size);

    // The scene or the camera changed: the next paint draws a new frame.
    void requestFrame() {
        frameWanted_ = true;
        update();
    }
    // Whether paints may show the last frame again (on unless the
    // environment sets QEL3D_INCREMENTAL=0).
    void setIncremental(bool on) { incremental_ = on; }
    bool isIncremental() const { return incremental_; }
    // Frames drawn for paints (a paint that showed the last frame drew none).
    long paintedFrames() const { return paintedFrames_; }

signals:
    void initialized();
    void newRender();

public slots:
    void initializeGL();
    // The surface was resized to width x height device pixels.
    void resizeGL(int width, int height);
    void paintGL();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

    // Device pixels per logical pixel on the widget's screen, and the
    // widget's size in device pixels: the size the frame is drawn at.
    float pixelRatio() const;
    QSize deviceSize() const;
    MRenderer* renderer_ = nullptr;

private:
    // Renders one frame, making the surface follow the widget's size first.
    // False when the surface failed; the reason is logged.
    bool renderFrame();
    void teardownRenderer();
    // Whether the widgets over the view cover the whole region.
    bool overlaysCover(const QRegion& region) const;

    int reservedA_ = 1;
    int reservedB_ = 1;
    int flag_ = 0;
    bool firstFrame_ = true;
    bool inFrame_ = false;
    bool incremental_ = true;
    bool frameWanted_ = true;
    long paintedFrames_ = 0;
    // The last painted frame, in device pixels.
    QImage lastFrame_;
    ExamplePaintSurface* surface_ = nullptr;
};
