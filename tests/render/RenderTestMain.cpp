// Rendering tests need a toolkit application; every widget a test makes is
// destroyed before it.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <QApplication>

#include "XServerConnection.h"

int main(int argc, char** argv) {
    // Keep the GL driver mapped until exit, so a leak report at exit can name
    // it (and the driver's own one-time allocations can be suppressed).
    dlopen("/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so", RTLD_LAZY | RTLD_NODELETE);
    Display* server = holdXServerConnection();
    int result = 0;
    {
        QApplication app(argc, argv);
        ::testing::InitGoogleTest(&argc, argv);
        result = RUN_ALL_TESTS();
    }
    if (server) XCloseDisplay(server);
    return result;
}
