// What the system's GLX library keeps for every X connection that asked it
// for framebuffer configurations: open a connection, choose configurations
// as a toolkit does for an offscreen surface, close it, many times, and
// print the allocator's bytes in use per cycle over the last half. Nothing
// of this library runs here. It is what grows in the soak benchmark's case
// without another window, where every cycle ends the application object and
// with it the toolkit's X connection.
//
//   bench_glx_connection [CYCLES]
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_glx_connection
#include <GL/glx.h>
#include <X11/Xlib.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const int cycles = argc > 1 ? std::max(20, std::atoi(argv[1])) : 400;
    // A connection of our own stays open, so the server never resets between
    // cycles.
    Display* keep = XOpenDisplay(nullptr);
    if (!keep) {
        std::fprintf(stderr, "bench_glx_connection needs an X server\n");
        return 1;
    }
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
    int configs = 0;
    for (int i = 1; i <= cycles; ++i) {
        Display* display = XOpenDisplay(nullptr);
        if (!display) return 1;
        GLXFBConfig* list =
            glXChooseFBConfig(display, DefaultScreen(display), attributes, &configs);
        if (list) XFree(list);
        XCloseDisplay(display);
        if (i == cycles / 2) halfway = mallinfo2().uordblks;
    }
    const double perCycle =
        (double(mallinfo2().uordblks) - double(halfway)) / double(cycles - cycles / 2);
    std::printf(
        "{\"bench\":\"glx_connection\",\"cycles\":%d,\"configs\":%d,"
        "\"heap_in_use_bytes_per_connection\":%.1f}\n",
        cycles, configs, perCycle);
    XCloseDisplay(keep);
    return 0;
}
