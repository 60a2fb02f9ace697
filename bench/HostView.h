#pragma once

// A 3D window in an X11 window of the benchmark's own, as a host makes one.
#include <cstdio>

#include "Qel3DGraphics.h"

// Xlib's macros clash with Qt's: it comes last.
#include <X11/Xlib.h>

namespace bench {

class HostView {
public:
    // Prints why and leaves view() 0 when there is no X server or no window.
    HostView(const char* program, int width, int height) {
        display_ = XOpenDisplay(nullptr);
        if (!display_) {
            std::fprintf(stderr, "%s needs an X server\n", program);
            return;
        }
        window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, unsigned(width),
                                      unsigned(height), 0, 0, 0);
        XMapWindow(display_, window_);
        XSync(display_, False);
        if (QELMV::QelCreate3DWnd(static_cast<long long>(window_), &view_) != 0) view_ = 0;
    }
    ~HostView() {
        if (view_) QELMV::QelDestory3DWnd(view_);
        if (display_) XCloseDisplay(display_);
    }
    HostView(const HostView&) = delete;
    HostView& operator=(const HostView&) = delete;

    long long view() const { return view_; }

private:
    Display* display_ = nullptr;
    Window window_ = 0;
    long long view_ = 0;
};

}  // namespace bench
