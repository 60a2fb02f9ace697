// Progressive still frames of big clouds: for 10 and 30 million points (a
// random slab and a lattice of rows), the time from the display to the
// first picture painted and to the complete one, and the pixels in which the
// complete picture differs from a whole frame, beside the bare scene-graph
// viewer's first frame of the same points in the same run. One JSON line a
// cloud, the medians of three rounds (or --rounds=N).
//
// Run under an X server:
//   xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_progressive [--rounds=N] [MILLIONS...]
#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "BareViewer.h"
#include "BenchTiming.h"
#include "CameraController.h"
#include "GLViewer.h"
#include "ProgressiveFrames.h"
#include "QelOSGWidget.h"
#include "QelPointCloud.h"
#include "QelVector3dArray.h"
#include "SceneContent.h"
#include "Workloads.h"

namespace {

using bench::Clock;
using bench::since;

constexpr int kSize = 800;

// The bare viewer's first frame: arrays from the points, drawn and read back.
double bareFirstFrame(const std::vector<osg::Vec3>& points) {
    BareViewer bare(kSize);
    bare.camera()->setViewMatrixAsLookAt(bench::orbitEye(0), osg::Vec3d(), osg::Vec3d(0, 0, 1));
    const Clock::time_point start = Clock::now();
    bare.setScene(BareViewer::cloudNode(points));
    bare.frameAndReadBack();
    return since(start);
}

QImage paint(GLViewer& view) {
    return view.osgWidget()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

struct Round {
    double shown = 0, first = 0, complete = 0, bare = 0;
    int frames = 0, differing = 0;
};

// One display through the library, refined to the end, then the bare
// viewer's first frame of the same points.
Round round(const QelPointCloud& cloud, const std::vector<osg::Vec3>& points) {
    Round r;
    {
        GLViewer view;
        view.resize(kSize, kSize);
        view.grabFrame();
        const Clock::time_point start = Clock::now();
        if (view.content().addPointCloud(cloud) >= 11000000) return r;
        r.shown = since(start);
        QImage picture = paint(view);
        r.first = since(start);
        r.frames = 1;
        while (view.progressive().isRefining() && r.frames < 1000) {
            picture = paint(view);
            ++r.frames;
        }
        r.complete = since(start);
        const QImage whole = view.grabFrame().convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < whole.height(); ++y)
            for (int x = 0; x < whole.width(); ++x)
                r.differing += whole.pixel(x, y) != picture.pixel(x, y);
    }
    r.bare = bareFirstFrame(points);
    return r;
}

double median(std::vector<Round>& rounds, double Round::*field) {
    std::sort(rounds.begin(), rounds.end(),
              [field](const Round& a, const Round& b) { return a.*field < b.*field; });
    return rounds[rounds.size() / 2].*field;
}

void run(int millions, const std::string& kind, int repeats) {
    const int n = millions * 1000000;
    const std::vector<osg::Vec3> points = bench::workload(kind, n, 3);
    QelVector3dArray array;
    array.SetSize(n);
    for (int i = 0; i < n; ++i)
        array[i] = QelVector3d(points[size_t(i)].x(), points[size_t(i)].y(), points[size_t(i)].z());
    QelPointCloud cloud;
    cloud.SetPoints(array);

    // Fresh memory costs this machine very different times from one
    // allocation to the next: the medians of a few rounds, each beside
    // the bare viewer.
    std::vector<Round> rounds;
    for (int i = 0; i < repeats; ++i)
        rounds.push_back(round(cloud, points));
    const int differing =
        std::max_element(rounds.begin(), rounds.end(), [](const Round& a, const Round& b) {
            return a.differing < b.differing;
        })->differing;
    const int frames = rounds.front().frames;
    const double shown = median(rounds, &Round::shown), first = median(rounds, &Round::first),
                 complete = median(rounds, &Round::complete), bare = median(rounds, &Round::bare);
    std::printf(
        "{\"bench\":\"progressive\",\"points\":%d,\"kind\":\"%s\",\"rounds\":%d,"
        "\"display_s\":%.4f,\"first_picture_s\":%.4f,\"complete_s\":%.4f,\"frames\":%d,"
        "\"bare_first_frame_s\":%.4f,\"first_ratio\":%.3f,\"complete_ratio\":%.3f,"
        "\"differing_pixels\":%d}\n",
        n, kind.c_str(), repeats, shown, first, complete, frames, bare, first / bare,
        complete / bare, differing);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::vector<int> sizes;
    int repeats = 3;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg.rfind("--rounds=", 0) == 0)
            repeats = std::max(1, std::atoi(arg.c_str() + 9));
        else
            sizes.push_back(std::atoi(argv[i]));
    }
    if (sizes.empty()) sizes = {10, 30};
    for (int millions : sizes)
        for (const char* kind : {"slab", "lattice"})
            run(millions, kind, repeats);
    return 0;
}
