#pragma once

// A test process holds one connection to the X server for its whole life,
// as every host does. A virtual server resets when its last client leaves
// and refuses connections for a moment meanwhile, so the first connection
// is retried briefly. Include it after Qt's headers: Xlib's macros clash.
#include <chrono>
#include <thread>

#include <X11/Xlib.h>

inline Display* holdXServerConnection() {
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (Display* display = XOpenDisplay(nullptr)) return display;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return nullptr;
}
