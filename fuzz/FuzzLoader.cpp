// libFuzzer target for one file loader, chosen at build time by
// QEL_FUZZ_SUFFIX. The input goes through the public Load call exactly as
// a host's file would: written to a file with that suffix, then loaded as a
// mesh, a point cloud or a range image, whichever the suffix allows.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "Qel3DFileOperation.h"

namespace {

std::string scratchPath() {
    static const std::string path =
        "/dev/shm/qelfuzz-" + std::to_string(::getpid()) + "." QEL_FUZZ_SUFFIX;
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = scratchPath();
    if (std::FILE* f = std::fopen(path.c_str(), "wb")) {
        std::fwrite(data, 1, size, f);
        std::fclose(f);
    } else {
        return 0;
    }
    QelVar file(path.c_str());
    QELMV::Qel3DFileOperation loader;
    QelTriangleMesh mesh;
    loader.Load(&mesh, file, true, true);
    QelPointCloud cloud;
    loader.Load(&cloud, file, true, false);
    QelRangeImage image;
    loader.Load(&image, file, true);
    return 0;
}
