#include "X11Connection.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSocketNotifier>

// Xlib's macros (None, Bool, Status, ...) clash with Qt's: it comes last.
#include <X11/Xlib.h>

namespace {

bool g_failed = false;

int recordError(Display*, XErrorEvent*) {
    g_failed = true;
    return 0;
}

// Runs an Xlib request with errors caught instead of the default handler,
// which would end the process; true when no error came back.
template <typename F>
bool checked(Display* display, F&& request) {
    XSync(display, False);
    g_failed = false;
    XErrorHandler previous = XSetErrorHandler(recordError);
    request();
    XSync(display, False);
    XSetErrorHandler(previous);
    return !g_failed;
}

// X ids have 29 bits; Xlib would silently truncate anything larger.
bool plausibleId(unsigned long id) {
    return id != 0 && id <= 0x1FFFFFFFul;
}

}  // namespace

// One connection per application object: it lives as the application's
// child, so a library-created application takes it along when it goes and
// the next one opens a fresh connection with its own event dispatcher.
X11Connection* X11Connection::instance() {
    static QPointer<X11Connection> connection;
    if (!connection) {
        Display* display = XOpenDisplay(nullptr);
        if (!display) return nullptr;
        connection = new X11Connection(display);
        connection->setParent(QCoreApplication::instance());
    }
    return connection;
}

X11Connection::~X11Connection() {
    delete notifier_;
    XCloseDisplay(display_);
}

X11Connection::X11Connection(Display* display)
    : display_(display),
      notifier_(new QSocketNotifier(ConnectionNumber(display), QSocketNotifier::Read, this)) {
    connect(notifier_, &QSocketNotifier::activated, this, &X11Connection::readEvents);
}

bool X11Connection::isWindow(unsigned long id) {
    if (!plausibleId(id)) return false;
    XWindowAttributes attributes;
    Status status = 0;
    const bool ok =
        checked(display_, [&] { status = XGetWindowAttributes(display_, id, &attributes); });
    return ok && status != 0;
}

bool X11Connection::windowSize(unsigned long id, int* width, int* height) {
    if (!plausibleId(id)) return false;
    XWindowAttributes attributes;
    Status status = 0;
    if (!checked(display_, [&] { status = XGetWindowAttributes(display_, id, &attributes); }) ||
        status == 0)
        return false;
    *width = attributes.width;
    *height = attributes.height;
    return true;
}

void X11Connection::watch(unsigned long id) {
    if (!plausibleId(id)) return;
    checked(display_, [&] { XSelectInput(display_, id, StructureNotifyMask); });
}

void X11Connection::unwatch(unsigned long id) {
    if (!plausibleId(id)) return;
    checked(display_, [&] { XSelectInput(display_, id, NoEventMask); });
}

void X11Connection::readEvents() {
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        if (event.type == ConfigureNotify)
            emit sizeChanged(event.xconfigure.window, event.xconfigure.width,
                             event.xconfigure.height);
    }
}

void X11Connection::focus(unsigned long id) {
    if (!plausibleId(id)) return;
    checked(display_, [&] { XSetInputFocus(display_, id, RevertToParent, CurrentTime); });
}

unsigned long X11Connection::focusedWindow() {
    Window window = 0;
    int revert = 0;
    checked(display_, [&] { XGetInputFocus(display_, &window, &revert); });
    return window > PointerRoot ? window : 0;
}
