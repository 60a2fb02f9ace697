// Host-side tests: no application object is made here; the library creates
// one on the first window, as it does for hosts without Qt.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <QCoreApplication>

#include "XServerConnection.h"

int main(int argc, char** argv) {
    // Keep the GL driver mapped until exit so leak reports can name it.
    dlopen("/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so", RTLD_LAZY | RTLD_NODELETE);
    // Held as a host holds its own: otherwise, once the library has closed
    // its last connection between two tests, the server could reset under
    // the next one.
    Display* host = holdXServerConnection();
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    // An application the library no longer remembers stays until the host
    // ends it; every window is gone by now.
    delete QCoreApplication::instance();
    if (host) XCloseDisplay(host);
    return result;
}
