// Progressive still frames: after new data a large cloud shows its first
// slice at once and fills in frame by frame, never losing a pixel it lit,
// to the picture a whole frame draws; a camera move starts over, a
// screenshot is always complete, and the switch turns it off.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdint>
#include "CameraController.h"

#include "OSGDataManager.h"
#include "OSGDataStream.h"
#include "OSGPointCloud.h"
#include "PointBudget.h"
#include "ProgressiveFrames.h"
#include "Qel3DShape.h"
#include "QelColor.h"
#include "QelDataEnums.h"
#include "QelPointCloud.h"
#include "QelRangeImageParameter.h"
#include "QelVar.h"
#include "QelVector3dArray.h"
#include "RenderTestScene.h"

namespace {

constexpr int kSide = 200;      // 40,000 points, kept in their order
constexpr long kBudget = 5000;  // 8 slices

// A wavy sheet of side x side points over 10 x 10, coloured by height.
QelPointCloud sheet(int side = kSide) {
    QelVector3dArray points(side * side);
    const float step = 10.0f / side;
    for (int i = 0; i < side; ++i)
        for (int j = 0; j < side; ++j)
            points[i * side + j] =
                QelVector3d(-5 + step * i, -5 + step * j, 0.5f * std::sin(2 * step * float(i + j)));
    QelPointCloud cloud;
    cloud.SetPoints(points);
    return cloud;
}

// A frame as painting draws it.
QImage paint(GLViewer& view) {
    return view.osgWidget()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

struct Shown {
    std::unique_ptr<GLViewer> view;
    OSGPointCloud* cloud = nullptr;
};

Shown showSheet(int width, int height, int side = kSide, long budget = kBudget) {
    Shown s{makeView(width, height, 25.0)};
    s.view->budget().setBudget(budget);
    const long id = s.view->content().addPointCloud(sheet(side));
    s.cloud = static_cast<OSGPointCloud*>(s.view->content().registry().find(int(id)));
    return s;
}

}  // namespace

TEST(ProgressiveFrames, ASampleAtOnceThenEveryFrameAddsToTheLastUntilTheWholeFrame) {
    // A cloud in its own order draws strided samples; a big one in slice
    // order draws ranges, the whole frame's points in the whole frame's order.
    struct Cloud {
        int side;
        long budget;
    };
    for (const Cloud cloud : {Cloud{kSide, kBudget}, Cloud{400, 50000}})
        for (const QSize size : {QSize(240, 200), QSize(320, 320)})
            for (const StandardView standard : {StandardView::Oblique, StandardView::Top}) {
                SCOPED_TRACE(cloud.side);
                SCOPED_TRACE(size.width());
                Shown s = showSheet(size.width(), size.height(), cloud.side, cloud.budget);
                const bool sliceOrder = !s.cloud->order().isIdentity();
                EXPECT_EQ(sliceOrder, cloud.side == 400);
                s.view->camera().moveToView(standard);
                s.view->camera().zoomFit();
                s.view->progressive().start();
                QImage frame = paint(*s.view);
                EXPECT_LE(s.cloud->drawnCount(), unsigned(cloud.budget))
                    << "the first frame: a sample";
                EXPECT_TRUE(s.view->progressive().isRefining());
                int frames = 1;
                while (s.view->progressive().isRefining() && frames < 20) {
                    const QImage next = paint(*s.view);
                    ++frames;
                    // Nothing lit before goes dark.
                    int lost = 0;
                    for (int y = 0; y < next.height(); ++y)
                        for (int x = 0; x < next.width(); ++x)
                            lost += (frame.pixel(x, y) & 0xffffff) != 0 &&
                                    (next.pixel(x, y) & 0xffffff) == 0;
                    EXPECT_EQ(lost, 0) << "frame " << frames;
                    EXPECT_GE(litPixels(next), litPixels(frame));
                    frame = next;
                }
                EXPECT_FALSE(s.view->progressive().isRefining());
                EXPECT_GT(frames, 2);
                const QImage whole = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
                keepImage(frame, "progressive-refined");
                EXPECT_LE(differingPixels(frame, whole), frame.width() * frame.height() / 1000)
                    << "points of equal depth in another order at most";
                if (sliceOrder) {
                    EXPECT_EQ(differingPixels(frame, whole), 0);
                }
            }
}

TEST(ProgressiveFrames, ACameraMoveStartsOverAScreenshotIsComplete) {
    Shown s = showSheet(260, 220);
    s.view->progressive().start();
    paint(*s.view);
    paint(*s.view);
    ASSERT_TRUE(s.view->progressive().isRefining());
    const long refined = s.view->progressive().refineFrames();
    // A screenshot in the middle is the complete picture, and so are the
    // frames after it.
    const QImage complete = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_FALSE(s.view->progressive().isRefining());
    EXPECT_EQ(s.cloud->drawnCount(), unsigned(kSide * kSide));
    EXPECT_LE(differingPixels(paint(*s.view), complete),
              complete.width() * complete.height() / 1000);

    // The camera moves: the next still frame starts from a sample again.
    s.view->progressive().start();
    paint(*s.view);
    s.view->camera().moveToView(StandardView::Front);
    s.view->progressive().start();
    paint(*s.view);
    EXPECT_LE(s.cloud->drawnCount(), unsigned(kBudget));
    EXPECT_TRUE(s.view->progressive().isRefining());
    paint(*s.view);
    EXPECT_GT(s.view->progressive().refineFrames(), refined);
}

// A streamed range image seen from above: each repaint after a band draws
// that band alone over the kept picture, and the scan at the end is the
// whole frame's picture.
TEST(ProgressiveFrames, AStreamDrawsOnlyItsNewBands) {
    constexpr int kWidth = 64, kLines = 60, kBand = 10;
    auto view = makeView(240, 240, 30.0);
    QelRangeImageParameter p;
    p.dataType = QEL_16U;
    p.width = kWidth;
    p.height = kLines;
    p.resolutionX = p.resolutionY = 0.1;
    p.resolutionZ = 0.01;
    p.zMin = -100;
    p.zMax = 100;
    const long id = view->content().initialRangeImage(p);
    ASSERT_GE(id, 1);
    auto* stream = static_cast<OSGDataStream*>(view->content().registry().find(int(id)));
    // Every line spans the same heights: later bands lie within the depth
    // range of the first.
    std::vector<std::uint16_t> samples(size_t(kWidth * kLines));
    for (int r = 0; r < kLines; ++r)
        for (int c = 0; c < kWidth; ++c)
            samples[size_t(r * kWidth + c)] = std::uint16_t(100 + 40 * std::sin(0.3 * c));
    const std::vector<unsigned char> grey(size_t(kWidth * kLines * p.colourChannels), 180);
    long appended = view->progressive().appendFrames();
    for (int start = 0; start < kLines; start += kBand) {
        const unsigned int before = stream->drawnCount();
        ASSERT_EQ(view->content().appendDataStream(id, samples.data() + start * kWidth,
                                                   grey.data() + start * kWidth * p.colourChannels,
                                                   QEL_16U, start, start + kBand),
                  0);
        // Past the streams' redraw interval, then the repaint.
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 150)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        paint(*view);
        // The first lines are drawn whole, and the camera turns to show
        // them: whole frames both.
        if (start < 2 * kBand) {
            appended = view->progressive().appendFrames();
            continue;
        }
        EXPECT_EQ(view->progressive().appendFrames(), ++appended) << start;
        EXPECT_LT(stream->drawnCount(), before + 1) << "only the new band's triangles";
        EXPECT_GT(stream->drawnCount(), 0u);
    }
    const QImage streamed = paint(*view);
    keepImage(streamed, "progressive-stream");
    const QImage whole = view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_LE(differingPixels(streamed, whole), whole.width() * whole.height() / 1000);
    EXPECT_GT(countUnlike(whole, Qt::black, 0), 2000) << "the scan is in view";
}

// A new text or measurement over a still view draws over the kept picture
// of the data, none of which is drawn again, and the picture is the whole
// frame's.
TEST(ProgressiveFrames, ATextOrAMeasurementDrawsOverTheKeptPicture) {
    Shown s = showSheet(260, 220);
    s.view->progressive().start();
    paint(*s.view);
    for (int i = 0; i < 20 && s.view->progressive().isRefining(); ++i)
        paint(*s.view);
    const long before = s.view->progressive().overlayFrames();
    QelVar text("Gap 0.12 mm");
    QelVector3d at(-3.5f, -2.5f, 0);  // sizes are in scene units
    QelColor white(255, 255, 255, 255);
    const long textId = s.view->content().addTextOverlay(text, at, 1.2f, white);
    ASSERT_GE(textId, 1);
    const QImage withText = paint(*s.view);
    EXPECT_EQ(s.view->progressive().overlayFrames(), before + 1);
    ASSERT_GE(s.view->content().addMeasurement(MeasureKind::Distance, {{-4, -4, 0}, {4, 3, 0}}), 1);
    const QImage withMeasurement = paint(*s.view);
    EXPECT_EQ(s.view->progressive().overlayFrames(), before + 2);
    EXPECT_GT(differingPixels(withText, withMeasurement), 100) << "the measurement shows";
    keepImage(withMeasurement, "progressive-overlays");
    const QImage whole = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_LE(differingPixels(withMeasurement, whole), whole.width() * whole.height() / 1000);

    // Hiding the text is an overlay frame too, and leaves the data as it was.
    ASSERT_EQ(s.view->content().setVisible(ObjectId(textId), false), 0);
    const QImage hidden = paint(*s.view);
    EXPECT_EQ(s.view->progressive().overlayFrames(), before + 3);
    EXPECT_GT(differingPixels(hidden, withMeasurement), 50) << "the text is gone";
    const QImage wholeHidden = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_LE(differingPixels(hidden, wholeHidden), whole.width() * whole.height() / 1000);
}

// Shapes are drawn after the kept picture of the data: a view with a shape
// still fills in progressively, each frame drawing the shape anew over the
// data so far, and a shape's change draws over the kept picture alone.
TEST(ProgressiveFrames, AShapeIsDrawnAnewOverTheKeptPicture) {
    Shown s = showSheet(260, 220);
    // Shapes blend with the destination's alpha: over a white background
    // they show where the data behind them is, so a picture that kept a
    // shape and then grew behind it would differ from the whole frame.
    s.view->decorations().setBackgroundColor(255, 255, 255, 255);
    Qel3DShape box;
    box.Set3DBox(QelVector3d(1, 0, 0), QelVector3d(0, 0, 0), QelVector3d(4, 3, 2));
    const long boxId = s.view->content().showShape(box);
    ASSERT_GE(boxId, 1);
    s.view->progressive().start();
    paint(*s.view);
    EXPECT_LE(s.cloud->drawnCount(), unsigned(kBudget)) << "the first frame: a sample";
    int frames = 1;
    QImage frame;
    while (s.view->progressive().isRefining() && frames++ < 40)
        frame = paint(*s.view);
    EXPECT_FALSE(s.view->progressive().isRefining());
    EXPECT_GT(s.view->progressive().refineFrames(), 1);
    const QImage whole = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_LE(differingPixels(frame, whole), whole.width() * whole.height() / 1000);

    const long overlays = s.view->progressive().overlayFrames();
    ASSERT_EQ(s.view->content().setShapeMode(ObjectId(boxId), RenderMode::Wireframe), 0);
    keepImage(frame, "progressive-shape");
    const QImage wireframe = paint(*s.view);
    EXPECT_EQ(s.view->progressive().overlayFrames(), overlays + 1);
    EXPECT_GT(differingPixels(wireframe, whole), 500) << "the faces are gone";
    const QImage wholeWireframe = s.view->grabFrame().convertToFormat(QImage::Format_RGB32);
    EXPECT_LE(differingPixels(wireframe, wholeWireframe), whole.width() * whole.height() / 1000);
    ASSERT_EQ(s.view->content().clearShape(ObjectId(boxId)), 0);
    const QImage without = paint(*s.view);
    EXPECT_EQ(s.view->progressive().overlayFrames(), overlays + 2);
    EXPECT_EQ(differingPixels(without, s.view->grabFrame().convertToFormat(QImage::Format_RGB32)),
              0);
}

TEST(ProgressiveFrames, OffEveryStillFrameIsWhole) {
    Shown s = showSheet(200, 200);
    s.view->progressive().setEnabled(false);
    s.view->progressive().start();
    paint(*s.view);
    EXPECT_EQ(s.cloud->drawnCount(), unsigned(kSide * kSide));
    EXPECT_FALSE(s.view->progressive().isRefining());
}

TEST(ProgressiveFrames, TheFrameTimeIsTunableInTheEnvironment) {
    for (const auto& [text, ms] : {std::pair<const char*, double>{"250", 250.0},
                                   {"5", ProgressiveFrames::kFrameMs},
                                   {"fast", ProgressiveFrames::kFrameMs}}) {
        setenv("QEL3D_REFINE_MS", text, 1);
        auto view = makeView(100, 100);
        unsetenv("QEL3D_REFINE_MS");
        EXPECT_EQ(view->progressive().frameMs(), ms) << text;
    }
}
