// What the cube axis costs: the frame time of a 1-million-point cloud with
// and without the axis (and with the axis but no grid), measured in
// alternating rounds and reported as medians, and the time to rebuild the
// axis for new bounds (bounds, faces and a full label layout) and to switch
// it on. One JSON line each.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_axis
#include <QApplication>
#include <cstdio>
#include <vector>

#include "BenchTiming.h"
#include "GLViewer.h"
#include "QelCubeAxis3d.h"
#include "SlabView.h"
#include "ViewDecorations.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kPoints = 1000000;
constexpr int kRounds = 9;
constexpr int kRebuilds = 50;

double frameSeconds(GLViewer& view) {
    const Clock::time_point start = Clock::now();
    view.grabFrame();
    return since(start);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    GLViewer view;
    if (!bench::showSlab(view, kPoints, 11, 5.f, 0.05f)) return 1;

    std::vector<double> plain, axis, noGrid;
    for (int round = 0; round < kRounds; ++round) {
        view.decorations().setAxisVisible(false);
        view.grabFrame();  // the frame after a change settles the layout
        plain.push_back(frameSeconds(view));
        view.decorations().setAxisVisible(true);
        view.grabFrame();
        axis.push_back(frameSeconds(view));
        view.decorations().setGridVisible(false);
        view.grabFrame();
        noGrid.push_back(frameSeconds(view));
        view.decorations().setGridVisible(true);
    }
    std::printf(
        "{\"bench\":\"axis\",\"points\":%d,\"frame_s\":%.4f,\"frame_axis_grid_s\":%.4f,"
        "\"frame_axis_no_grid_s\":%.4f,\"ratio_axis_grid\":%.3f,\"ratio_axis_no_grid\":%.3f}\n",
        kPoints, median(plain), median(axis), median(noGrid), median(axis) / median(plain),
        median(noGrid) / median(plain));

    // New bounds each time, alternating between two data sets' sizes.
    QelCubeAxis3d* cube = view.decorations().cubeAxis();
    if (!cube) return 1;
    std::vector<double> rebuilds;
    for (int i = 0; i < kRebuilds; ++i) {
        const float s = (i % 2) ? 1.0f : 7.5f;
        const Clock::time_point start = Clock::now();
        cube->setBounds(-50 * s, 50 * s, -50 * s, 50 * s, 0, 10 * s);
        rebuilds.push_back(since(start));
    }
    const size_t labels = cube->labels().size();
    // Switching the axis on: the font, the nodes and the first layout.
    std::vector<double> builds;
    for (int i = 0; i < 10; ++i) {
        view.decorations().setAxisVisible(false);
        const Clock::time_point start = Clock::now();
        view.decorations().setAxisVisible(true);
        builds.push_back(since(start));
    }
    std::printf(
        "{\"bench\":\"axis\",\"rebuild_for_new_bounds_s\":%.5f,\"labels\":%zu,"
        "\"switch_on_s\":%.5f}\n",
        median(rebuilds), labels, median(builds));
    return 0;
}
