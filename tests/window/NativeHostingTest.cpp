// Hosting inside a foreign X11 window: the window check with bogus ids,
// re-parenting and following the host window's size.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QVariant>
#include <QWindow>

#include "QWinWidget.h"
#include "X11Connection.h"

// Last: Xlib's macros (Bool, Status, None) clash with the toolkit's headers.
#include <X11/Xlib.h>

namespace {

// A host program's own top-level window, made with plain Xlib.
class HostWindow {
public:
    HostWindow(int width, int height) : display_(XOpenDisplay(nullptr)) {
        window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, width, height, 0,
                                      0, 0);
        XMapWindow(display_, window_);
        XSync(display_, False);
    }
    ~HostWindow() {
        XDestroyWindow(display_, window_);
        XCloseDisplay(display_);
    }
    unsigned long id() const { return window_; }
    void resize(int width, int height) {
        XResizeWindow(display_, window_, width, height);
        XSync(display_, False);
    }
    std::vector<unsigned long> children() const {
        Window root = 0, parent = 0, *kids = nullptr;
        unsigned int n = 0;
        XQueryTree(display_, window_, &root, &parent, &kids, &n);
        std::vector<unsigned long> out(kids, kids + n);
        if (kids) XFree(kids);
        return out;
    }

private:
    Display* display_;
    Window window_;
};

template <typename F>
bool waitFor(F&& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 3000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

}  // namespace

TEST(NativeHosting, BogusIdsAreNotWindowsAndDoNotKill) {
    X11Connection* x11 = X11Connection::instance();
    ASSERT_NE(x11, nullptr);
    for (unsigned long bogus : {0ul, 1ul, 0x12345ul, 0x1FFFFFFFul, 0x20000000ul, 1ul << 40})
        EXPECT_FALSE(x11->isWindow(bogus)) << std::hex << bogus;
    HostWindow host(100, 80);
    EXPECT_TRUE(x11->isWindow(host.id()));
    bool ok = true;
    QWinWidget unhosted(0x12345ul, &ok);
    EXPECT_FALSE(ok);
    EXPECT_FALSE(unhosted.property("_q_embedded_native_parent_handle").isValid());
}

TEST(NativeHosting, BecomesAChildAndFollowsTheHostSize) {
    HostWindow host(320, 240);
    bool ok = false;
    QWinWidget widget(host.id(), &ok);
    ASSERT_TRUE(ok);
    widget.show();
    EXPECT_EQ(widget.property("_q_embedded_native_parent_handle").toULongLong(), host.id());
    ASSERT_TRUE(waitFor([&] {
        const auto kids = host.children();
        return std::find(kids.begin(), kids.end(), widget.winId()) != kids.end();
    })) << "the widget's window is a child of the host window";
    EXPECT_EQ(widget.size(), QSize(320, 240));
    host.resize(500, 400);
    EXPECT_TRUE(waitFor([&] { return widget.size() == QSize(500, 400); }));
}
