// The demo viewer: a small Qt host that opens one 3D window through the
// exported functions, as a host application would, and shows the files named
// on its command line or else the bundled machined-part sample.
//
//   qel_demo_viewer [--screenshot FILE] [FILES...]
//
// With --screenshot it renders once, saves the picture (BMP, PNG or JPG by
// the suffix) and exits, so it runs headless.
#include <QApplication>
#include <QFileInfo>
#include <QResizeEvent>
#include <QWidget>
#include <cmath>
#include <cstdio>
#include <string>

#include "MachinedPartSample.h"
#include "Qel3DGraphics.h"

using namespace QELMV;

namespace {

// The host's own window; the 3D window fills it.
class HostWindow : public QWidget {
public:
    long long view = 0;

protected:
    void resizeEvent(QResizeEvent* event) override {
        QWidget::resizeEvent(event);
        if (view) QelMove3DWnd(view, 0, 0, event->size().width(), event->size().height());
    }
};

// Loads one file by its suffix and shows it (replacing when first).
long showFile(long long view, const QString& path, bool first) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    const std::wstring wide = path.toStdWString();
    QelVar file(wide.c_str());
    Qel3DFileOperation loader;
    static const QStringList meshes{"stl", "obj", "off", "ply"};
    static const QStringList clouds{"xyz", "xyzn", "xyzrgb", "txt", "asc", "pcd"};
    if (meshes.contains(suffix)) {
        QelTriangleMesh mesh;
        if (long status = loader.Load(&mesh, file, true, true)) return status;
        return first ? QelDisplayTriangleMesh(view, mesh) : QelAdd3DRenderObject(view, mesh);
    }
    if (clouds.contains(suffix)) {
        QelPointCloud cloud;
        if (long status = loader.Load(&cloud, file, true, true)) return status;
        return first ? QelDisplayPointCloud(view, cloud) : QelAdd3DRenderObject(view, cloud);
    }
    QelRangeImage image;
    if (long status = loader.Load(&image, file, true)) return status;
    return first ? QelDisplayRangeImage(view, image) : QelAdd3DRenderObject(view, image);
}

int saveImageFormat(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == "bmp") return QEL_IMAGE_FORMAT_BMP;
    if (suffix == "jpg" || suffix == "jpeg") return QEL_IMAGE_FORMAT_JPG;
    return QEL_IMAGE_FORMAT_PNG;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QString screenshot;
    QStringList files;
    const QStringList args = app.arguments().mid(1);
    for (int i = 0; i < args.size(); ++i) {
        if (args[i] == "--screenshot" && i + 1 < args.size())
            screenshot = args[++i];
        else if (args[i] == "--help" || args[i] == "-h") {
            std::printf("usage: qel_demo_viewer [--screenshot FILE] [FILES...]\n");
            return 0;
        } else
            files << args[i];
    }

    HostWindow host;
    host.setWindowTitle("Qel3DGraphics demo viewer");
    host.resize(1000, 800);
    host.show();
    if (long status = QelCreate3DWnd(static_cast<long long>(host.winId()), 0, 0, host.width(),
                                     host.height(), &host.view)) {
        std::fprintf(stderr, "could not create the 3D window (%ld)\n", status);
        return 1;
    }

    long shown = 0;
    for (int i = 0; i < files.size(); ++i) {
        const long id = showFile(host.view, files[i], shown == 0);
        if (id >= 11000000)
            std::fprintf(stderr, "%s: not shown (%ld)\n", qPrintable(files[i]), id);
        else
            ++shown;
    }
    if (shown == 0) {
        QelRangeImage part = MachinedPartSample::build();
        const long id = QelDisplayRangeImage(host.view, part);
        if (id >= 11000000) {
            std::fprintf(stderr, "the sample could not be shown (%ld)\n", id);
            return 1;
        }
        QelVar title(L"Machined part, 90 x 60 mm, 16-bit range image");
        QelDrawMessageText(host.view, title);
    }
    // Fit, then look down on the data obliquely from above (+z), with +z up.
    Qel3DZoomFitWnd(host.view);
    QelVector3d eye, centre, up;
    QelGetCamera(host.view, &eye, &centre, &up);
    const float distance = std::hypot(eye.x - centre.x, eye.y - centre.y, eye.z - centre.z);
    QelVector3d from(centre.x - 0.45f * distance, centre.y - 0.35f * distance,
                     centre.z + 0.82f * distance);
    QelVector3d zUp(0, 0, 1);
    QelSetCamera(host.view, from, centre, zUp);

    if (screenshot.isEmpty()) return app.exec();

    app.processEvents();
    QelImage picture;
    if (long status = Qel3DScreenShot(host.view, &picture)) {
        std::fprintf(stderr, "screenshot failed (%ld)\n", status);
        return 1;
    }
    const std::wstring path = screenshot.toStdWString();
    if (!picture.SaveImage(path.c_str(), saveImageFormat(screenshot))) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(screenshot));
        return 1;
    }
    std::printf("wrote %s (%d x %d)\n", qPrintable(screenshot), picture.Width(), picture.Height());
    QelDestory3DWnd(host.view);
    return 0;
}
