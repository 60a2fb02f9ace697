// What measurements cost: adding 1,000 of them (distances, angles and
// heights in turn), and a frame with them beside a 1-million-point cloud
// against the cloud alone, in alternating rounds, as medians. One JSON line.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_measure
#include <QApplication>
#include <cstdio>
#include <random>
#include <vector>

#include "BenchTiming.h"
#include "GLViewer.h"
#include "NodeMasks.h"
#include "SceneContent.h"
#include "SlabView.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kPoints = 1000000;
constexpr int kMeasurements = 1000;
constexpr int kRounds = 15;

double frameSeconds(GLViewer& view) {
    const Clock::time_point start = Clock::now();
    view.grabFrame();
    return since(start);
}

// Points on the slab's extent, at random.
std::vector<osg::Vec3d> randomPoints(std::mt19937& random, int count) {
    std::uniform_real_distribution<double> u(-50, 50), h(-3, 3);
    std::vector<osg::Vec3d> points;
    for (int i = 0; i < count; ++i)
        points.emplace_back(u(random), u(random), h(random));
    return points;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    GLViewer view;
    if (!bench::showSlab(view, kPoints, 11, 5.f, 0.05f)) return 1;
    SceneContent& content = view.content();

    std::mt19937 random(5);
    const Clock::time_point start = Clock::now();
    int added = 0;
    for (int i = 0; i < kMeasurements; ++i) {
        const MeasureKind kind = static_cast<MeasureKind>(i % 3);
        const long id = content.addMeasurement(kind, randomPoints(random, 2 + i % 3));
        added += id < 11000000;
    }
    const double addSeconds = since(start);
    view.grabFrame();  // the first frame lays every label out

    std::vector<double> plain, measured;
    for (int round = 0; round < kRounds; ++round) {
        content.measureGroup()->setNodeMask(0u);
        view.grabFrame();
        plain.push_back(frameSeconds(view));
        content.measureGroup()->setNodeMask(NodeMasks::kNotPickable);
        view.grabFrame();
        measured.push_back(frameSeconds(view));
    }
    std::printf(
        "{\"bench\":\"measure\",\"points\":%d,\"measurements\":%d,\"add_all_s\":%.4f,"
        "\"frame_s\":%.4f,\"frame_with_measurements_s\":%.4f,\"ratio\":%.3f}\n",
        kPoints, added, addSeconds, median(plain), median(measured),
        median(measured) / median(plain));
    return 0;
}
