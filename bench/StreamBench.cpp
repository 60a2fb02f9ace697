// Streaming at the pace of a fast profiler: a 2,048-sample-wide, 20,000-line
// 16-bit scan appended from the GUI thread in bands of 50 lines at up to
// 20,000 lines a second, processing events between bands so the view
// repaints whenever it can. Prints the achieved lines per second, repaints
// per second, the append time per band over the first and the last tenth,
// the repaint time over the first and the last tenth of the repaints, the
// finish time and peak resident memory, and the time to display the
// finished image at once, as JSON lines.
//
// Run under an X server: xvfb-run -a -s "-screen 0 1280x1024x24" ./bench_stream
#include <sys/resource.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <thread>
#include <vector>

#include "BenchTiming.h"
#include "HostView.h"
#include "Qel3DGraphics.h"

namespace {

using bench::Clock;
using bench::since;

constexpr int kWidth = 2048, kLines = 20000, kBand = 50;
constexpr double kLinesPerSecond = 20000.0;

// Records when the 3D view paints (each paint is one frame of the scene).
class FrameClock : public QObject {
public:
    std::vector<Clock::time_point> frames;

protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint && object->inherits("MOpenglWidget"))
            frames.push_back(Clock::now());
        return QObject::eventFilter(object, event);
    }
};

double peakResidentBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024.0;
}

// A part moving under the sensor: a slab with a groove and a bump.
std::vector<std::uint16_t> scanLines() {
    std::vector<std::uint16_t> s(size_t(kWidth) * kLines);
    for (int r = 0; r < kLines; ++r)
        for (int c = 0; c < kWidth; ++c) {
            double h = 2000 + 300 * std::sin(r * 0.002) + (std::abs(c - 1024) < 60 ? -400 : 0);
            const double dx = (r % 4000) - 2000.0, dy = c - 600.0;
            if (dx * dx + dy * dy < 300.0 * 300.0) h += 500;
            s[size_t(r) * kWidth + c] = std::uint16_t(h);
        }
    return s;
}

}  // namespace

int main() {
    bench::HostView host("bench_stream", 800, 800);
    const long long view = host.view();
    if (!view) return 1;
    FrameClock frames;
    QCoreApplication::instance()->installEventFilter(&frames);

    const std::vector<std::uint16_t> samples = scanLines();
    const std::vector<unsigned char> grey(size_t(kWidth) * kLines, 160);
    const long id = QELMV::QelInitialRangeImage(view, QEL_16U, kWidth, kLines, 0.05, 0, 0.02, 0,
                                                0.001, 0, -1e9, 1e9, 1);
    // The camera over the whole part from the start, as an inspection host
    // sets it before the scan.
    QelVector3d eye(200, 50, 500), centre(200, 50, 2), up(1, 0, 0);
    QELMV::QelSetCamera(view, eye, centre, up);

    std::vector<double> bandTimes;
    // The time of each call of the event loop that painted the view: what
    // a repaint costs.
    std::vector<double> repaintTimes;
    auto pump = [&] {
        const size_t painted = frames.frames.size();
        const Clock::time_point t = Clock::now();
        QCoreApplication::processEvents();
        if (frames.frames.size() > painted) repaintTimes.push_back(since(t));
    };
    const Clock::time_point start = Clock::now();
    for (int line = 0; line < kLines; line += kBand) {
        // Wait for the sensor: a band is due every kBand / kLinesPerSecond s.
        const double due = line / kLinesPerSecond;
        while (since(start) < due)
            pump();
        const Clock::time_point band = Clock::now();
        QELMV::QelAppendDataStream(
            view, id, const_cast<std::uint16_t*>(&samples[size_t(line) * kWidth]),
            const_cast<unsigned char*>(&grey[size_t(line) * kWidth]), QEL_16U, line, line + kBand);
        bandTimes.push_back(since(band));
        pump();
    }
    const double scanSeconds = since(start);
    // Frames during the scan, and the longest wait for one.
    int paints = 0;
    double longestGap = 0;
    Clock::time_point previous = start;
    for (const Clock::time_point& t : frames.frames) {
        if (std::chrono::duration<double>(t - start).count() > scanSeconds) break;
        ++paints;
        longestGap = std::max(longestGap, std::chrono::duration<double>(t - previous).count());
        previous = t;
    }
    QelImage finished;
    QelRangeImage image;
    const Clock::time_point finishing = Clock::now();
    QELMV::QelFinishDataStream(view, id, &image);
    const double finishSeconds = since(finishing);
    const double peak = peakResidentBytes();

    const Clock::time_point whole = Clock::now();
    QELMV::QelDisplayRangeImage(view, image);
    QELMV::Qel3DScreenShot(view, &finished);
    const double wholeSeconds = since(whole);

    const size_t tenth = bandTimes.size() / 10;
    double first = 0, last = 0;
    for (size_t i = 0; i < tenth; ++i) {
        first += bandTimes[i];
        last += bandTimes[bandTimes.size() - 1 - i];
    }
    first /= double(tenth);
    last /= double(tenth);
    std::printf(
        "{\"bench\":\"stream\",\"lines\":%d,\"width\":%d,\"band\":%d,"
        "\"lines_per_s\":%.0f,\"repaints_per_s\":%.1f,\"longest_gap_s\":%.3f}\n",
        kLines, kWidth, kBand, kLines / scanSeconds, paints / scanSeconds, longestGap);
    std::printf(
        "{\"bench\":\"stream\",\"append_per_band_first_tenth_s\":%.5f,"
        "\"append_per_band_last_tenth_s\":%.5f,\"ratio\":%.2f}\n",
        first, last, last / first);
    const size_t tenthPaints = std::max<size_t>(1, repaintTimes.size() / 10);
    double firstPaint = 0, lastPaint = 0;
    for (size_t i = 0; i < tenthPaints && i < repaintTimes.size(); ++i) {
        firstPaint += repaintTimes[i];
        lastPaint += repaintTimes[repaintTimes.size() - 1 - i];
    }
    std::printf(
        "{\"bench\":\"stream\",\"repaint_first_tenth_s\":%.4f,\"repaint_last_tenth_s\":%.4f,"
        "\"ratio\":%.2f}\n",
        firstPaint / double(tenthPaints), lastPaint / double(tenthPaints), lastPaint / firstPaint);
    std::printf(
        "{\"bench\":\"stream\",\"finish_s\":%.4f,\"peak_resident_bytes\":%.0f,"
        "\"display_finished_image_and_frame_s\":%.4f}\n",
        finishSeconds, peak, wholeSeconds);
    return 0;
}
