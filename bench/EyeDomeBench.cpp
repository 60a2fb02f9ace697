// What eye-dome lighting costs: an 800 x 800 view of a 1-million-point
// cloud, a still frame and a frame while the camera moves (the point budget
// drawing its sample, the pass at half resolution), each with the pass and
// without it, in alternating rounds, as medians; and the frame after the
// pass is switched off again. One JSON line.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_edl
#include <QApplication>
#include <cstdio>
#include <vector>

#include "BenchTiming.h"
#include "EyeDomeLighting.h"
#include "GLViewer.h"
#include "LightController.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "SlabView.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kPoints = 1000000;
constexpr int kRounds = 11;

// One painted frame, as the widget draws on screen, and its time.
double paint(GLViewer& view) {
    const Clock::time_point start = Clock::now();
    view.osgWidget()->grab();
    return since(start);
}

// A frame after a warm-up frame in the same state.
double settled(GLViewer& view) {
    paint(view);
    return paint(view);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    GLViewer view;
    if (!bench::showSlab(view, kPoints, 13, 5.f, 0.05f)) return 1;
    view.light().setLightState(false);
    EyeDomeLighting& edl = view.eyeDome();

    std::vector<double> still, stillEdl, moving, movingEdl, offAgain;
    for (int round = 0; round < kRounds; ++round) {
        for (bool moves : {false, true}) {
            view.budget().setMoving(moves);
            edl.setEnabled(false);
            (moves ? moving : still).push_back(settled(view));
            edl.setEnabled(true);
            (moves ? movingEdl : stillEdl).push_back(settled(view));
        }
        view.budget().setMoving(false);
        edl.setEnabled(false);
        offAgain.push_back(settled(view));
    }
    std::printf(
        "{\"bench\":\"edl\",\"points\":%d,\"size\":800,\"still_s\":%.4f,\"still_edl_s\":%.4f,"
        "\"still_ratio\":%.3f,\"moving_s\":%.4f,\"moving_edl_s\":%.4f,\"moving_extra_ms\":%.2f,"
        "\"still_off_again_s\":%.4f}\n",
        kPoints, median(still), median(stillEdl), median(stillEdl) / median(still), median(moving),
        median(movingEdl), 1000.0 * (median(movingEdl) - median(moving)), median(offAgain));
    return 0;
}
