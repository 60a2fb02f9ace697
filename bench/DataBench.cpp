// Times the data layer's bulk operations at 1, 4 and 10 million elements and
// prints one JSON line per measurement (median of several runs, seconds).
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <osg/Camera>
#include <random>
#include <vector>

#include "Qel3DData.h"

namespace {

template <typename F>
double medianSeconds(int runs, F&& f) {
    std::vector<double> t;
    for (int r = 0; r < runs; ++r) {
        const auto start = std::chrono::steady_clock::now();
        f();
        t.push_back(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(t.begin(), t.end());
    return t[t.size() / 2];
}

// A range image of about n samples: a tilted plane with ripples and 1 % holes.
QelRangeImage makeRangeImage(int n) {
    const int w = static_cast<int>(std::sqrt(double(n)));
    const int h = n / w;
    QelRangeImage img;
    img.SetSize(w, h, QEL_16U);
    img.SetInfo(0.05, 0.05, 0.001, 0, 0, 0);
    auto* s = reinterpret_cast<unsigned short*>(img.Data());
    for (int r = 0; r < h; ++r)
        for (int c = 0; c < w; ++c)
            s[std::size_t(r) * w + c] =
                ((r * 7 + c * 13) % 100 == 0)
                    ? 0
                    : static_cast<unsigned short>(1000 + r + 500 * std::sin(c * 0.01));
    return img;
}

}  // namespace

int main() {
    osg::ref_ptr<osg::Camera> camera = new osg::Camera;
    camera->setViewport(0, 0, 800, 800);
    camera->setViewMatrixAsLookAt(osg::Vec3d(0, 0, 300), osg::Vec3d(0, 0, 0), osg::Vec3d(0, 1, 0));
    camera->setProjectionMatrixAsPerspective(40.0, 1.0, 1.0, 1000.0);
    // A 256-vertex wobbly lasso around the window centre.
    QelPointArray lasso;
    for (int k = 0; k < 256; ++k) {
        const double a = k * 2 * M_PI / 256, r = 250 + 60 * std::sin(5 * a);
        lasso.Append(QelPoint(400 + r * std::cos(a), 400 + r * std::sin(a)));
    }

    for (int millions : {1, 4, 10}) {
        const int n = millions * 1000000;
        const QelRangeImage img = makeRangeImage(n);
        QelColorArray colors;
        const double lut =
            medianSeconds(3, [&] { QELMV::QelLUTSetting().ColorMapLUT(img, 5, &colors); });
        std::printf("{\"operation\": \"ColorMapLUT\", \"samples\": %d, \"seconds\": %.4f}\n",
                    img.Width() * img.Height(), lut);

        std::mt19937 rng(1);
        std::uniform_real_distribution<float> u(-100.f, 100.f);
        QelVector3dArray pts(n);
        for (int i = 0; i < n; ++i)
            pts[i] = QelVector3d(u(rng), u(rng), u(rng) * 0.2f);
        QelVector3dArray out;
        const double select = medianSeconds(3, [&] {
            Qel3DGraphicsIO().GetPointsInScreenPolygon(*camera, pts, lasso, &out, true);
        });
        std::printf(
            "{\"operation\": \"GetPointsInScreenPolygon\", \"points\": %d, \"selected\": %d, "
            "\"polygon_vertices\": %d, \"seconds\": %.4f}\n",
            n, out.Length(), lasso.Length(), select);
        std::fflush(stdout);
    }
    return 0;
}
