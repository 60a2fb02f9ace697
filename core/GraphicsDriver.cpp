#include "GraphicsDriver.h"

#include <atomic>

namespace {

std::atomic<bool> software{false};

}  // namespace

void GraphicsDriver::noteRenderer(const std::string& renderer) {
    // Mesa's software rasterizers name themselves so.
    static const char* const kSoftware[] = {"llvmpipe", "softpipe", "swrast", "Software"};
    bool found = false;
    for (const char* name : kSoftware)
        found = found || renderer.find(name) != std::string::npos;
    software = found;
}

bool GraphicsDriver::isSoftware() {
    return software;
}
