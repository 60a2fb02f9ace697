// What a click and a lasso cost on large clouds: the time to pick the point
// under the view's centre and to select by a lasso over the left half of
// the view, for 1 and 10 million points (medians of 5). One JSON line per
// size.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_selection
#include <QApplication>
#include <cstdio>
#include <osgViewer/Viewer>
#include <vector>

#include "BenchTiming.h"
#include "GLViewer.h"
#include "OutlineSelection.h"
#include "PointPicker.h"
#include "QelOSGWidget.h"
#include "SlabView.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    for (int points : {1000000, 10000000}) {
        GLViewer view;
        if (!bench::showSlab(view, points, 5, 1.f, 0.02f)) return 1;
        osg::Camera& camera = *view.osgWidget()->viewer()->getCamera();
        std::vector<double> picks, lassos;
        int hits = 0;
        size_t selected = 0;
        const QVector<QPointF> lasso = {{0, 0}, {400, 0}, {400, 800}, {0, 800}};  // the left half
        for (int k = 0; k < 5; ++k) {
            PickHit hit;
            Clock::time_point start = Clock::now();
            hits += PointPicker::pick(camera, *view.root(), 400 + k, 400, &hit);
            picks.push_back(since(start));
            QelPointCloud out;
            bool used = false;
            start = Clock::now();
            OutlineSelection(view).selectPoints(lasso, LassoShape::FreePolygon, true, &out, &used);
            lassos.push_back(since(start));
            selected = static_cast<size_t>(out.Length());
        }
        std::printf(
            "{\"bench\":\"selection\",\"points\":%d,\"pick_s\":%.4f,\"hits\":%d,"
            "\"lasso_s\":%.4f,\"selected\":%zu}\n",
            points, median(picks), hits, median(lassos), selected);
    }
    return 0;
}
