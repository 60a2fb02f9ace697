#include "QWinWidget.h"

#include <QApplication>
#include <QChildEvent>
#include <QDebug>
#include <QEvent>
#include <QWindow>
#include <cmath>

#include "QelLog.h"
#include "X11Connection.h"

QWinWidget::QWinWidget(unsigned long parentWindow, bool* success, QObject* parentObject,
                       Qt::WindowFlags flags)
    : QWidget(nullptr, flags), parentWindow_(parentWindow) {
    if (parentObject) QObject::setParent(parentObject);
    X11Connection* x11 = X11Connection::instance();
    const bool isWindow = x11 && x11->isWindow(parentWindow);
    if (isWindow) initialize();
    if (success) *success = isWindow;
}

QWinWidget::~QWinWidget() {
    if (X11Connection* x11 = X11Connection::instance()) x11->unwatch(parentWindow_);
    // The host window's wrapper would take our window with it as its child:
    // detach first, then let it go (the host's X window itself stays).
    if (hostWindow_) {
        if (windowHandle()) windowHandle()->setParent(nullptr);
        delete hostWindow_;
    }
}

void QWinWidget::initialize() {
    setProperty("_q_embedded_native_parent_handle", QVariant::fromValue<qulonglong>(parentWindow_));
    // The window gets its own native X window. It is painted by the raster
    // engine, so it is made as a plain raster window: a GL-capable one would
    // look up a GLX visual for every window, and the GL driver keeps a little
    // of each lookup for the life of the process.
    const bool forcedRaster = QCoreApplication::testAttribute(Qt::AA_ForceRasterWidgets);
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, true);
    winId();
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets, forcedRaster);
    hostWindow_ = QWindow::fromWinId(parentWindow_);
    windowHandle()->setParent(hostWindow_);
    X11Connection* x11 = X11Connection::instance();
    int width = 0, height = 0;
    if (x11->windowSize(parentWindow_, &width, &height))
        resize(toLogical(QRect(0, 0, width, height)).size());
    x11->watch(parentWindow_);
    connect(x11, &X11Connection::sizeChanged, this, &QWinWidget::followParentSize);
}

void QWinWidget::followParentSize(unsigned long window, int width, int height) {
    if (window == parentWindow_) setGeometry(toLogical(QRect(0, 0, width, height)));
}

QRect QWinWidget::toLogical(const QRect& devicePixels) const {
    const qreal ratio = devicePixelRatioF() > 0 ? devicePixelRatioF() : 1.0;
    const int left = static_cast<int>(std::floor(devicePixels.left() / ratio));
    const int top = static_cast<int>(std::floor(devicePixels.top() / ratio));
    const int right =
        static_cast<int>(std::ceil((devicePixels.left() + devicePixels.width()) / ratio));
    const int bottom =
        static_cast<int>(std::ceil((devicePixels.top() + devicePixels.height()) / ratio));
    return QRect(left, top, right - left, bottom - top);
}

void QWinWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        if (child->property("qelFillParent").toBool()) child->setGeometry(rect());
}

void QWinWidget::show() {
    if (!previousFocus_) {
        X11Connection* x11 = X11Connection::instance();
        previousFocus_ = x11 ? x11->focusedWindow() : 0;
        if (!previousFocus_) previousFocus_ = parentWindow_;
    }
    QWidget::show();
}

void QWinWidget::center() {
    const QList<QWidget*> children = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    bool any = false;
    const QPoint middle = mapToGlobal(rect().center());
    for (QWidget* child : children) {
        if (!child->isWindow()) continue;
        any = true;
        child->move(middle - child->rect().center());
    }
    if (!any)
        qCWarning(
            qelLog,
            "QWinWidget::center: Call this function only for QWinWidgets with toplevel children");
}

bool QWinWidget::focusNextPrevChild(bool next) {
    // Leaving the last (or, backwards, the first) focusable child hands the
    // focus back to the host window instead of wrapping around.
    QWidget* current = focusWidget();
    QWidget* candidate =
        current ? (next ? current->nextInFocusChain() : current->previousInFocusChain()) : nullptr;
    const bool wraps = !candidate || !isAncestorOf(candidate) || candidate == this;
    if (wraps && parentWindow_) {
        if (X11Connection* x11 = X11Connection::instance()) x11->focus(parentWindow_);
        return true;
    }
    return QWidget::focusNextPrevChild(next);
}

void QWinWidget::childEvent(QChildEvent* event) {
    QWidget::childEvent(event);
    if (event->added())
        if (auto* w = qobject_cast<QWidget*>(event->child()); w && w->isWindow())
            w->installEventFilter(this);
}

bool QWinWidget::eventFilter(QObject* watched, QEvent* event) {
    auto* child = qobject_cast<QWidget*>(watched);
    X11Connection* x11 = X11Connection::instance();
    if (!child || !child->isWindow() || !x11) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::Show:
            previousFocus_ = x11->focusedWindow();
            if (!previousFocus_) previousFocus_ = parentWindow_;
            break;
        case QEvent::Hide:
            parentDisabled_ = false;
            x11->focus(previousFocus_ ? previousFocus_ : parentWindow_);
            if (child->testAttribute(Qt::WA_DeleteOnClose)) deleteLater();
            break;
        case QEvent::Close:
            x11->focus(parentWindow_);
            if (child->testAttribute(Qt::WA_DeleteOnClose)) deleteLater();
            break;
        default:
            break;
    }
    return QWidget::eventFilter(watched, event);
}
