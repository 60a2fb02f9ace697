#pragma once

#include <OpenThreads/ReadWriteMutex>
#include <QObject>
#include <Qt>
#include <osgViewer/GraphicsWindow>
#include <osgViewer/Viewer>

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

// The scene-graph viewer behind a widget: it draws into an embedded
// graphics window whose context belongs to an offscreen surface, owns the
// scene lock (frames read, scene edits write) and turns Qt input into
// events of the viewer's event queue, in physical pixels.
class MRenderer : public QObject, public osgViewer::Viewer {
    Q_OBJECT
public:
    explicit MRenderer(QObject* parent = nullptr);
    ~MRenderer() override;

    // A viewer for a new widget: the one kept from a closed widget when
    // there is one, otherwise a new one. The scene graph library files
    // every viewer it makes in a process-wide list that it never prunes, so
    // making one per window would grow memory with every window.
    static MRenderer* create();
    // Takes back the viewer of a closing widget, after its graphics window
    // was closed. While other viewers are in use it is put back to how a
    // new viewer starts (no scene, no manipulator, no context, the first
    // camera settings) and kept for the next widget, one at most; the last
    // viewer in use, and any beyond the one kept, is deleted.
    static void recycle(MRenderer* renderer);
    // Whether a viewer is kept for the next widget.
    static bool holdsSpare();

    // Sizes in device pixels; pixelRatio device pixels make one logical
    // pixel (the unit of input events and of sizes given in pixels).
    void setup(int width, int height, float pixelRatio);
    void resize(int width, int height, float pixelRatio);

    void keyPressEvent(QKeyEvent* event);
    void keyReleaseEvent(QKeyEvent* event);
    void mousePressEvent(QMouseEvent* event);
    void mouseReleaseEvent(QMouseEvent* event);
    void mouseDoubleClickEvent(QMouseEvent* event);
    void mouseMoveEvent(QMouseEvent* event);
    void wheelEvent(QWheelEvent* event);

    void requestRedraw() override;
    // Schedules a repaint of the widget (or window) that owns the renderer.
    void updateParent();

    OpenThreads::ReadWriteMutex& sceneLock() { return sceneLock_; }
    osgViewer::GraphicsWindowEmbedded* graphicsWindow() const { return graphicsWindow_.get(); }
    float pixelRatio() const { return pixelRatio_; }
    bool isInitialized() const { return initialized_; }

    // The translation tables, public for whoever needs the same mapping.
    static int modifierMask(Qt::KeyboardModifiers modifiers);
    static int mouseButton(Qt::MouseButton button);
    // The viewer's key symbol for a Qt key, or the first Latin-1 byte of
    // the event's text (0 when empty) for keys outside the map.
    static int keySymbol(int qtKey, const QString& text);

private:
    osgGA::EventQueue* queue() const;
    void reset();
    // Hands the ratio to what draws in the graphics window: scaled point
    // sizes and line widths, and the point programs' uniform.
    void applyPixelRatio(float pixelRatio);

    // The camera and light settings a new viewer starts with.
    struct Start {
        osg::Matrixd projection;
        osg::Vec4 clearColour;
        osg::CullSettings::CullingMode culling = 0;
        osg::View::LightingMode lighting = osg::View::HEADLIGHT;
    };
    Start start_;

    bool initialized_ = false;
    osg::ref_ptr<osgViewer::GraphicsWindowEmbedded> graphicsWindow_;
    float pixelRatio_ = 1.0f;
    short flagA_ = 1;
    short flagB_ = 1;
    OpenThreads::ReadWriteMutex sceneLock_;
};
