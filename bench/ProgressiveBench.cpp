// Progressive still frames of big clouds: for 10 and 30 million points (a
// random slab and a lattice of rows), the time from the display to the
// first picture painted and to the complete one, and the pixels in which the
// complete picture differs from a whole frame, beside the bare scene-graph
// viewer's first frame of the same points in the same run. One JSON line a
// cloud.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_progressive [MILLIONS...]
#include <QApplication>
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

void run(int millions, const std::string& kind) {
    const int n = millions * 1000000;
    const std::vector<osg::Vec3> points = bench::workload(kind, n, 3);
    QelVector3dArray array;
    array.SetSize(n);
    for (int i = 0; i < n; ++i)
        array[i] = QelVector3d(points[size_t(i)].x(), points[size_t(i)].y(), points[size_t(i)].z());
    QelPointCloud cloud;
    cloud.SetPoints(array);

    double first = 0, complete = 0;
    int frames = 0, differing = 0;
    {
        GLViewer view;
        view.resize(kSize, kSize);
        view.grabFrame();
        const Clock::time_point start = Clock::now();
        if (view.content().addPointCloud(cloud) >= 11000000) return;
        QImage picture = paint(view);
        first = since(start);
        frames = 1;
        while (view.progressive().isRefining() && frames < 1000) {
            picture = paint(view);
            ++frames;
        }
        complete = since(start);
        const QImage whole = view.grabFrame().convertToFormat(QImage::Format_RGB32);
        for (int y = 0; y < whole.height(); ++y)
            for (int x = 0; x < whole.width(); ++x)
                differing += whole.pixel(x, y) != picture.pixel(x, y);
    }
    const double bare = bareFirstFrame(points);
    std::printf(
        "{\"bench\":\"progressive\",\"points\":%d,\"kind\":\"%s\",\"first_picture_s\":%.4f,"
        "\"complete_s\":%.4f,\"frames\":%d,\"bare_first_frame_s\":%.4f,\"first_ratio\":%.3f,"
        "\"complete_ratio\":%.3f,\"differing_pixels\":%d}\n",
        n, kind.c_str(), first, complete, frames, bare, first / bare, complete / bare, differing);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {10, 30};
    for (int millions : sizes)
        for (const char* kind : {"slab", "lattice"})
            run(millions, kind);
    return 0;
}
