// Streaming through the exported functions as a scanner host does: the
// checks in order, the surface growing on screen band by band, the finished
// image, and a window cleared or destroyed in the middle of a scan.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "ApiHost.h"

using namespace QELMV;

namespace {

constexpr int kWidth = 200, kHeight = 300;

// A dome: heights 1000..3000 over the scan.
std::vector<std::uint16_t> dome() {
    std::vector<std::uint16_t> s(size_t(kWidth) * kHeight);
    for (int r = 0; r < kHeight; ++r)
        for (int c = 0; c < kWidth; ++c) {
            const double x = (r - kHeight / 2.0) / kHeight, y = (c - kWidth / 2.0) / kWidth;
            s[size_t(r) * kWidth + c] = std::uint16_t(1000 + 2000 * (1 - 2 * (x * x + y * y)));
        }
    return s;
}

struct Scan {
    long long h;
    std::vector<std::uint16_t> samples = dome();
    std::vector<unsigned char> colours = std::vector<unsigned char>(size_t(kWidth) * kHeight, 180);
    long id = 0;
    explicit Scan(long long window) : h(window) {
        id = QelInitialRangeImage(h, QEL_16U, kWidth, kHeight, 0.1, 0, 0.1, 0, 0.001, 0, -1e9, 1e9,
                                  1);
    }
    long band(int start, int end) {
        return QelAppendDataStream(h, id, samples.data() + size_t(start) * kWidth,
                                   colours.data() + size_t(start) * kWidth, QEL_16U, start, end);
    }
};

}  // namespace

TEST(Streaming, ChecksRunInOrder) {
    HostedWindow window;
    const long long h = window.handle;
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 10, 10, 1, 0, 1, 0, 1, 0, 0, 1, 0), 11200013);
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 10, 10, 1, 0, 1, 0, 1, 0, 0, 1, 5), 11200013);
    for (int type : {0, 1, 3, 5, 6, -1})
        EXPECT_EQ(QelInitialRangeImage(h, type, 10, 10, 1, 0, 1, 0, 1, 0, 0, 1, 1), 11200002)
            << type;
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 0, 10, 1, 0, 1, 0, 1, 0, 0, 1, 1), 11200003);
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 10, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1), 11200004);
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 65536, 65536, 1, 0, 1, 0, 1, 0, 0, 1, 1), 11501005);
    EXPECT_EQ(QelInitialRangeImage(h, QEL_16U, 10, 10, 1, 0, 1, 0, 1, 0, 2, 1, 1), 11200012);
    Scan scan(h);
    ASSERT_TRUE(scan.id >= 1 && scan.id < 11000000) << scan.id;
    std::uint16_t line[kWidth] = {};
    unsigned char grey[kWidth] = {};
    EXPECT_EQ(QelAppendDataStream(h, scan.id, line, grey, QEL_16U, -1, 1), 11200006);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, line, grey, QEL_16U, 2, 1), 11200007);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, nullptr, grey, QEL_16U, 0, 1), 11200003);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, line, nullptr, QEL_16U, 0, 1), 11501014);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, line, grey, QEL_32S, 0, 1), 11200005);
    EXPECT_EQ(QelAppendDataStream(h, scan.id + 1000, line, grey, QEL_16U, 0, 1), 11100022);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, line, grey, QEL_16U, 0, 1), 0);
    EXPECT_EQ(QelFinishDataStream(h, scan.id + 1000, nullptr), 11100022);
}

TEST(Streaming, TheSurfaceGrowsBandByBandAndEndsAsTheWholeImage) {
    HostedWindow window(400, 400);
    const long long h = window.handle;
    ASSERT_EQ(QelSetLightState(h, false), 0);
    Scan scan(h);
    ASSERT_TRUE(scan.id >= 1 && scan.id < 11000000);
    // A fixed camera over the whole scan (x along the lines, 30 mm; y 20 mm).
    QelVector3d eye(15, 10, 60), centre(15, 10, 2), up(1, 0, 0);
    int previous = 0;
    for (int start = 0; start < kHeight; start += 60) {
        ASSERT_EQ(scan.band(start, start + 60), 0);
        ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
        Shot shot(h);
        const int covered = shot.countUnlike(0, 0, 0);
        EXPECT_GT(covered, previous) << "band from line " << start;
        previous = covered;
        if (start == 120) shot.keep("streaming-half");
    }
    QelRangeImage finished;
    ASSERT_EQ(QelFinishDataStream(h, scan.id, &finished), 0);
    ASSERT_EQ(finished.Width(), kWidth);
    ASSERT_EQ(finished.Height(), kHeight);
    EXPECT_EQ(QelAppendDataStream(h, scan.id, scan.samples.data(), scan.colours.data(), QEL_16U,
                                  kHeight, kHeight),
              11501015);
    Shot streamed(h);
    streamed.keep("streaming-done");

    // The finished image displayed whole covers the same part of the picture.
    ASSERT_EQ(QelSetSamplingRatio(h, 4), 0);
    ASSERT_TRUE(QelDisplayRangeImage(h, finished) >= 1);
    ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
    Shot whole(h);
    whole.keep("streaming-whole");
    const int a = streamed.countUnlike(0, 0, 0), b = whole.countUnlike(0, 0, 0);
    EXPECT_NEAR(double(a) / b, 1.0, 0.03) << a << " against " << b;
}

TEST(Streaming, ClearingOrDestroyingInTheMiddleOfAScan) {
    {
        HostedWindow window;
        Scan scan(window.handle);
        ASSERT_EQ(scan.band(0, 50), 0);
        ASSERT_EQ(QelClear3DScene(window.handle), 0);
        EXPECT_EQ(scan.band(50, 100), 11100022);
        Scan again(window.handle);
        ASSERT_EQ(again.band(0, 50), 0);
        ASSERT_EQ(QelClearAllRangeImage(window.handle), 0);
        EXPECT_EQ(again.band(50, 100), 11100022);
    }
    HostedWindow window;
    Scan scan(window.handle);
    ASSERT_EQ(scan.band(0, 50), 0);
    // The fixture destroys the window with the stream half received.
}

TEST(Streaming, NarrowStreamsAcceptEveryBandAndAppear) {
    // A line sensor only a few samples wide: every band is taken, a surface
    // is drawn, and the finished image holds every line. A host's own step
    // that leaves no column still refuses.
    HostedWindow window(300, 300);
    const long long h = window.handle;
    ASSERT_EQ(QelSetLightState(h, false), 0);
    for (const int width : {1, 2, 4, 5}) {
        constexpr int kLines = 40;
        std::vector<std::uint16_t> samples(size_t(width) * kLines);
        for (size_t i = 0; i < samples.size(); ++i)
            samples[i] = std::uint16_t(1000 + 10 * (i / size_t(width)));
        std::vector<unsigned char> grey(samples.size(), 200);
        const long id =
            QelInitialRangeImage(h, QEL_16U, width, kLines, 0.5, 0, 0.5, 0, 0.01, 0, -1e9, 1e9, 1);
        ASSERT_TRUE(id >= 1 && id < 11000000) << width;
        for (int start = 0; start < kLines; start += 4)
            ASSERT_EQ(
                QelAppendDataStream(h, id, samples.data() + size_t(start) * width,
                                    grey.data() + size_t(start) * width, QEL_16U, start, start + 4),
                0)
                << "width " << width << ", band at " << start;
        QelVector3d eye(10, 1, 40), centre(10, 1, 0), up(1, 0, 0);
        ASSERT_EQ(QelSetCamera(h, eye, centre, up), 0);
        Shot shot(h);
        // A single column has no faces to draw; two or more make a surface.
        if (width > 1) {
            EXPECT_GT(shot.countUnlike(0, 0, 0), 20) << "width " << width << " draws";
        }
        QelRangeImage finished;
        ASSERT_EQ(QelFinishDataStream(h, id, &finished), 0);
        ASSERT_EQ(finished.Width(), width);
        ASSERT_EQ(finished.Height(), kLines);
        EXPECT_EQ(std::memcmp(finished.Data(), samples.data(), samples.size() * 2), 0) << width;
    }
    ASSERT_EQ(QelSetSamplingRatio(h, 4), 0);
    const long id = QelInitialRangeImage(h, QEL_16U, 4, 8, 1, 0, 1, 0, 1, 0, -1e9, 1e9, 1);
    std::vector<std::uint16_t> line(4, 1000);
    std::vector<unsigned char> grey(4, 200);
    EXPECT_EQ(QelAppendDataStream(h, id, line.data(), grey.data(), QEL_16U, 0, 1), 11501016);
}
