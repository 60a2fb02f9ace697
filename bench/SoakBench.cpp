// Resident memory over many window life cycles: create -> display a cloud
// -> screenshot -> destroy, 2000 times, once with no other window open (the
// library makes and ends its application object every cycle) and once with
// a second window kept open throughout. Every 100 cycles it prints the
// resident bytes after malloc_trim as a JSON line, and at the end the growth
// per cycle over the last 1000 cycles. Alone, every cycle also opens and
// closes the toolkit's X connection, and the system's GLX library keeps a
// little of each: the same run measures that cost with plain Xlib (it runs
// bench_glx_connection, which must stand beside it) and prints the case
// against its goal, that cost plus 1 kB a cycle.
//
//   bench_soak [CYCLES] [alone|beside]
//                             both cases by default, or only the one named
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_soak
#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "Qel3DGraphics.h"

// Xlib's macros clash with Qt's: they come last.
#include <X11/Xlib.h>

#include "GlxConnectionCost.h"

namespace {

// Bytes the allocator hands out: flat while resident memory grows means
// fragmentation; growing with it means something keeps its allocations.
double heapInUseBytes() {
    return double(mallinfo2().uordblks);
}

double residentBytes() {
    malloc_trim(0);
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return double(resident) * double(sysconf(_SC_PAGESIZE));
}

QelPointCloud smallCloud() {
    QelVector3dArray points(2500);
    for (int i = 0; i < 2500; ++i)
        points[i] = QelVector3d(float(i % 50), float(i / 50), float((i * 7) % 13));
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

// One X11 window of the host's.
Window hostWindow(Display* display) {
    const Window w =
        XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 320, 240, 0, 0, 0);
    XMapWindow(display, w);
    XSync(display, False);
    return w;
}

bool cycle(Display* display, Window parent, QelPointCloud& cloud) {
    long long view = 0;
    if (QELMV::QelCreate3DWnd(static_cast<long long>(parent), &view) != 0) return false;
    const long id = QELMV::QelDisplayPointCloud(view, cloud);
    QelImage picture;
    const long shot = QELMV::Qel3DScreenShot(view, &picture);
    QELMV::QelDestory3DWnd(view);
    XSync(display, False);
    return id >= 1 && id < 11000000 && shot == 0;
}

// Growth per cycle over the last half of the run, resident and heap in use.
struct Growth {
    double resident = 0, heap = 0;
};

Growth soak(const char* name, int cycles, Display* display, Window parent) {
    QelPointCloud cloud = smallCloud();
    std::vector<double> samples, heap;
    for (int i = 1; i <= cycles; ++i) {
        if (!cycle(display, parent, cloud)) {
            std::printf("{\"bench\":\"soak\",\"case\":\"%s\",\"error\":\"cycle %d failed\"}\n",
                        name, i);
            return {};
        }
        if (i % 100 == 0) {
            samples.push_back(residentBytes());
            heap.push_back(heapInUseBytes());
            std::printf(
                "{\"bench\":\"soak\",\"case\":\"%s\",\"cycle\":%d,\"resident_bytes\":%.0f,"
                "\"heap_in_use_bytes\":%.0f}\n",
                name, i, samples.back(), heap.back());
            std::fflush(stdout);
        }
    }
    Growth growth;
    if (samples.size() >= 2) {
        const size_t half = samples.size() / 2;
        const double span = 100.0 * double(samples.size() - half);
        growth.resident = (samples.back() - samples[half - 1]) / span;
        growth.heap = (heap.back() - heap[half - 1]) / span;
        std::printf(
            "{\"bench\":\"soak\",\"case\":\"%s\",\"cycles\":%d,\"bytes_per_cycle_last_"
            "half\":%.1f,\"heap_bytes_per_cycle_last_half\":%.1f}\n",
            name, cycles, growth.resident, growth.heap);
    }
    return growth;
}

// What bench_glx_connection, beside this program, reports per connection;
// negative when it cannot be run.
double glxCostFromBenchmark(const char* self) {
    std::string dir(self);
    const size_t slash = dir.rfind('/');
    dir = slash == std::string::npos ? "." : dir.substr(0, slash);
    FILE* child = popen(("'" + dir + "/bench_glx_connection' 400").c_str(), "r");
    if (!child) return -1.0;
    char line[512] = {};
    double cost = -1.0;
    const char* key = "\"heap_in_use_bytes_per_connection\":";
    while (std::fgets(line, sizeof line, child))
        if (const char* at = std::strstr(line, key)) cost = std::atof(at + std::strlen(key));
    pclose(child);
    return cost;
}

}  // namespace

int main(int argc, char** argv) {
    const int cycles = argc > 1 ? std::max(200, std::atoi(argv[1])) : 2000;
    Display* display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "bench_soak needs an X server\n");
        return 1;
    }
    const std::string only = argc > 2 ? argv[2] : "";
    const Window parent = hostWindow(display);
    if (only != "beside") {
        const Growth alone = soak("alone", cycles, display, parent);
        // The system's cost per X connection, measured now: by
        // bench_glx_connection in a fresh process of its own, as it reports
        // it, and in this process after the soak (where the GLX library
        // has warmed up and keeps less).
        const double glx = glxCostFromBenchmark(argv[0]);
        const double here = glxBytesPerConnection(400);
        const double goal = glx + 1024.0;
        std::printf(
            "{\"bench\":\"soak\",\"case\":\"alone_against_glx\",\"glx_bytes_per_connection\":"
            "%.1f,\"glx_bytes_per_connection_in_this_process\":%.1f,\"goal_bytes_per_cycle\":%.1f,"
            "\"bytes_per_cycle_last_half\":%.1f,\"heap_bytes_per_cycle_last_half\":%.1f,"
            "\"within_goal\":%s}\n",
            glx, here, goal, alone.resident, alone.heap,
            glx >= 0 && alone.resident <= goal && alone.heap <= goal ? "true" : "false");
    }
    if (only == "alone") {
        XCloseDisplay(display);
        return 0;
    }

    // A second window stays open throughout, so the application object does too.
    const Window keep = hostWindow(display);
    long long kept = 0;
    if (QELMV::QelCreate3DWnd(static_cast<long long>(keep), &kept) != 0) return 1;
    soak("beside_another", cycles, display, parent);
    QELMV::QelDestory3DWnd(kept);
    XCloseDisplay(display);
    return 0;
}
