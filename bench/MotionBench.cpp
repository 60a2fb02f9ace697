// Turning a big scan: frames of 10 and 30 million points in an 800 x 800
// view while the left button drags (the point budget draws a sample), the
// settle frame after the release, and a still frame without a budget, with
// the pixels each draws (the settle frame must draw as many as the still
// one). Medians of 7 frames; one JSON line per size.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_motion [MILLIONS...]
#include <QApplication>
#include <QMouseEvent>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "BenchTiming.h"
#include "GLViewer.h"
#include "LightController.h"
#include "PointBudget.h"
#include "QelOSGWidget.h"
#include "SlabView.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kFrames = 7;

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButtons held) {
    QMouseEvent event(type, at, w->mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(w, &event);
}

// One painted frame (as the widget draws on screen) and its time.
double paint(GLViewer& view) {
    const Clock::time_point start = Clock::now();
    view.osgWidget()->grab();
    return since(start);
}

long litPixels(GLViewer& view) {
    const QImage image = view.osgWidget()->grab().toImage();
    long n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += (image.pixel(x, y) & 0xffffff) != 0;
    return n;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i)
        sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {10, 30};
    for (int millions : sizes) {
        const int n = millions * 1000000;
        GLViewer view;
        if (!bench::showSlab(view, n, 9, 1.f, 0.02f)) return 1;
        view.light().setLightState(false);
        QWidget* w = view.osgWidget();

        const long budget = view.budget().budget();
        std::vector<double> still, drag, settle;
        long stillPixels = 0, settlePixels = 0;
        for (int k = 0; k < kFrames; ++k) {
            still.push_back(paint(view));
            if (k == 0) stillPixels = litPixels(view);
            mouse(w, QEvent::MouseButtonPress, QPoint(400, 400), Qt::LeftButton);
            paint(view);
            for (int step = 1; step <= 3; ++step) {
                mouse(w, QEvent::MouseMove, QPoint(400 + 3 * step, 400 + step), Qt::LeftButton);
                drag.push_back(paint(view));
            }
            mouse(w, QEvent::MouseButtonRelease, QPoint(409, 403), Qt::NoButton);
            settle.push_back(paint(view));
            if (k == 0) settlePixels = litPixels(view);
            // Back where it started, so every round sees the same view.
            mouse(w, QEvent::MouseButtonPress, QPoint(409, 403), Qt::LeftButton);
            mouse(w, QEvent::MouseMove, QPoint(400, 400), Qt::LeftButton);
            mouse(w, QEvent::MouseButtonRelease, QPoint(400, 400), Qt::NoButton);
            paint(view);
        }
        std::printf(
            "{\"bench\":\"motion\",\"points\":%d,\"budget\":%ld,\"still_frame_s\":%.4f,"
            "\"drag_frame_s\":%.4f,\"settle_frame_s\":%.4f,\"still_pixels\":%ld,"
            "\"settle_pixels\":%ld}\n",
            n, budget, median(still), median(drag), median(settle), stillPixels, settlePixels);
        std::fflush(stdout);
    }
    return 0;
}
