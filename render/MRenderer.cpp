#include "MRenderer.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintDeviceWindow>
#include <QWheelEvent>
#include <QWidget>
#include <map>
#include <osgViewer/Renderer>

#include "MOpenglWidget.h"
#include "PixelRatio.h"
#include "ScaledLineWidth.h"
#include "ScaledPoint.h"

namespace {

using Key = osgGA::GUIEventAdapter::KeySymbol;

const std::map<int, int>& keyMap() {
    static const std::map<int, int> map = [] {
        std::map<int, int> m;
        const std::pair<int, int> rows[] = {
            {Qt::Key_Escape, Key::KEY_Escape},
            {Qt::Key_Delete, Key::KEY_Delete},
            {Qt::Key_Home, Key::KEY_Home},
            {Qt::Key_Enter, Key::KEY_KP_Enter},
            {Qt::Key_End, Key::KEY_End},
            {Qt::Key_Return, Key::KEY_Return},
            {Qt::Key_PageUp, Key::KEY_Page_Up},
            {Qt::Key_PageDown, Key::KEY_Page_Down},
            {Qt::Key_Left, Key::KEY_Left},
            {Qt::Key_Right, Key::KEY_Right},
            {Qt::Key_Up, Key::KEY_Up},
            {Qt::Key_Down, Key::KEY_Down},
            {Qt::Key_Backspace, Key::KEY_BackSpace},
            {Qt::Key_Tab, Key::KEY_Tab},
            {Qt::Key_Space, Key::KEY_Space},
            {Qt::Key_Delete, Key::KEY_Delete},
            {Qt::Key_Alt, Key::KEY_Alt_L},
            {Qt::Key_Shift, Key::KEY_Shift_L},
            {Qt::Key_Control, Key::KEY_Control_L},
            {Qt::Key_Meta, Key::KEY_Meta_L},
            {Qt::Key_hyphen, '-'},
            {Qt::Key_Equal, '='},
            {Qt::Key_division, Key::KEY_KP_Divide},
            {Qt::Key_multiply, Key::KEY_KP_Multiply},
            {Qt::Key_Minus, '-'},
            {Qt::Key_Plus, '+'},
            {Qt::Key_Insert, Key::KEY_KP_Insert},
        };
        for (const auto& row : rows)
            m[row.first] = row.second;
        for (int f = 0; f < 20; ++f)
            m[Qt::Key_F1 + f] = Key::KEY_F1 + f;
        return m;
    }();
    return map;
}

}  // namespace

MRenderer::MRenderer(QObject* parent) : QObject(parent) {
    const osg::Camera* camera = getCamera();
    start_ = {camera->getProjectionMatrix(), camera->getClearColor(), camera->getCullingMode(),
              getLightingMode()};
}

MRenderer::~MRenderer() = default;

namespace {
// The viewer of a closed widget, kept for the next one while other viewers
// live, and how many viewers are handed out.
MRenderer* spare = nullptr;
int inUse = 0;
}  // namespace

MRenderer* MRenderer::create() {
    MRenderer* renderer = spare ? spare : new MRenderer();
    spare = nullptr;
    ++inUse;
    return renderer;
}

void MRenderer::recycle(MRenderer* renderer) {
    if (!renderer) return;
    // With no viewer left in use nothing is kept: the process may be about
    // to end, and the scene graph library's exit-time clean-up must not
    // meet a viewer.
    if (--inUse <= 0) {
        inUse = 0;
        delete spare;
        spare = nullptr;
    } else if (!spare) {
        renderer->reset();
        spare = renderer;
        return;
    }
    delete renderer;
}

bool MRenderer::holdsSpare() {
    return spare != nullptr;
}

void MRenderer::reset() {
    setParent(nullptr);
    setSceneData(nullptr);
    setCameraManipulator(nullptr, false);
    getEventHandlers().clear();
    getEventQueue()->clear();
    osg::Camera* camera = getCamera();
    camera->setGraphicsContext(nullptr);
    camera->setProjectionMatrix(start_.projection);
    camera->setViewMatrix(osg::Matrixd::identity());
    camera->setClearColor(start_.clearColour);
    camera->setCullingMode(start_.culling);
    setLightingMode(start_.lighting);
    setDone(false);
    // The closed graphics window stays referenced until the next setup
    // replaces it: the renderer's scene views still hold its state.
    initialized_ = false;
}

int MRenderer::modifierMask(Qt::KeyboardModifiers modifiers) {
    int mask = 0;
    if (modifiers & Qt::ShiftModifier) mask |= osgGA::GUIEventAdapter::MODKEY_SHIFT;
    if (modifiers & Qt::ControlModifier) mask |= osgGA::GUIEventAdapter::MODKEY_CTRL;
    if (modifiers & Qt::AltModifier) mask |= osgGA::GUIEventAdapter::MODKEY_ALT;
    return mask;
}

int MRenderer::mouseButton(Qt::MouseButton button) {
    switch (button) {
        case Qt::LeftButton:
            return 1;
        case Qt::MiddleButton:
            return 2;
        case Qt::RightButton:
            return 3;
        default:
            return 0;
    }
}

int MRenderer::keySymbol(int qtKey, const QString& text) {
    const auto found = keyMap().find(qtKey);
    if (found != keyMap().end()) return found->second;
    const QByteArray latin1 = text.toLatin1();
    return latin1.isEmpty() ? 0 : static_cast<unsigned char>(latin1.at(0));
}

void MRenderer::setup(int width, int height, float pixelRatio) {
    initialized_ = true;
    osg::ref_ptr<osg::GraphicsContext::Traits> traits = new osg::GraphicsContext::Traits;
    traits->x = 0;
    traits->y = 0;
    traits->width = width;
    traits->height = height;
    graphicsWindow_ = new osgViewer::GraphicsWindowEmbedded(traits.get());
    // The embedded window makes its own state; share the context id of a
    // shared context when the traits name one.
    osg::State* state = graphicsWindow_->getState();
    if (traits->sharedContext.valid()) {
        state->setContextID(traits->sharedContext->getState()->getContextID());
        osg::GraphicsContext::incrementContextIDUsageCount(state->getContextID());
    }
    graphicsWindow_->getEventQueue()->syncWindowRectangleWithGraphicsContext();

    getCamera()->setViewport(new osg::Viewport(0, 0, width, height));
    getCamera()->setGraphicsContext(graphicsWindow_.get());
    applyPixelRatio(pixelRatio);
    // A kept viewer's renderer still points at the closed window's state.
    if (auto* renderer = dynamic_cast<osgViewer::Renderer*>(getCamera()->getRenderer()))
        for (unsigned int i = 0; i < 2; ++i)
            renderer->getSceneView(i)->setState(graphicsWindow_->getState());
    setKeyEventSetsDone(0);
    setReleaseContextAtEndOfFrameHint(false);
    setThreadingModel(osgViewer::Viewer::SingleThreaded);
}

void MRenderer::resize(int width, int height, float pixelRatio) {
    if (!initialized_) return;
    // The next frame applies every size at the new ratio: the state applies
    // each stateset's attributes anew every frame.
    if (pixelRatio != pixelRatio_) applyPixelRatio(pixelRatio);
    graphicsWindow_->resized(0, 0, width, height);
    graphicsWindow_->getEventQueue()->windowResize(0, 0, width, height, queue()->getTime());
    updateParent();
}

void MRenderer::applyPixelRatio(float pixelRatio) {
    pixelRatio_ = pixelRatio;
    PixelRatio::set(graphicsWindow_.get(), pixelRatio);
    // Defaults for whatever sets no size of its own; the uniform overrides
    // the programs' own default of 1.
    osg::StateSet* state = getCamera()->getOrCreateStateSet();
    state->setAttribute(new ScaledPoint(1.0f));
    state->setAttribute(new ScaledLineWidth(1.0f));
    osg::Uniform* uniform = state->getOrCreateUniform(PixelRatio::kUniform, osg::Uniform::FLOAT);
    uniform->set(pixelRatio);
    state->addUniform(uniform, osg::StateAttribute::ON | osg::StateAttribute::OVERRIDE);
}

osgGA::EventQueue* MRenderer::queue() const {
    return graphicsWindow_->getEventQueue();
}

void MRenderer::keyPressEvent(QKeyEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->keyPress(keySymbol(event->key(), event->text()));
}

void MRenderer::keyReleaseEvent(QKeyEvent* event) {
    if (!graphicsWindow_) return;
    if (event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->keyRelease(keySymbol(event->key(), event->text()));
}

void MRenderer::mousePressEvent(QMouseEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->mouseButtonPress(event->x() * pixelRatio_, event->y() * pixelRatio_,
                              mouseButton(event->button()));
}

void MRenderer::mouseReleaseEvent(QMouseEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->mouseButtonRelease(event->x() * pixelRatio_, event->y() * pixelRatio_,
                                mouseButton(event->button()));
}

void MRenderer::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->mouseDoubleButtonPress(event->x() * pixelRatio_, event->y() * pixelRatio_,
                                    mouseButton(event->button()));
}

void MRenderer::mouseMoveEvent(QMouseEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    queue()->mouseMotion(event->x() * pixelRatio_, event->y() * pixelRatio_);
}

void MRenderer::wheelEvent(QWheelEvent* event) {
    if (!graphicsWindow_) return;
    queue()->getCurrentEventState()->setModKeyMask(modifierMask(event->modifiers()));
    const QPointF at = event->position();
    queue()->mouseMotion(static_cast<int>(at.x()) * pixelRatio_,
                         static_cast<int>(at.y()) * pixelRatio_);
    const QPoint delta = event->angleDelta();
    const bool vertical = delta.y() != 0 || delta.x() == 0;
    using M = osgGA::GUIEventAdapter::ScrollingMotion;
    if (vertical)
        queue()->mouseScroll(delta.y() > 0 ? M::SCROLL_UP : M::SCROLL_DOWN);
    else
        queue()->mouseScroll(delta.x() > 0 ? M::SCROLL_LEFT : M::SCROLL_RIGHT);
}

void MRenderer::requestRedraw() {
    osgViewer::View::requestRedraw();
}

void MRenderer::updateParent() {
    QObject* owner = parent();
    if (auto* window = qobject_cast<QPaintDeviceWindow*>(owner))
        window->update();
    else if (auto* view = qobject_cast<MOpenglWidget*>(owner))
        view->requestFrame();
    else if (auto* widget = qobject_cast<QWidget*>(owner))
        widget->update();
}
