#pragma once

// What the system's GLX library keeps for every X connection that asked it
// for framebuffer configurations: open a connection, choose configurations
// as a toolkit does for an offscreen surface, close it, many times; the
// allocator's bytes in use per connection over the last half.
#include <GL/glx.h>
#include <X11/Xlib.h>
#include <malloc.h>

#include <cstddef>

// Negative when no X connection could be opened. configs (when given) gets
// the number of configurations the server offered.
inline double glxBytesPerConnection(int cycles, int* configs = nullptr) {
    const int attributes[] = {GLX_DRAWABLE_TYPE,
                              GLX_PBUFFER_BIT,
                              GLX_RENDER_TYPE,
                              GLX_RGBA_BIT,
                              GLX_DEPTH_SIZE,
                              24,
                              GLX_STENCIL_SIZE,
                              8,
                              None};
    size_t halfway = 0;
    int offered = 0;
    for (int i = 1; i <= cycles; ++i) {
        Display* display = XOpenDisplay(nullptr);
        if (!display) return -1.0;
        GLXFBConfig* list =
            glXChooseFBConfig(display, DefaultScreen(display), attributes, &offered);
        if (list) XFree(list);
        XCloseDisplay(display);
        if (i == cycles / 2) halfway = mallinfo2().uordblks;
    }
    if (configs) *configs = offered;
    return (double(mallinfo2().uordblks) - double(halfway)) / double(cycles - cycles / 2);
}
