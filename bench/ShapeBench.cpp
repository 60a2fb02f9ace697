// Shapes at scale through the exported functions: the time to show 1,000
// mixed shapes, a frame with them beside a 1-million-point cloud against
// the cloud alone (median of 5 screenshots, each one frame and its
// read-back), and the time to clear them all. One JSON line each.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_shapes
#include <cstdio>
#include <functional>
#include <vector>

#include "BenchTiming.h"
#include "HostView.h"
#include "Qel3DGraphics.h"
#include "RandomSlab.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kShapes = 1000;
constexpr int kPoints = 1000000;

// Shape i of a mix of solids, planar figures and lines over the cloud.
Qel3DShape mixedShape(int i) {
    const QelVector3d c(float(i % 40) * 2.5f - 50.f, float(i / 40) * 4.f - 50.f, 2.f);
    const QelVector3d up(0, 0, 1), none(0, 0, 0);
    Qel3DShape s;
    switch (i % 8) {
        case 0:
            s.Set3DSphere(c, 0.8f);
            break;
        case 1:
            s.Set3DBox(c, QelVector3d(10, 20, 30), QelVector3d(1, 1, 1));
            break;
        case 2:
            s.Set3DCylinder(c, up, 0.5f, 1.5f);
            break;
        case 3:
            s.Set3DCircle(c, up, 0.9f);
            break;
        case 4:
            s.Set3DCone(c, up, 0.7f, 1.5f, 0, 360);
            break;
        case 5:
            s.Set3DRect(c, none, 1.5f, 1.0f);
            break;
        case 6:
            s.Set3DLine(c, QelVector3d(c.x + 1, c.y + 1, c.z), QEL_LINE_ARROW);
            break;
        default:
            s.Set3DTorus(c, none, 0.3f, 0.9f, 0, 360, QEL_TORUS_FULL);
            break;
    }
    return s;
}

double frame(long long view) {
    std::vector<double> times;
    for (int k = 0; k < 5; ++k) {
        QelImage picture;
        const Clock::time_point start = Clock::now();
        QELMV::Qel3DScreenShot(view, &picture);
        times.push_back(since(start));
    }
    return median(times);
}

}  // namespace

int main() {
    bench::HostView host("bench_shapes", 800, 800);
    const long long view = host.view();
    if (!view) return 1;
    QelPointCloud points = bench::randomSlab(kPoints, 7, 1.f, 0.f);
    QELMV::QelDisplayPointCloud(view, points);
    QELMV::QelSetPerspective(view, QELMV::QEL_3D_VIEW_OBLIQUE);
    QELMV::Qel3DZoomFitWnd(view);
    const double alone = frame(view);

    std::vector<Qel3DShape> shapes;
    for (int i = 0; i < kShapes; ++i)
        shapes.push_back(mixedShape(i));
    const Clock::time_point shown = Clock::now();
    for (Qel3DShape& s : shapes)
        QELMV::QelShow3DShape(view, s);
    const double showSeconds = since(shown);
    const double beside = frame(view);
    const Clock::time_point cleared = Clock::now();
    QELMV::QelClearAll3DShape(view);
    const double clearSeconds = since(cleared);

    std::printf("{\"bench\":\"shapes\",\"shapes\":%d,\"show_s\":%.4f}\n", kShapes, showSeconds);
    std::printf(
        "{\"bench\":\"shapes\",\"points\":%d,\"frame_cloud_s\":%.4f,"
        "\"frame_cloud_and_shapes_s\":%.4f,\"ratio\":%.3f}\n",
        kPoints, alone, beside, beside / alone);
    std::printf("{\"bench\":\"shapes\",\"shapes\":%d,\"clear_all_s\":%.4f}\n", kShapes,
                clearSeconds);
    return 0;
}
