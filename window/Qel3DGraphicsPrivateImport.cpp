// The window's Import action: a file chosen by the user, read by its
// suffix as a range image, a point cloud or a mesh.
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <exception>

#include "GLViewer.h"
#include "Qel3DFileOperation.h"
#include "Qel3DGraphicsPrivate.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "QelVar.h"

namespace {

const char* const kImportFilter =
    "RangeImage Files (*.srt *.png *.jpg *.bmp *.ecd *.csv *.mri *.tif *.jxr);;PointCloud File "
    "(*.spt *.pcd *.txt *.asc *.obj *.ply *.xyz *.xyzn *.xyzrgb);;TriangleMesh Files (*.stmt "
    "*.obj *.off *.ply *.stl)";

enum class FileKind { None, Mesh, PointCloud, RangeImage };

FileKind kindOfSuffix(const QString& suffix) {
    static const QStringList mesh{"stl", "obj", "off", "ply", "stmt"};
    static const QStringList cloud{"xyzn", "xyzrgb", "txt", "asc", "xyz", "spt", "pcd"};
    static const QStringList range{"png", "jpg", "bmp", "gif", "srt",
                                   "ecd", "csv", "mri", "tif", "jxr"};
    if (mesh.contains(suffix)) return FileKind::Mesh;
    if (cloud.contains(suffix)) return FileKind::PointCloud;
    if (range.contains(suffix)) return FileKind::RangeImage;
    return FileKind::None;
}

}  // namespace

void Qel3DGraphicsPrivate::slt_importData() {
    const QString path = QFileDialog::getOpenFileName(this, "Import", QString(), kImportFilter,
                                                      nullptr, QFileDialog::DontUseNativeDialog);
    if (!path.isEmpty()) importFile(path);
}

void Qel3DGraphicsPrivate::warnLoadFailed() {
    QMessageBox::warning(this, "Warning", "load file failed", QMessageBox::Ok);
}

bool Qel3DGraphicsPrivate::importFile(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    const FileKind kind = kindOfSuffix(suffix);
    if (kind == FileKind::None) return false;
    const std::wstring wide = path.toStdWString();
    QelVar file(wide.c_str());
    QELMV::Qel3DFileOperation loader;
    long status = 0;
    try {
        if (kind == FileKind::RangeImage) {
            QelRangeImage image;
            if (suffix == "ecd")
                status = loader.Load(&image, file, 1.0, 1.0, 1.0);
            else if (suffix == "gif")
                status = image.Load(wide.c_str(), 1.0, 0.0) ? 0 : 1;
            else
                status = loader.Load(&image, file, true);
            if (status == 0) status = viewer_->displayRangeImage(image) >= 11000000 ? 1 : 0;
        } else {
            // A mesh file that holds no mesh (a PLY or OBJ of vertices only)
            // is tried again as a point cloud.
            QelTriangleMesh mesh;
            status = kind == FileKind::Mesh ? loader.Load(&mesh, file, true, true) : 1;
            if (status == 0) {
                status = viewer_->addTriangleMesh(mesh) >= 11000000 ? 1 : 0;
            } else {
                QelPointCloud cloud;
                status = loader.Load(&cloud, file, true, true);
                if (status == 0) status = viewer_->addPointCloud(cloud) >= 11000000 ? 1 : 0;
            }
        }
    } catch (const std::exception&) {
        status = 1;
    }
    if (status != 0) warnLoadFailed();
    return status == 0;
}
