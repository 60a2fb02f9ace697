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
#include <X11/Xlib.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "GlxConnectionCost.h"

int main(int argc, char** argv) {
    const int cycles = argc > 1 ? std::max(20, std::atoi(argv[1])) : 400;
    // A connection of our own stays open, so the server never resets between
    // cycles.
    Display* keep = XOpenDisplay(nullptr);
    if (!keep) {
        std::fprintf(stderr, "bench_glx_connection needs an X server\n");
        return 1;
    }
    int configs = 0;
    const double perCycle = glxBytesPerConnection(cycles, &configs);
    if (perCycle < 0) return 1;
    std::printf(
        "{\"bench\":\"glx_connection\",\"cycles\":%d,\"configs\":%d,"
        "\"heap_in_use_bytes_per_connection\":%.1f}\n",
        cycles, configs, perCycle);
    XCloseDisplay(keep);
    return 0;
}
