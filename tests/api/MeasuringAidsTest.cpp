// The cube axis and the colour bar as a host sees them: screenshots with and
// without them, the grid, the clip plane, and the legend's edits.
#include <gtest/gtest.h>

#include <QDialog>
#include <QKeyEvent>
#include <QPainter>
#include <cmath>
#include <filesystem>

#include "ApiHost.h"
#include "MachinedPartSample.h"

// Xlib names an event KeyPress too.
#undef KeyPress

using namespace QELMV;

namespace {

// A square pyramid of half width and height 'half', standing on z = 0.
QelTriangleMesh pyramidMesh(float half) {
    return meshOf(
        {{-half, -half, 0}, {half, -half, 0}, {half, half, 0}, {-half, half, 0}, {0, 0, half}},
        {0, 1, 2, 0, 2, 3, 0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4});
}

// Heights 0..10 over a 20 x 20 square centred on the origin.
QelPointCloud hill() {
    return gridCloud(90, 20.0f / 89, [](float x, float y) {
        return 5.0f + 5.0f * std::cos(x * 0.3f) * std::cos(y * 0.3f);
    });
}

// Pixels that differ between two screenshots of the same size.
int differing(const Shot& a, const Shot& b, int fromX = 0, int toX = -1) {
    if (toX < 0) toX = a.width();
    int n = 0, r1, g1, b1, r2, g2, b2;
    for (int y = 0; y < a.height(); ++y)
        for (int x = fromX; x < toX; ++x) {
            a.rgb(x, y, &r1, &g1, &b1);
            b.rgb(x, y, &r2, &g2, &b2);
            n += r1 != r2 || g1 != g2 || b1 != b2;
        }
    return n;
}

void lookFromAbove(long long h) {
    QelVector3d eye(0, 0, 60), centre(0, 0, 5), up(0, 1, 0);
    ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
}

void lookObliquely(long long h) {
    QelVector3d eye(-30, -40, 40), centre(0, 0, 5), up(0, 0, 1);
    ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
}

QDialog* colourBar(long long h) {
    for (QDialog* d : windowWidget(h)->findChildren<QDialog*>())
        if (d->findChildren<QLineEdit*>().size() == 4) return d;
    return nullptr;
}

QStringList barTexts(QDialog* bar) {
    QStringList out;
    for (QLineEdit* e : bar->findChildren<QLineEdit*>())
        out << e->text();
    return out;
}

}  // namespace

TEST(MeasuringAids, AxisDrawsAroundTheDataAndHidingItRestoresThePicture) {
    HostedWindow w(480, 420);
    QelPointCloud cloud = hill();
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, cloud)));
    lookObliquely(w.handle);
    const Shot plain(w.handle);
    ASSERT_EQ(plain.status, 0);

    ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
    EXPECT_TRUE(findAction(w.handle, "Toggle Axis")->isChecked());
    const Shot axis(w.handle);
    // Lines and labels beyond the data: columns and rows the data never reaches.
    EXPECT_GT(differing(plain, axis), 1500);
    EXPECT_GT(axis.countUnlike(0, 0, 0), plain.countUnlike(0, 0, 0) + 1000);
    axis.keep("measuring-axis-on");

    ASSERT_EQ(QelSetAxisVisible(w.handle, false), 0);
    EXPECT_FALSE(findAction(w.handle, "Toggle Axis")->isChecked());
    EXPECT_EQ(differing(plain, Shot(w.handle)), 0) << "hiding the axis restores the picture";

    // The tool-bar button does the same as the call.
    findAction(w.handle, "Toggle Axis")->trigger();
    EXPECT_EQ(differing(axis, Shot(w.handle)), 0);
}

TEST(MeasuringAids, GridOnTheFacesBehindTheData) {
    HostedWindow w(480, 420);
    QelPointCloud cloud = hill();
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, cloud)));
    ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
    lookObliquely(w.handle);
    const Shot withGrid(w.handle);
    ASSERT_EQ(QelSetGridVisible(w.handle, false), 0);
    const Shot without(w.handle);
    EXPECT_GT(differing(withGrid, without), 300);
    ASSERT_EQ(QelSetGridVisible(w.handle, true), 0);
    EXPECT_EQ(differing(withGrid, Shot(w.handle)), 0);
    // A grid set before the axis exists is kept by the axis built later.
    ASSERT_EQ(QelSetAxisVisible(w.handle, false), 0);
    ASSERT_EQ(QelSetGridVisible(w.handle, false), 0);
    ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
    EXPECT_EQ(differing(without, Shot(w.handle)), 0);
}

TEST(MeasuringAids, ClipPlaneCutsTheAxisToo) {
    HostedWindow w(480, 420);
    QelPointCloud cloud = hill();
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, cloud)));
    lookFromAbove(w.handle);
    const int middle = 240;  // x = 0 of the data lies at the middle column
    auto axisPixels = [&](int from, int to) {
        EXPECT_EQ(QelSetAxisVisible(w.handle, true), 0);
        const Shot with(w.handle);
        EXPECT_EQ(QelSetAxisVisible(w.handle, false), 0);
        return differing(with, Shot(w.handle), from, to);
    };
    const int leftBefore = axisPixels(0, middle - 20);
    const int rightBefore = axisPixels(middle + 20, 480);
    ASSERT_GT(leftBefore, 500);

    Qel3DPlane keepRight(QelVector3d(0, 0, 0), QelVector3d(1, 0, 0));
    ASSERT_EQ(QelRenderByClippingPlane(w.handle, keepRight), 0);
    const int leftAfter = axisPixels(0, middle - 20);
    EXPECT_LT(leftAfter, leftBefore / 5) << "grid, ticks and labels left of the plane are cut";
    EXPECT_GT(axisPixels(middle + 20, 480), rightBefore / 2);
}

TEST(MeasuringAids, FlatDataShowsWithoutAnAxisAndWithoutAFailure) {
    HostedWindow w(320, 260);
    ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
    QelPointCloud flat = gridCloud(20, 1.0f, [](float, float) { return 2.0f; });
    ASSERT_TRUE(isId(QelDisplayPointCloud(w.handle, flat)));
    const Shot on(w.handle);
    ASSERT_EQ(on.status, 0);
    ASSERT_EQ(QelSetAxisVisible(w.handle, false), 0);
    EXPECT_EQ(differing(on, Shot(w.handle)), 0);
    // With height added, the same window draws the axis.
    ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
    QelPointCloud raised = hill();
    ASSERT_TRUE(isId(QelAdd3DRenderObject(w.handle, raised)));
    EXPECT_GT(differing(on, Shot(w.handle)), 1000);
}

TEST(MeasuringAids, ColourBarShowsTheDataRangeAndItsEditsRecolour) {
    HostedWindow w(480, 420);
    QelPointCloud cloud = hill();
    const long id = QelDisplayPointCloud(w.handle, cloud);
    ASSERT_TRUE(isId(id));
    ASSERT_EQ(QelSet3DElementSize(w.handle, id, 4), 0);
    ASSERT_EQ(QelSetLightState(w.handle, false), 0);  // colours as the map gives them
    lookFromAbove(w.handle);
    QAction* show = findAction(w.handle, "Show Color Bar");
    ASSERT_NE(show, nullptr);
    show->trigger();
    pumpEvents();
    QDialog* bar = colourBar(w.handle);
    ASSERT_NE(bar, nullptr);
    ASSERT_TRUE(bar->isVisible());
    const QStringList range = barTexts(bar);
    ASSERT_EQ(range.size(), 4);
    EXPECT_NEAR(range[0].toDouble(), 10.0, 0.1);
    EXPECT_NEAR(range[3].toDouble(), 0.0, 0.1);
    // Adding data sets the range to the new object's heights. A strip that
    // the host colours green keeps its colour through the edits below.
    QelPointCloud strip = gridCloud(20, 0.2f, [](float x, float) { return 5 + x; });
    QelMatrix4 aside;
    aside.SetValue(0, 3, -13);
    const long stripId = QelAdd3DRenderObject(w.handle, strip);
    ASSERT_TRUE(isId(stripId));
    ASSERT_EQ(QelSetObjectModelMatrix(w.handle, stripId, aside), 0);
    QelColorArray magenta;
    magenta.Create(1, 3);
    magenta.Data()[0] = magenta.Data()[2] = 255;
    ASSERT_EQ(QelSetRenderColor(w.handle, stripId, magenta), 0);
    ASSERT_EQ(QelSet3DElementSize(w.handle, stripId, 4), 0);
    EXPECT_EQ(barTexts(bar).first(), "6.9");
    const double bottom = barTexts(bar)[3].toDouble();
    EXPECT_NEAR(bottom, 3.1, 1e-4);
    const Shot before(w.handle);
    before.keep("measuring-colour-bar");
    auto red = [](const Shot& s) {
        return s.count([](int r, int g, int b) { return r > 240 && g < 15 && b < 15; });
    };
    auto magentaPixels = [](const Shot& s) {
        return s.count([](int r, int g, int b) { return r == 255 && g == 0 && b == 255; });
    };
    ASSERT_GT(magentaPixels(before), 200);

    // A user types 5 as the top value: everything above 5 turns red.
    QLineEdit* top = bar->findChildren<QLineEdit*>().first();
    top->setText("5");
    emit top->editingFinished();
    const Shot after(w.handle);
    after.keep("measuring-colour-bar-edited");
    EXPECT_GT(red(after), red(before) + 5000);
    EXPECT_EQ(magentaPixels(after), magentaPixels(before));
    EXPECT_EQ(barTexts(bar)[1], QString::number(bottom + 2 * (5 - bottom) / 3, 'g', 5));

    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(bar, &escape);
    pumpEvents();
    EXPECT_TRUE(bar->isVisible()) << "Escape leaves the legend open";

    // Its values follow the background as the axis labels do.
    QelColor white(255, 255, 255, 255);
    ASSERT_EQ(QelSet3DBackgroundColor(w.handle, white), 0);
    EXPECT_TRUE(top->styleSheet().startsWith("color:rgb(0, 0, 0)"))
        << top->styleSheet().toStdString();

    // The ramp shows the current colour table.
    const QPoint ramp = bar->geometry().topLeft() + QPoint(5, bar->height() / 2);
    auto rampIsGrey = [&] {
        int r, g, b;
        Shot(w.handle).rgb(ramp.x(), ramp.y(), &r, &g, &b);
        return r == g && g == b;
    };
    EXPECT_FALSE(rampIsGrey());
    ASSERT_EQ(QelSetDefaultLUT(w.handle, 0), 0);
    EXPECT_TRUE(rampIsGrey());
    ASSERT_EQ(QelSetDefaultLUT(w.handle, 5), 0);

    show->trigger();
    EXPECT_FALSE(bar->isVisible());
}

// The axis and the legend over a cloud, a range image and a mesh, at every
// standard view, on a dark and a white background: one sheet each, kept for
// a person to look at.
TEST(MeasuringAids, PicturesAtTheSevenStandardViews) {
    const std::string real = std::string(QEL_SOURCE_DIR) + "/../shared/realdata/";
    struct Data {
        const char* name;
        std::function<long(long long)> show;
    };
    const std::vector<Data> kinds = {
        {"cloud",
         [&](long long h) {
             QelPointCloud cloud;
             const std::wstring file =
                 std::wstring(real.begin(), real.end()) + L"table_scene_mug_stereo_textured.pcd";
             QelVar path(file.c_str());
             if (!std::filesystem::exists(real) ||
                 Qel3DFileOperation().Load(&cloud, path, false, false) != 0)
                 cloud = hill();
             const long id = QelDisplayPointCloud(h, cloud);
             QelSet3DElementSize(h, id, 2);
             return id;
         }},
        {"range-image",
         [](long long h) {
             QelRangeImage part = MachinedPartSample::build();
             return QelDisplayRangeImage(h, part);
         }},
        {"mesh", [&](long long h) {
             QelTriangleMesh mesh;
             const std::wstring file = std::wstring(real.begin(), real.end()) + L"bunny.ply";
             QelVar path(file.c_str());
             // Without the real scans beside the project, a pyramid: it
             // shows an area from every side, as the bunny does.
             if (!std::filesystem::exists(real) ||
                 Qel3DFileOperation().Load(&mesh, path, false, true) != 0)
                 mesh = pyramidMesh(5);
             return QelDisplayTriangleMesh(h, mesh);
         }}};
    for (const Data& data : kinds)
        for (bool white : {false, true}) {
            HostedWindow w(520, 440);
            if (white) {
                QelColor background(255, 255, 255, 255);
                ASSERT_EQ(QelSet3DBackgroundColor(w.handle, background), 0);
            }
            ASSERT_TRUE(isId(data.show(w.handle))) << data.name;
            ASSERT_EQ(QelSetAxisVisible(w.handle, true), 0);
            findAction(w.handle, "Show Color Bar")->trigger();
            QImage sheet(4 * 520, 2 * 440, QImage::Format_RGB888);
            sheet.fill(Qt::gray);
            QPainter painter(&sheet);
            for (int view = 0; view <= 6; ++view) {
                ASSERT_EQ(QelSetPerspective(w.handle, static_cast<Qel3DPerspective>(view)), 0);
                ASSERT_EQ(Qel3DZoomFitWnd(w.handle), 0);
                const Shot shot(w.handle);
                ASSERT_EQ(shot.status, 0);
                const int bg = white ? 255 : 0;
                EXPECT_GT(shot.countUnlike(bg, bg, bg), 2000) << data.name << " view " << view;
                const QImage picture(shot.image.ImageData(), shot.width(), shot.height(),
                                     shot.width() * 3, QImage::Format_BGR888);
                painter.drawImage((view % 4) * 520, (view / 4) * 440, picture);
            }
            painter.end();
            const QByteArray dir = qgetenv("QEL_TEST_IMAGE_DIR");
            if (!dir.isEmpty())
                sheet.save(QString("%1/measuring-%2-%3.png")
                               .arg(QString::fromUtf8(dir), data.name, white ? "white" : "dark"));
        }
}
