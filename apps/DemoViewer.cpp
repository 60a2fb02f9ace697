// The demo viewer: a small Qt host that opens one 3D window through the
// exported functions, as a host application would, and shows the files named
// on its command line or else the bundled machined-part sample. Options:
// DemoOptions::usage().
#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "DemoOptions.h"
#include "MachinedPartSample.h"
#include "Qel3DGraphics.h"
#include "SensorPose.h"

using namespace QELMV;

namespace {

bool failed(long status) {
    return status >= 11000000;
}

// How the camera looks at what was shown when no --view is given.
enum class Framing {
    FromAbove,   // range images: heights along +z, seen obliquely from above
    SensorView,  // PCD scans near their sensor, in its frame: z away, y down
    Upright,     // meshes and other clouds: y up, seen from the front right
};

// The host's own window; the 3D window made in it fills it and follows its
// size by itself.
class HostWindow : public QWidget {
public:
    long long view = 0;
};

class Demo {
public:
    Demo(const DemoOptions& options, long long view) : options_(options), view_(view) {}

    // Shows one file; the first shown replaces the scene, the others are
    // added. Prints why a file could not be shown.
    bool show(const QString& path) {
        const long id = load(path);
        if (failed(id)) {
            std::fprintf(stderr, "%s: not shown: %ld %s\n", qPrintable(path), id,
                         QelGetStatusText(id));
            return false;
        }
        std::printf("%s: shown as object %ld\n", qPrintable(path), id);
        ++shown_;
        return true;
    }
    int shown() const { return shown_; }
    Framing framing() const { return framing_; }
    const QelVector3d& sensor() const { return sensor_; }

private:
    long load(const QString& path) {
        const QString suffix = QFileInfo(path).suffix().toLower();
        const std::wstring wide = path.toStdWString();
        QelVar file(wide.c_str());
        Qel3DFileOperation loader;
        static const QStringList meshes{"stl", "obj", "off", "ply"};
        static const QStringList clouds{"xyz", "xyzn", "xyzrgb", "txt", "asc", "pcd"};
        if (meshes.contains(suffix) || clouds.contains(suffix)) {
            // A mesh file without faces is shown as a point cloud, as Import does.
            QelTriangleMesh mesh;
            long status = meshes.contains(suffix) ? loader.Load(&mesh, file, true, true) : 1;
            if (status == 0)
                return place(addMesh(mesh), mesh.DeepCopyVertexColor(), Framing::Upright);
            // Scans mark missing points with NaN; a viewer has no use for them
            // (kept, they would sit at the origin and widen the view).
            QelPointCloud cloud;
            status = loader.Load(&cloud, file, true, false);
            if (status != 0) return status;
            const long id = shown_ == 0 ? QelDisplayPointCloud(view_, cloud)
                                        : QelAdd3DRenderObject(view_, cloud);
            // Two pixels close the gaps between the points of a dense scan.
            if (!failed(id)) QelSet3DElementSize(view_, id, 2);
            // Seen from the sensor only when it stood near the scan: a
            // georeferenced tile lies far from its nominal viewpoint.
            Framing framing = Framing::Upright;
            if (suffix == "pcd" && shown_ == 0) {
                const QelVector3d sensor = SensorPose::ofPcdFile(path);
                if (SensorPose::isNear(sensor, cloud)) framing = Framing::SensorView;
                sensor_ = sensor;
            }
            return place(id, cloud.DeepCopyColors(), framing);
        }
        QelRangeImage image;
        if (long status = loader.Load(&image, file, true)) return status;
        scaleRangeImage(path, image);
        const long id =
            shown_ == 0 ? QelDisplayRangeImage(view_, image) : QelAdd3DRenderObject(view_, image);
        return place(id, image.DeepCopyColors(), Framing::FromAbove);
    }

    long addMesh(QelTriangleMesh& mesh) {
        return shown_ == 0 ? QelDisplayTriangleMesh(view_, mesh)
                           : QelAdd3DRenderObject(view_, mesh);
    }

    // Applies --colors own and remembers how to frame the first object.
    long place(long id, QelColorArray colours, Framing framing) {
        if (failed(id)) return id;
        if (shown_ == 0) framing_ = framing;
        if (options_.ownColours && colours.Length() > 0)
            if (long status = QelSetRenderColor(view_, id, colours))
                std::fprintf(stderr, "object %ld keeps its height colours: %ld %s\n", id, status,
                             QelGetStatusText(status));
        return id;
    }

    // Image and CSV files carry no pixel size: --resolution gives it, or
    // the heights are scaled to span a third of the larger extent, so a
    // depth map looks like the scene and not like a needle or a wall.
    void scaleRangeImage(const QString& path, QelRangeImage& image) {
        const double* o = options_.offset;
        if (options_.haveResolution) {
            const double* r = options_.resolution;
            image.SetInfo(r[0], r[1], r[2], o[0], o[1], o[2]);
            return;
        }
        QelROI all;
        QelPoint first(0, 0), last(image.Width() - 1, image.Height() - 1);
        all.GenRect1(first, last);
        double highest = 0, lowest = 0;
        double scale = 1.0;
        if (Qel3DImageMathematics().RangeImageMaxMin(image, all, nullptr, nullptr, &highest,
                                                     &lowest) == 0 &&
            highest > lowest)
            scale = std::max(image.Width(), image.Height()) / 3.0 / (highest - lowest);
        image.SetInfo(1.0, 1.0, scale, o[0], o[1], o[2]);
        std::printf("%s: no pixel size given; height scale %.6g per sample unit\n",
                    qPrintable(path), scale);
    }

    const DemoOptions& options_;
    long long view_;
    int shown_ = 0;
    Framing framing_ = Framing::FromAbove;
    QelVector3d sensor_{0, 0, 0};
};

// Fits the data, then looks at it the way its kind is best seen.
void frame(long long view, Framing framing, const QelVector3d& sensor) {
    Qel3DZoomFitWnd(view);
    QelVector3d eye, centre, up;
    QelGetCamera(view, &eye, &centre, &up);
    const float d = std::hypot(eye.x - centre.x, eye.y - centre.y, eye.z - centre.z);
    QelVector3d from, upward;
    switch (framing) {
        case Framing::FromAbove:
            from = QelVector3d(centre.x - 0.45f * d, centre.y - 0.35f * d, centre.z + 0.82f * d);
            upward = QelVector3d(0, 0, 1);
            break;
        case Framing::SensorView:
            // From just behind the sensor, as it saw the scene.
            if (centre.z > sensor.z) {
                from = QelVector3d(sensor.x - 0.4f * (centre.x - sensor.x),
                                   sensor.y - 0.4f * (centre.y - sensor.y),
                                   sensor.z - 0.4f * (centre.z - sensor.z));
                upward = QelVector3d(0, -1, 0);
                break;
            }
            [[fallthrough]];
        case Framing::Upright:
            from = QelVector3d(centre.x + 0.4f * d, centre.y + 0.3f * d, centre.z + 0.87f * d);
            upward = QelVector3d(0, 1, 0);
            break;
    }
    QelSetCamera(view, from, centre, upward);
}

// A light from above left of the viewer, soft enough that faces turned away
// stay readable and strong enough that faces towards the viewer are bright.
void light(long long view) {
    QelVector3d direction(0.35f, -0.45f, -1.0f);  // in view coordinates, into the scene
    QelSetLightParameter(view, 1.15f, direction);
    QelSetLightParameter(view, 0.35f, 0.8f, 0.15f);
}

// The tool-bar bit of the "Measure" button.
constexpr long kMeasureButton = 0x00100000;

// The measuring box, the colour legend (through its tool-bar button, as a
// user clicks it) and the background the options ask for.
void furnish(QWidget& host, long long view, const DemoOptions& options) {
    if (options.background == "white") {
        QelColor white(255, 255, 255, 255);
        QelSet3DBackgroundColor(view, white);
    }
    QelSetAxisVisible(view, options.axis);
    // The measuring tool's button, and a distance when one is asked for.
    QelSet3DToolbarVisible(view, kMeasureButton, true);
    if (!options.measure.empty()) {
        QelVector3dArray points;
        for (size_t i = 0; i + 2 < options.measure.size(); i += 3)
            points.Append(QelVector3d(float(options.measure[i]), float(options.measure[i + 1]),
                                      float(options.measure[i + 2])));
        const long id = QelAdd3DMeasurement(view, points.Length() - 2, points);
        if (failed(id))
            std::fprintf(stderr, "the measurement could not be drawn: %s\n", QelGetStatusText(id));
    }
    if (options.edl > 0) QelSetEyeDomeLighting(view, true, options.edl, 1.4);
    if (!options.legend) return;
    for (QAction* action : host.findChildren<QAction*>())
        if (action->text() == "Show Color Bar" && !action->isChecked()) action->trigger();
}

// The path with "-half" before its suffix.
QString halfWayPath(const QString& path) {
    const QFileInfo info(path);
    return info.path() + "/" + info.completeBaseName() + "-half." + info.suffix();
}

bool saveWindow(QWidget& host, const QString& path) {
    QCoreApplication::processEvents();
    const QImage picture = host.grab().toImage();
    if (!picture.save(path)) return false;
    std::printf("wrote %s (%d x %d)\n", qPrintable(path), picture.width(), picture.height());
    return true;
}

// Streams the sample as a line scanner delivers it, 20 lines a band, the
// picture refreshed as the part grows, then shows the finished image.
bool scanSample(QWidget& host, long long view, const QString& screenshot) {
    using S = MachinedPartSample;
    QelRangeImage part = S::build();
    QelColorArray colours;
    QelLUTSetting().ColorMapLUT(part, 5, &colours);  // height colours, as the display gives
    const long id =
        QelInitialRangeImage(view, QEL_16U, S::kWidth, S::kHeight, S::kPixelSize, 0, S::kPixelSize,
                             0, S::kHeightStep, S::kHeightOffset, -1e9, 1e9, colours.Channel());
    if (failed(id)) {
        std::fprintf(stderr, "the scan could not start: %ld %s\n", id, QelGetStatusText(id));
        return false;
    }
    QelVar scanning(L"Machined part, scanning...");
    QelDrawMessageText(view, scanning);
    // Obliquely from above over the whole part, before its first line.
    const float w = S::kHeight * S::kPixelSize, h = S::kWidth * S::kPixelSize, d = 225.0f;
    QelVector3d centre(w / 2, h / 2, 10),
        from(w / 2 - 0.45f * d, h / 2 - 0.35f * d, 10 + 0.82f * d), up(0, 0, 1);
    QelSetCamera(view, from, centre, up);
    constexpr int kBand = 20;
    const int lineBytes = S::kWidth * 2;
    for (int line = 0; line < S::kHeight; line += kBand) {
        const int end = std::min(S::kHeight, line + kBand);
        QelAppendDataStream(view, id, part.Data() + size_t(line) * lineBytes,
                            colours.Data() + size_t(line) * S::kWidth * colours.Channel(), QEL_16U,
                            line, end);
        QCoreApplication::processEvents();
        if (end == S::kHeight / 2 && !screenshot.isEmpty() &&
            !saveWindow(host, halfWayPath(screenshot)))
            return false;
    }
    QelRangeImage finished;
    QelFinishDataStream(view, id, &finished);
    const long shown = QelDisplayRangeImage(view, finished);
    QelVar title(L"Machined part, 90 x 60 mm, scanned line by line");
    QelDrawMessageText(view, title);
    QelSetCamera(view, from, centre, up);
    return !failed(shown);
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    DemoOptions options;
    QString error;
    if (!options.parse(app.arguments().mid(1), &error)) {
        std::fprintf(stderr, "qel_demo_viewer: %s\n\n%s", qPrintable(error), DemoOptions::usage());
        return 1;
    }
    if (options.help) {
        std::printf("%s", DemoOptions::usage());
        return 0;
    }

    HostWindow host;
    host.setWindowTitle("Qel3DGraphics demo viewer");
    host.resize(options.width, options.height);
    host.show();
    if (long status = QelCreate3DWnd(static_cast<void*>(&host), &host.view)) {
        std::fprintf(stderr, "could not create the 3D window: %ld %s\n", status,
                     QelGetStatusText(status));
        return 1;
    }
    light(host.view);

    if (options.scan) {
        if (!scanSample(host, host.view, options.screenshot)) return 1;
        furnish(host, host.view, options);
        if (options.screenshot.isEmpty()) return app.exec();
        const bool saved = saveWindow(host, options.screenshot);
        QelDestory3DWnd(host.view);
        return saved ? 0 : 1;
    }

    Demo demo(options, host.view);
    for (const QString& file : options.files)
        demo.show(file);
    if (!options.files.isEmpty() && demo.shown() == 0) {
        std::fprintf(stderr, "qel_demo_viewer: none of the files could be shown\n");
        QelDestory3DWnd(host.view);
        return 2;
    }
    if (options.files.isEmpty()) {
        QelRangeImage part = MachinedPartSample::build();
        const long id = QelDisplayRangeImage(host.view, part);
        if (failed(id)) {
            std::fprintf(stderr, "the sample could not be shown: %ld %s\n", id,
                         QelGetStatusText(id));
            return 1;
        }
        QelVar title(L"Machined part, 90 x 60 mm, 16-bit range image");
        QelDrawMessageText(host.view, title);
    }
    furnish(host, host.view, options);
    if (options.view >= 0) {
        QelSetPerspective(host.view, static_cast<Qel3DPerspective>(options.view));
        Qel3DZoomFitWnd(host.view);
    } else {
        frame(host.view, demo.framing(), demo.sensor());
    }

    if (options.screenshot.isEmpty()) return app.exec();

    // The whole window as the host embeds it: tool bar, view, status line.
    const bool saved = saveWindow(host, options.screenshot);
    QelDestory3DWnd(host.view);
    if (!saved) std::fprintf(stderr, "could not write %s\n", qPrintable(options.screenshot));
    return saved ? 0 : 1;
}
