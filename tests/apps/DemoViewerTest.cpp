// The demo viewer as a user runs it: files that cannot be shown are named
// with their status, the exit status says whether anything was shown, and
// plain depth maps get a height scale.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QImage>
#include <QRect>
#include <fstream>
#include <sstream>

#include "../TempDir.h"

namespace {

struct DemoRun {
    int exitCode = -1;
    std::string out, err;
};

std::string slurp(const std::string& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// Runs the demo viewer with the arguments (each quoted by the caller).
DemoRun demo(const TempDir& dir, const std::string& arguments) {
    const std::string out = dir.file("stdout"), err = dir.file("stderr");
    // The GL driver's one-time allocations are no leaks of ours.
    const std::string command = "ASAN_OPTIONS=detect_leaks=0:intercept_strndup=0 '" +
                                std::string(QEL_DEMO_VIEWER) + "' " + arguments + " >'" + out +
                                "' 2>'" + err + "'";
    DemoRun run;
    const int status = std::system(command.c_str());
    run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = slurp(out);
    run.err = slurp(err);
    return run;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(DemoViewer, NamesWhatItCannotShowAndFailsWhenNothingIsShown) {
    TempDir dir;
    const std::string broken = dir.write("broken.stl", "neither ascii nor binary");
    const std::string shot = dir.file("shot.png");
    const DemoRun none =
        demo(dir, "--screenshot '" + shot + "' '" + dir.file("missing.ply") + "' '" + broken + "'");
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_TRUE(contains(none.err, "missing.ply: not shown: 11601002 the file cannot be read"))
        << none.err;
    EXPECT_TRUE(contains(none.err, "broken.stl: not shown: 1160100")) << none.err;
    EXPECT_FALSE(std::ifstream(shot).good()) << "the sample must not stand in for named files";

    // One good file among bad ones: shown alone, the whole window saved.
    const std::string cloud = dir.write("scan.xyz", "0 0 0\n1 0 0\n0 1 1\n1 1 2\n");
    const DemoRun some = demo(dir, "--size 640,480 --screenshot '" + shot + "' '" +
                                       dir.file("missing.ply") + "' '" + cloud + "'");
    EXPECT_EQ(some.exitCode, 0) << some.err;
    EXPECT_TRUE(contains(some.err, "missing.ply: not shown")) << some.err;
    EXPECT_TRUE(contains(some.out, "scan.xyz: shown as object")) << some.out;
    const QImage window(QString::fromStdString(shot));
    ASSERT_EQ(window.size(), QSize(640, 480));
    // The tool bar (white) above the view (black) and the status line below.
    EXPECT_GT(qGray(window.pixel(600, 8)), 200);
    EXPECT_LT(qGray(window.pixel(600, 240)), 40);
    EXPECT_GT(qGray(window.pixel(600, 475)), 200);
}

TEST(DemoViewer, OptionsAndTheirMistakes) {
    TempDir dir;
    const DemoRun help = demo(dir, "--help");
    EXPECT_EQ(help.exitCode, 0);
    for (const char* option : {"--screenshot", "--resolution", "--offset", "--view", "--colors",
                               "--size", "Exit status"})
        EXPECT_TRUE(contains(help.out, option)) << option;
    for (const char* bad : {"--view sideways", "--colors pink", "--size 10,x", "--resolution 1,1",
                            "--bogus 1", "--offset"}) {
        const DemoRun run = demo(dir, bad);
        EXPECT_EQ(run.exitCode, 1) << bad;
        EXPECT_TRUE(contains(run.err, "usage:")) << bad;
    }
}

TEST(DemoViewer, PlainDepthMapsGetAHeightScaleUnlessAResolutionIsGiven) {
    TempDir dir;
    // 300 x 200 samples from 1000 to 4000: a third of 300 pixels over 3000
    // sample units.
    QImage depth(300, 200, QImage::Format_Grayscale16);
    for (int y = 0; y < 200; ++y) {
        auto* row = reinterpret_cast<quint16*>(depth.scanLine(y));
        for (int x = 0; x < 300; ++x)
            row[x] = static_cast<quint16>(1000 + 10 * x);
    }
    const std::string png = dir.file("depth.png");
    ASSERT_TRUE(depth.save(QString::fromStdString(png)));
    const std::string shot = dir.file("shot.png");
    const DemoRun scaled = demo(dir, "--screenshot '" + shot + "' '" + png + "'");
    EXPECT_EQ(scaled.exitCode, 0) << scaled.err;
    EXPECT_TRUE(contains(scaled.out, "height scale 0.0334448")) << scaled.out;
    const DemoRun given = demo(
        dir, "--resolution 0.1,0.1,0.001 --view top --screenshot '" + shot + "' '" + png + "'");
    EXPECT_EQ(given.exitCode, 0) << given.err;
    EXPECT_FALSE(contains(given.out, "height scale")) << given.out;
}

TEST(DemoViewer, ScanStreamsTheSampleAndSavesHalfWayAndAtTheEnd) {
    TempDir dir;
    const std::string shot = dir.file("scan.png");
    const DemoRun run = demo(dir, "--scan --size 500,400 --screenshot '" + shot + "'");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    const QImage half(QString::fromStdString(dir.file("scan-half.png")));
    const QImage end(QString::fromStdString(shot));
    ASSERT_EQ(half.size(), QSize(500, 400));
    ASSERT_EQ(end.size(), QSize(500, 400));
    // Half the part is on screen half-way: fewer non-black pixels in the view.
    auto covered = [](const QImage& image) {
        int n = 0;
        for (int y = 50; y < image.height() - 30; ++y)
            for (int x = 0; x < image.width(); ++x)
                n += qGray(image.pixel(x, y)) > 30;
        return n;
    };
    EXPECT_LT(covered(half), covered(end) * 0.85);
    EXPECT_GT(covered(half), covered(end) * 0.3);
}

TEST(DemoViewer, AGeoreferencedTileFillsTheViewAndAScanIsSeenFromItsSensor) {
    // An airborne tile in map metres whose header puts the viewpoint at the
    // origin, 5,400 km away: framed as any cloud, not from the origin.
    TempDir dir;
    std::ostringstream tile;
    constexpr int kSide = 60;
    tile << "# .PCD v0.7\nVERSION 0.7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 1\n"
         << "WIDTH " << kSide * kSide << "\nHEIGHT 1\nVIEWPOINT 0 0 0 1 0 0 0\nPOINTS "
         << kSide * kSide << "\nDATA ascii\n";
    for (int i = 0; i < kSide; ++i)
        for (int j = 0; j < kSide; ++j)
            tile << 512000 + 4 * i << ' ' << 5403000 + 4 * j << ' ' << 300 + (i * j) % 17 << '\n';
    const std::string path = dir.write("tile.pcd", tile.str());
    const std::string shot = dir.file("tile.png");
    const DemoRun run = demo(
        dir, "--size 640,480 --no-axis --no-legend --screenshot '" + shot + "' '" + path + "'");
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const QImage window(QString::fromStdString(shot));
    if (const char* keep = std::getenv("QEL_TEST_IMAGE_DIR"))
        window.save(QString(keep) + "/demo-georeferenced-tile.png");
    ASSERT_FALSE(window.isNull());
    // The width of what the view shows (below the tool bar, above the
    // status line): a dot would be a pixel or two.
    auto litBox = [&](const QImage& image) {
        QRect box;
        for (int y = 60; y < image.height() - 30; ++y)
            for (int x = 0; x < image.width(); ++x)
                if (qGray(image.pixel(x, y)) > 30) box |= QRect(x, y, 1, 1);
        return box;
    };
    EXPECT_GT(litBox(window).width(), 640 / 5);

    // A scan whose sensor stood at its viewpoint (a stereo camera's cloud in
    // front of it, along +z) is framed from there, and fills the view too.
    std::ostringstream near;
    near << "# .PCD v0.7\nVERSION 0.7\nFIELDS x y z\nSIZE 4 4 4\nTYPE F F F\nCOUNT 1 1 1\n"
         << "WIDTH " << kSide * kSide << "\nHEIGHT 1\nVIEWPOINT 10 0 0 1 0 0 0\nPOINTS "
         << kSide * kSide << "\nDATA ascii\n";
    for (int i = 0; i < kSide; ++i)
        for (int j = 0; j < kSide; ++j)
            near << 10 + 0.02 * (i - kSide / 2) << ' ' << 0.02 * (j - kSide / 2) << ' '
                 << 3.0 + 0.001 * ((i * j) % 17) << '\n';
    const std::string nearPath = dir.write("near.pcd", near.str());
    const DemoRun seen = demo(
        dir, "--size 640,480 --no-axis --no-legend --screenshot '" + shot + "' '" + nearPath + "'");
    ASSERT_EQ(seen.exitCode, 0) << seen.err;
    if (const char* keep = std::getenv("QEL_TEST_IMAGE_DIR"))
        QImage(QString::fromStdString(shot)).save(QString(keep) + "/demo-sensor-scan.png");
    // Seen face on from its sensor: the square patch is as tall as wide.
    const QRect faceOn = litBox(QImage(QString::fromStdString(shot)));
    EXPECT_GT(faceOn.width(), 640 / 5);
    EXPECT_NEAR(faceOn.height(), faceOn.width(), faceOn.width() / 10);
}
