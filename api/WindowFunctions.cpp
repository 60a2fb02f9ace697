// Exported functions: window life cycle, furniture and interaction.
#include <QApplication>
#include <QWidget>

#include "ArgumentChecks.h"
#include "ExceptionStatus.h"
#include "GLViewer.h"
#include "ParentFollower.h"
#include "QWinWidget.h"
#include "Qel3DGraphics.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"
#include "ViewDecorations.h"
#include "WindowRegistry.h"
#include "X11Connection.h"

namespace QELMV {

namespace {

// The rectangle checks shared by the rectangle form of creation and the move.
long checkRectangle(int left, int top, int right, int bottom) {
    if (left < 0) return QelStatus::argument(1);
    if (top < 0) return QelStatus::argument(2);
    if (right <= left) return QelStatus::argument(3);
    if (bottom <= top) return QelStatus::argument(4);
    return 0;
}

// A rectangle in a host's X11 window is in X pixels, which are device
// pixels; in a toolkit widget it is in the widget's logical pixels.
void setRectangle(Qel3DGraphicsPrivate* window, int left, int top, int right, int bottom) {
    window->setProperty("qelFillParent", false);
    QRect rectangle(left, top, right - left, bottom - top);
    if (auto* host = qobject_cast<QWinWidget*>(window->parentWidget()))
        rectangle = host->toLogical(rectangle);
    window->setGeometry(rectangle);
}

// Builds the window under parent, shows it and registers its handle.
long finishCreation(QWidget* parent, bool toolkitParent, long long* out) {
    auto* window = new Qel3DGraphicsPrivate(parent, toolkitParent);
    if (toolkitParent) {
        // In a host's widget the window fills the widget's area and follows
        // it, as a widget in a layout would.
        ParentFollower::follow(window);
    } else {
        // Inside a host's native window the 3D window fills it.
        window->setProperty("qelFillParent", true);
        window->setGeometry(parent->rect());
    }
    window->show();
    if (out) *out = reinterpret_cast<long long>(window);
    WindowRegistry::add(window);
    return 0;
}

// Hosts the window in the X11 window id; 11504103 when id is not a window.
long createInNativeWindow(unsigned long id, long long* out) {
    X11Connection* x11 = X11Connection::instance();
    if (!x11 || !x11->isWindow(id)) return QelStatus::kNotAWindow;
    bool embedded = false;
    auto* host = new QWinWidget(id, &embedded);
    if (!embedded) {
        delete host;
        return QelStatus::kNotAWindow;
    }
    host->show();
    return finishCreation(host, false, out);
}

}  // namespace

long QelCreate3DWnd(long long parent, long long* window) try {
    QEL_ON_GUI_THREAD_ONLY();
    // Without a place for the handle nobody could address or destroy it.
    if (!window) return QelStatus::argument(2);
    WindowRegistry::ensureApplication();
    if (parent > 0)
        if (QWidget* widget = QWidget::find(static_cast<WId>(parent)))
            return finishCreation(widget, true, window);
    if (parent <= 0 || parent > 0xFFFFFFFFll) return QelStatus::kNotAWindow;
    return createInNativeWindow(static_cast<unsigned long>(parent), window);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelCreate3DWnd(long long parent, int left, int top, int right, int bottom,
                    long long* window) try {
    QEL_ON_GUI_THREAD_ONLY();
    if (long status = checkRectangle(left, top, right, bottom)) return status;
    if (!window) return QelStatus::argument(6);
    long long handle = 0;
    if (long status = QelCreate3DWnd(parent, &handle)) return status;
    setRectangle(WindowRegistry::find(handle), left, top, right, bottom);
    *window = handle;
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelCreate3DWnd(void* parent, long long* window) try {
    QEL_ON_GUI_THREAD_ONLY();
    if (!window) return QelStatus::argument(2);
    const bool hostApplication = WindowRegistry::hostOwnsApplication();
    WindowRegistry::ensureApplication();
    if (!parent) return QelStatus::kNotAWindow;
    if (hostApplication) return finishCreation(static_cast<QWidget*>(parent), true, window);
    return createInNativeWindow(*static_cast<unsigned long*>(parent), window);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelMove3DWnd(long long window, int left, int top, int right, int bottom) {
    QEL_ON_GUI_THREAD_ONLY();
    if (long status = checkRectangle(left, top, right, bottom)) return status;
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    setRectangle(w, left, top, right, bottom);
    return 0;
}

long QelDestory3DWnd(long long window) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (w->parentIsToolkitWidget()) {
        delete w;
    } else if (auto* host = qobject_cast<QWinWidget*>(w->parentWidget())) {
        delete host;  // takes the window with it
    } else {
        delete w;
    }
    WindowRegistry::remove(window);
    WindowRegistry::releaseApplication();
    return 0;
}

long QelSet3DWndNumber(long long window, int number, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (number < 1 || number > 99999) return QelStatus::argument(2);
    w->setWindowNumber(number, visible);
    return 0;
}

long QelDrawMessageText(long long window, QelVar& text) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (text.ValType() < 0 || text.ValType() > 3) return QelStatus::argument(2);
    w->drawMessageText(text);
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelDrawMessageText(long long window, QelVar& text, QelPoint& position) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (text.ValType() < 0 || text.ValType() > 3) return QelStatus::argument(2);
    w->moveMessageText(position);
    w->drawMessageText(text);
    return 0;
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelSet3DToolbarVisible(long long window, long mask, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    return w->setToolbarMask(mask, visible);
}

long QelSet3DToolbarVisible(long long window, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->setToolbarVisible(visible);
    return 0;
}

long QelSet3DStatusbarVisible(long long window, bool visible) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->setStatusbarVisible(visible);
    return 0;
}

long QelSet3DStatusbarLogLevel(long long window, int level) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (static_cast<unsigned int>(level) > 1) return QelStatus::argument(2);
    w->setStatusLogLevel(level);
    return 0;
}

long QelSet3DTextPen(long long window, QelColor& colour, long size) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    if (size <= 0) return QelStatus::argument(3);
    w->viewer()->decorations().setTextPen(QelArguments::clampedColour(colour), size);
    return 0;
}

long QelGet3DTextPen(long long window, QelColor* colour, long* size) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->viewer()->decorations().getTextPen(colour, size);
    return 0;
}

long Qel3DScreenShot(long long window, QelImage* image) try {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    return w->screenShot(image);
} catch (...) {
    return QelStatus::ofCurrentException();
}

long QelRegisterSelectPointEvent(long long window, QelSelectPointEvent callback, void* user) {
    QEL_ON_GUI_THREAD_ONLY();
    Qel3DGraphicsPrivate* w = WindowRegistry::find(window);
    if (!w) return QelStatus::kUnknownWindow;
    w->registerSelectPoint(window, callback, user);
    return 0;
}

}  // namespace QELMV
