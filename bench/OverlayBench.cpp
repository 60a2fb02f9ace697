// What a change over a still view costs: a window showing a 10-million-point
// cloud, the time from a new message text to the window painted with it,
// while paints show the last frame again and while each draws a frame
// (QEL3D_INCREMENTAL=0), and from a new text overlay in the view, or a
// shape's new drawing mode, to the window painted with it, medians of 7.
// One JSON line.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_overlay [MILLIONS]
#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "BenchTiming.h"
#include "CameraController.h"
#include "GLViewer.h"
#include "Qel3DGraphicsPrivate.h"
#include "Qel3DShape.h"
#include "QelColor.h"
#include "QelOSGWidget.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "RandomSlab.h"
#include "SceneContent.h"

namespace {

using bench::Clock;
using bench::median;
using bench::since;

constexpr int kRounds = 7;

void settle() {
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// From a new message to the window painted with it.
double messageChange(Qel3DGraphicsPrivate& window, int round) {
    const Clock::time_point start = Clock::now();
    window.drawMessageText(QelVar(("Inspection " + std::to_string(round) + ": OK").c_str()));
    // The paints the change asks for, as the event loop runs them.
    settle();
    return since(start);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const int millions = argc > 1 ? std::atoi(argv[1]) : 10;
    Qel3DGraphicsPrivate window(nullptr, true);
    window.resize(800, 800);
    window.show();
    settle();
    GLViewer* view = window.viewer();
    if (view->content().addPointCloud(bench::randomSlab(millions * 1000000, 3, 1.f, 0.02f)) >=
        11000000)
        return 1;
    view->camera().zoomFit();
    settle();

    std::vector<double> reused, whole;
    long framesReused = 0, framesWhole = 0;
    for (int round = 0; round < kRounds; ++round) {
        view->osgWidget()->setIncremental(true);
        long before = view->osgWidget()->paintedFrames();
        reused.push_back(messageChange(window, 2 * round));
        framesReused += view->osgWidget()->paintedFrames() - before;
        view->osgWidget()->setIncremental(false);
        before = view->osgWidget()->paintedFrames();
        whole.push_back(messageChange(window, 2 * round + 1));
        framesWhole += view->osgWidget()->paintedFrames() - before;
    }
    // A text drawn in the view over the kept picture of the data.
    view->osgWidget()->setIncremental(true);
    view->camera().zoomFit();
    settle();
    std::vector<double> texts;
    for (int round = 0; round < kRounds; ++round) {
        QelVar text(("Gap " + std::to_string(round)).c_str());
        QelVector3d at(0, 0, 0);
        QelColor white(255, 255, 255, 255);
        const Clock::time_point start = Clock::now();
        view->content().addTextOverlay(text, at, 12, white);
        settle();
        texts.push_back(since(start));
    }
    // A box over the data, drawn as faces and as edges in turn.
    Qel3DShape box;
    box.Set3DBox(QelVector3d(0, 0, 0), QelVector3d(0, 0, 0), QelVector3d(0.5f, 0.5f, 0.5f));
    const long boxId = view->content().showShape(box);
    settle();
    std::vector<double> shapes;
    for (int round = 0; round < kRounds && boxId > 0; ++round) {
        const Clock::time_point start = Clock::now();
        view->content().setShapeMode(ObjectId(boxId),
                                     round % 2 ? RenderMode::Faces : RenderMode::Wireframe);
        settle();
        shapes.push_back(since(start));
    }
    std::printf(
        "{\"bench\":\"overlay\",\"points\":%d,\"message_change_s\":%.4f,\"scene_frames\":%ld,"
        "\"message_change_whole_frame_s\":%.4f,\"scene_frames_whole\":%ld,"
        "\"text_overlay_added_s\":%.4f,\"shape_mode_change_s\":%.4f}\n",
        millions * 1000000, median(reused), framesReused, median(whole), framesWhole, median(texts),
        shapes.empty() ? -1.0 : median(shapes));
    return 0;
}
