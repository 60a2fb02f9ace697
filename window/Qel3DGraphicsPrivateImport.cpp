// The window's Import action: a file chosen by the user, read by its
// suffix as a range image, a point cloud or a mesh.
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <exception>

#include "FileFormatTable.h"
#include "GLViewer.h"
#include "Qel3DFileOperation.h"
#include "Qel3DGraphicsPrivate.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "QelVar.h"
#include "SceneContent.h"
#include "StatusCodes.h"

using ImportKind = qel::FileFormatTable::ImportKind;

void Qel3DGraphicsPrivate::slt_importData() {
    const QString path = QFileDialog::getOpenFileName(
        this, "Import", QString(), QString::fromStdString(qel::FileFormatTable::importFilter()),
        nullptr, QFileDialog::DontUseNativeDialog);
    if (!path.isEmpty()) importFile(path);
}

void Qel3DGraphicsPrivate::warnLoadFailed() {
    QMessageBox::warning(this, "Warning", "load file failed", QMessageBox::Ok);
}

bool Qel3DGraphicsPrivate::importFile(const QString& path) {
    const QString suffix = QFileInfo(path).suffix().toLower();
    const ImportKind kind = qel::FileFormatTable::importKind(suffix.toStdString());
    if (kind == ImportKind::None) return false;
    const std::wstring wide = path.toStdWString();
    QelVar file(wide.c_str());
    QELMV::Qel3DFileOperation loader;
    long status = 0;
    try {
        if (kind == ImportKind::RangeImage) {
            QelRangeImage image;
            if (suffix == "ecd")
                status = loader.Load(&image, file, 1.0, 1.0, 1.0);
            else if (suffix == "gif")
                status = image.Load(wide.c_str(), 1.0, 0.0) ? 0 : 1;
            else
                status = loader.Load(&image, file, true);
            if (status == 0)
                status =
                    QelStatus::isFailure(viewer_->content().addRangeImage(image, true)) ? 1 : 0;
        } else {
            // A mesh file that holds no mesh (a PLY or OBJ of vertices only)
            // is tried again as a point cloud.
            QelTriangleMesh mesh;
            status = kind == ImportKind::Mesh ? loader.Load(&mesh, file, true, true) : 1;
            if (status == 0) {
                status = QelStatus::isFailure(viewer_->content().addTriangleMesh(mesh)) ? 1 : 0;
            } else {
                QelPointCloud cloud;
                status = loader.Load(&cloud, file, true, true);
                if (status == 0)
                    status = QelStatus::isFailure(viewer_->content().addPointCloud(cloud)) ? 1 : 0;
            }
        }
    } catch (const std::exception&) {
        status = 1;
    }
    if (status != 0) warnLoadFailed();
    return status == 0;
}
