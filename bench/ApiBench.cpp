// End-to-end figures through the exported functions, as a host sees them,
// beside a bare scene-graph viewer drawing the same points (the floor of the
// stack) measured in the same run. Both use the same camera and projection,
// so they draw the same picture; each reports the pixels its first frame
// lit. Each measurement runs in a child process of its own so peak resident
// memory belongs to one data set.
//
//   bench_api                 all figures, one JSON line each (below 30
//                             million points the medians of three rounds)
//   bench_api cloud N slab|lattice [bare]
//                             one point-cloud run of N points: a random slab
//                             or a regular lattice (a scan's rows)
//   bench_api range SIZE      one range-image run (SIZE x SIZE, 16-bit)
//   bench_api mesh TRIANGLES  one mesh run
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_api
#include <sys/resource.h>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QWidget>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <osg/ContextData>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgViewer/Viewer>
#include <random>
#include <string>
#include <vector>

#include "BareViewer.h"
#include "BenchTiming.h"
#include "ChildRuns.h"
#include "Qel3DGraphics.h"
#include "Workloads.h"

// Xlib's macros clash with Qt's: it comes last.
#include <X11/Xlib.h>

namespace {

using bench::child;
using bench::field;
using bench::orbitEye;
using bench::Rounds;
using bench::workload;

constexpr int kSize = 800;
constexpr int kOrbitFrames = 20;
constexpr int kReplacements = 5;
constexpr int kDragFrames = 5;
using bench::Clock;
using bench::median;
using bench::since;

double peakResidentBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024.0;
}

// The floor: arrays built from the host's points, drawn by a bare viewer into
// a framebuffer object and read back, as a screenshot needs.
void bareCloud(int n, const std::string& kind) {
    std::vector<osg::Vec3> points = workload(kind, n, 3);
    BareViewer bare(kSize);
    auto frame = [&](int step) {
        bare.camera()->setViewMatrixAsLookAt(orbitEye(step), osg::Vec3d(), osg::Vec3d(0, 0, 1));
        bare.frameAndReadBack();
    };
    auto show = [&](const std::vector<osg::Vec3>& source) {
        bare.setScene(BareViewer::cloudNode(source));
    };

    auto start = Clock::now();
    show(points);
    frame(0);
    const double first = since(start);
    const long lit = bare.litPixels();
    std::vector<double> frames;
    for (int f = 1; f <= kOrbitFrames; ++f) {
        start = Clock::now();
        frame(f);
        frames.push_back(since(start));
    }
    const double shownBytes = peakResidentBytes();
    std::vector<double> replacements;
    const std::vector<osg::Vec3> other = workload(kind, n, 4);
    for (int r = 0; r < kReplacements; ++r) {
        start = Clock::now();
        show(r % 2 ? points : other);
        frame(0);
        replacements.push_back(since(start));
    }
    std::printf(
        "{\"first_s\": %.4f, \"frame_s\": %.4f, \"replace_s\": %.4f, \"lit_pixels\": %ld, "
        "\"peak_bytes\": %.0f, \"peak_bytes_replacing\": %.0f}\n",
        first, median(frames), median(replacements), lit, shownBytes, peakResidentBytes());
}

// A host window whose 3D view is kSize x kSize pixels.
struct Host {
    Display* display = XOpenDisplay(nullptr);
    Window window = 0;
    long long view = 0;
    Host() {
        window =
            XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, kSize, kSize, 0, 0, 0);
        XMapWindow(display, window);
        XSync(display, False);
        QELMV::QelCreate3DWnd(static_cast<long long>(window), &view);
        // Grow the host by what the tool bar and status line take.
        QelPointCloud probe;
        QelVector3dArray one;
        one.SetSize(1);
        one[0] = QelVector3d(0, 0, 0);
        probe.SetPoints(one);
        QELMV::QelDisplayPointCloud(view, probe);
        QelImage shot;
        QELMV::Qel3DScreenShot(view, &shot);
        // Grow the host until the view is exactly kSize x kSize.
        int height = kSize;
        for (int attempt = 0; attempt < 5 && shot.Height() != kSize; ++attempt) {
            height += kSize - shot.Height();
            XResizeWindow(display, window, kSize, unsigned(height));
            XSync(display, False);
            for (int i = 0; i < 20; ++i)
                QCoreApplication::processEvents();
            QELMV::Qel3DScreenShot(view, &shot);
        }
        QELMV::QelClear3DScene(view);
    }
    ~Host() {
        QELMV::QelDestory3DWnd(view);
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }
    // Pixels of the last screenshot that are not black.
    long lit = 0;
    double shot() {
        const auto start = Clock::now();
        QelImage image;
        if (QELMV::Qel3DScreenShot(view, &image) != 0 || image.Height() != kSize)
            std::fprintf(stderr, "unexpected screenshot (%d x %d)\n", image.Width(),
                         image.Height());
        const double seconds = since(start);
        lit = 0;
        for (int i = 0; i < image.Width() * image.Height(); ++i) {
            const unsigned char* p = image.ImageData() + 3 * i;
            lit += (p[0] | p[1] | p[2]) != 0;
        }
        return seconds;
    }
    void look(int step) {
        const osg::Vec3d e = orbitEye(step);
        QelVector3d eye(float(e.x()), float(e.y()), float(e.z())), centre(0, 0, 0), up(0, 0, 1);
        QELMV::QelSetCamera(view, eye, centre, up);
    }
};

QelPointCloud hostCloud(const std::string& kind, int n, unsigned seed) {
    const std::vector<osg::Vec3> points = workload(kind, n, seed);
    QelVector3dArray array;
    array.SetSize(n);
    for (int i = 0; i < n; ++i)
        array[i] = QelVector3d(points[i].x(), points[i].y(), points[i].z());
    QelPointCloud cloud;
    cloud.SetPoints(array);
    return cloud;
}

// The 3D view's drawing widget, as a user's mouse reaches it.
QWidget* viewWidget() {
    for (QWidget* w : QApplication::allWidgets())
        if (w->inherits("MOpenglWidget")) return w;
    return nullptr;
}

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButtons held) {
    QMouseEvent event(type, at, w->mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(w, &event);
}

long litPixels(const QImage& image) {
    long n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += (image.pixel(x, y) & 0xffffff) != 0;
    return n;
}

// Frames while the left button drags the view (under the point budget),
// then the settle frame after the release; the pixels the settle frame
// draws beside those of a screenshot (which never leaves points out) of the
// same view.
std::string dragFigures(long long view) {
    QWidget* w = viewWidget();
    if (!w) return {};
    std::vector<double> drags;
    mouse(w, QEvent::MouseButtonPress, QPoint(400, 400), Qt::LeftButton);
    w->repaint();
    for (int f = 1; f <= kDragFrames; ++f) {
        mouse(w, QEvent::MouseMove, QPoint(400 + 2 * f, 400), Qt::LeftButton);
        const auto start = Clock::now();
        w->repaint();
        drags.push_back(since(start));
    }
    mouse(w, QEvent::MouseButtonRelease, QPoint(400 + 2 * kDragFrames, 400), Qt::NoButton);
    const auto start = Clock::now();
    w->repaint();
    const double settle = since(start);
    const long settled = litPixels(w->grab().toImage());
    QelImage shot;
    QELMV::Qel3DScreenShot(view, &shot);
    long still = 0;
    for (int i = 0; i < shot.Width() * shot.Height(); ++i) {
        const unsigned char* p = shot.ImageData() + 3 * i;
        still += (p[0] | p[1] | p[2]) != 0;
    }
    char text[200];
    std::snprintf(text, sizeof text,
                  ", \"drag_frame_s\": %.4f, \"settle_frame_s\": %.4f, \"still_pixels\": %ld, "
                  "\"settle_pixels\": %ld",
                  median(drags), settle, still, settled);
    return text;
}

void apiCloud(int n, const std::string& kind) {
    QelPointCloud cloud = hostCloud(kind, n, 3);
    Host host;
    host.look(0);
    auto start = Clock::now();
    QELMV::QelDisplayPointCloud(host.view, cloud);
    host.look(0);
    host.shot();
    const double first = since(start);
    const long lit = host.lit;
    std::vector<double> frames;
    for (int f = 1; f <= kOrbitFrames; ++f) {
        host.look(f);
        frames.push_back(host.shot());
    }
    const double shownBytes = peakResidentBytes();
    host.look(0);
    const std::string drag = n >= 10000000 ? dragFigures(host.view) : std::string();
    std::vector<double> replacements;
    QelPointCloud other = hostCloud(kind, n, 4);
    for (int r = 0; r < kReplacements; ++r) {
        start = Clock::now();
        QELMV::QelDisplayPointCloud(host.view, r % 2 ? cloud : other);
        host.look(0);
        host.shot();
        replacements.push_back(since(start));
    }
    std::printf(
        "{\"first_s\": %.4f, \"frame_s\": %.4f, \"replace_s\": %.4f, \"lit_pixels\": %ld, "
        "\"peak_bytes\": %.0f, \"peak_bytes_replacing\": %.0f%s}\n",
        first, median(frames), median(replacements), lit, shownBytes, peakResidentBytes(),
        drag.c_str());
}

void apiRange(int size) {
    QelRangeImage image;
    image.SetSize(size, size, QEL_16U);
    image.SetInfo(0.05, 0.05, 0.001, 0, 0, 0);
    auto* samples = reinterpret_cast<std::uint16_t*>(image.Data());
    for (int r = 0; r < size; ++r)
        for (int c = 0; c < size; ++c)
            samples[size_t(r) * size + c] =
                static_cast<std::uint16_t>(20000 + 8000 * std::sin(r * 0.01) * std::cos(c * 0.013));
    Host host;
    const auto start = Clock::now();
    QELMV::QelDisplayRangeImage(host.view, image);
    host.shot();
    std::printf(
        "{\"kind\": \"range image\", \"size\": %d, \"display_first_frame_s\": %.4f, "
        "\"bytes_per_sample\": %.1f}\n",
        size, since(start), peakResidentBytes() / (double(size) * size));
}

void apiMesh(int triangles) {
    // A grid of (k + 1)^2 vertices with 2 k^2 triangles.
    const int k = static_cast<int>(std::sqrt(triangles / 2.0));
    QelVector3dArray vertices;
    vertices.SetSize((k + 1) * (k + 1));
    for (int i = 0; i <= k; ++i)
        for (int j = 0; j <= k; ++j)
            vertices[i * (k + 1) + j] = QelVector3d(
                float(i) / k, float(j) / k, 0.1f * std::sin(i * 0.05f) * std::cos(j * 0.05f));
    Qel3DIntArray indices;
    indices.SetSize(6 * k * k);
    int* t = indices.Data();
    for (int i = 0; i < k; ++i)
        for (int j = 0; j < k; ++j) {
            const int a = i * (k + 1) + j, b = a + 1, c = a + k + 1, d = c + 1;
            const int quad[] = {a, b, d, a, d, c};
            std::memcpy(t, quad, sizeof quad);
            t += 6;
        }
    QelTriangleMesh mesh;
    mesh.SetVertices(vertices);
    mesh.SetTriangles(indices);
    Host host;
    const auto start = Clock::now();
    QELMV::QelDisplayTriangleMesh(host.view, mesh);
    host.shot();
    std::printf("{\"kind\": \"mesh\", \"triangles\": %d, \"display_first_frame_s\": %.4f}\n",
                2 * k * k, since(start));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc >= 3) {
        const std::string what = argv[1];
        const int n = std::atoi(argv[2]);
        const std::string kind = argc >= 4 ? argv[3] : "slab";
        if (what == "cloud" && argc >= 5) {
            QApplication app(argc, argv);
            bareCloud(n, kind);
            return 0;
        }
        // The library makes the application, as for a host without Qt.
        if (what == "cloud") apiCloud(n, kind);
        if (what == "range") apiRange(n);
        if (what == "mesh") apiMesh(n);
        delete QCoreApplication::instance();
        return 0;
    }
    for (const std::string kind : {"slab", "lattice"}) {
        // Bytes per point are net of what a 1,000-point run of each path holds.
        const double baseOurs = field(child(argv[0], "cloud 1000 " + kind), "peak_bytes");
        const double baseBare = field(child(argv[0], "cloud 1000 " + kind + " bare"), "peak_bytes");
        for (int millions : {1, 4, 10, 30}) {
            const int n = millions * 1000000;
            const std::string args = "cloud " + std::to_string(n) + " " + kind;
            // A first frame is one sample and frames vary by some 10 % on
            // this machine: below 30 million points both paths run three
            // interleaved rounds and each figure is the median of its rounds.
            const int rounds = millions < 30 ? 3 : 1;
            Rounds bare, ours;
            for (int r = 0; r < rounds; ++r) {
                bare.lines.push_back(child(argv[0], args + " bare"));
                ours.lines.push_back(child(argv[0], args));
            }
            const double bytesOurs = (ours.median("peak_bytes") - baseOurs) / n;
            const double bytesBare = (bare.median("peak_bytes") - baseBare) / n;
            std::printf(
                "{\"kind\": \"point cloud\", \"workload\": \"%s\", \"points\": %d, \"size\": %d, "
                "\"rounds\": %d, \"ours\": %s, \"bare_viewer\": %s, \"ours_median\": %s, "
                "\"bare_median\": %s, \"bytes_per_point\": %.1f, \"bare_bytes_per_point\": %.1f, "
                "\"ratio_first\": %.2f, \"ratio_frame\": %.2f, \"ratio_replace\": %.2f, "
                "\"ratio_bytes\": %.2f}\n",
                kind.c_str(), n, kSize, rounds, ours.lines.back().c_str(),
                bare.lines.back().c_str(), ours.medians().c_str(), bare.medians().c_str(),
                bytesOurs, bytesBare, ours.median("first_s") / bare.median("first_s"),
                ours.median("frame_s") / bare.median("frame_s"),
                ours.median("replace_s") / bare.median("replace_s"), bytesOurs / bytesBare);
            std::fflush(stdout);
        }
    }
    for (int size : {1000, 4000, 8000}) {
        std::printf("%s\n", child(argv[0], "range " + std::to_string(size)).c_str());
        std::fflush(stdout);
    }
    std::printf("%s\n", child(argv[0], "mesh 2000000").c_str());
    return 0;
}
