// Frame time of the widget path (QelOSGWidget: frame into the offscreen
// framebuffer, read-back and paint) against a bare scene-graph viewer
// drawing the same points into a framebuffer object of the same size, in
// the same process. Prints one JSON line per point count (medians, seconds).
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_frames
#include <QApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QPixmap>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <osg/ContextData>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgViewer/Viewer>
#include <random>
#include <vector>

#include "BareViewer.h"
#include "BenchTiming.h"
#include "MRenderer.h"
#include "OpenGlOffscreenSurface.h"
#include "QelOSGWidget.h"

namespace {

constexpr int kSize = 800;
constexpr int kFrames = 5;

using bench::Clock;
using bench::median;
const auto seconds = bench::since;

osg::ref_ptr<osg::Geode> makeCloud(int n) {
    std::mt19937 rng(3);
    std::uniform_real_distribution<float> u(-1.f, 1.f);
    osg::ref_ptr<osg::Vec3Array> v = new osg::Vec3Array(n);
    osg::ref_ptr<osg::Vec4ubArray> c = new osg::Vec4ubArray(n);
    c->setNormalize(true);
    for (int i = 0; i < n; ++i) {
        (*v)[i].set(u(rng), u(rng), 0.2f * u(rng));
        (*c)[i].set(static_cast<unsigned char>(128 + 127 * (*v)[i].x()), 100,
                    static_cast<unsigned char>(128 - 127 * (*v)[i].x()), 255);
    }
    osg::ref_ptr<osg::Geometry> g = new osg::Geometry;
    g->setUseDisplayList(false);
    g->setUseVertexBufferObjects(true);
    g->setVertexArray(v);
    g->setColorArray(c, osg::Array::BIND_PER_VERTEX);
    g->addPrimitiveSet(new osg::DrawArrays(GL_POINTS, 0, n));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(g);
    geode->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    return geode;
}

void aimCamera(osg::Camera* camera) {
    camera->setViewMatrixAsLookAt(osg::Vec3d(0, -1, 4), osg::Vec3d(0, 0, 0), osg::Vec3d(0, 0, 1));
    camera->setProjectionMatrixAsPerspective(40.0, 1.0, 0.1, 100.0);
    camera->setClearColor(osg::Vec4(0, 0, 0, 1));
}

// Median frame of a bare viewer in its own context and framebuffer object.
double bareViewer(osg::Node* scene) {
    BareViewer bare(kSize);
    aimCamera(bare.camera());
    bare.setScene(scene);
    std::vector<double> frames;
    for (int f = 0; f <= kFrames; ++f) {
        const auto start = Clock::now();
        bare.frame();
        if (f > 0) frames.push_back(seconds(start));  // the first frame uploads
    }
    return median(frames);
}

// Median frame of the widget path: every grab is a full paint.
double widgetPath(osg::Node* scene, double* firstFrame) {
    QelOSGWidget widget;
    widget.resize(kSize, kSize);
    widget.grab();  // creates the renderer
    aimCamera(widget.renderer()->getCamera());
    widget.renderer()->setSceneData(scene);
    auto start = Clock::now();
    widget.grab();
    *firstFrame = seconds(start);
    std::vector<double> frames;
    for (int f = 0; f < kFrames; ++f) {
        start = Clock::now();
        const QPixmap picture = widget.grab();
        frames.push_back(seconds(start));
    }
    widget.renderer()->setSceneData(nullptr);
    return median(frames);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    for (int millions : {1, 4, 10}) {
        const int n = millions * 1000000;
        osg::ref_ptr<osg::Geode> cloud = makeCloud(n);
        const double bare = bareViewer(cloud.get());
        double first = 0;
        const double widget = widgetPath(cloud.get(), &first);
        std::printf(
            "{\"points\": %d, \"size\": %d, \"bare_viewer_frame_s\": %.4f, \"widget_frame_s\": "
            "%.4f, "
            "\"widget_first_frame_s\": %.4f, \"ratio\": %.3f}\n",
            n, kSize, bare, widget, first, widget / bare);
        std::fflush(stdout);
    }
    return 0;
}
