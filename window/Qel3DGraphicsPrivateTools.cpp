// The window's two tools over the view: "Select point", which reports the
// picked point to the host's callback, and "Draw lasso", whose outline
// selects from the last render object. One is on at a time.
#include <QAction>
#include <QEvent>
#include <QKeyEvent>

#include "GLViewer.h"
#include "OutlineSelection.h"
#include "PaintWidget.h"
#include "PointPicker.h"
#include "Qel3DGraphicsPrivate.h"
#include "QelColorBarDialog.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelVector3d.h"

void Qel3DGraphicsPrivate::registerSelectPoint(long long handle, QelSelectPointCallback callback,
                                               void* user) {
    if (!selectPoint_) selectPoint_ = std::make_unique<SelectPointRecord>();
    *selectPoint_ = SelectPointRecord{handle, user, callback};
}

void Qel3DGraphicsPrivate::slt_selectPoint() {
    setTool(action(ToolBarAction::SelectPoint)->isChecked() ? Tool::Pick : Tool::None);
}

void Qel3DGraphicsPrivate::slt_drawLasso() {
    setTool(action(ToolBarAction::Lasso)->isChecked() ? Tool::Lasso : Tool::None);
}

void Qel3DGraphicsPrivate::setTool(Tool tool) {
    action(ToolBarAction::SelectPoint)->setChecked(tool == Tool::Pick);
    action(ToolBarAction::Lasso)->setChecked(tool == Tool::Lasso);
    picker_->setEnabled(tool == Tool::Pick);
    // The lasso layer takes the mouse from the view while it is on; its
    // outline stays for the selection call after the tool is off.
    const bool lasso = tool == Tool::Lasso;
    paint_->setDrawingEnabled(lasso);
    paint_->setVisible(lasso);
    if (lasso) {
        paint_->setGeometry(viewer_->rect());
        paint_->raise();
        colorBar_->raise();
        paint_->setFocus();
    }
}

bool Qel3DGraphicsPrivate::eventFilter(QObject* watched, QEvent* event) {
    if (watched == viewer_ && event->type() == QEvent::Resize) paint_->setGeometry(viewer_->rect());
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        (action(ToolBarAction::SelectPoint)->isChecked() ||
         action(ToolBarAction::Lasso)->isChecked())) {
        setTool(Tool::None);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void Qel3DGraphicsPrivate::reportPickedPoint(const PickHit& hit) {
    if (!selectPoint_ || !selectPoint_->callback) return;
    // The host's callback takes the point in single precision.
    QelVector3d point(float(hit.position.x()), float(hit.position.y()), float(hit.position.z()));
    selectPoint_->callback(selectPoint_->handle, point, selectPoint_->user);
}

long Qel3DGraphicsPrivate::selectByLasso(QelPointCloud* out, bool remove) {
    bool used = false;
    const long status = OutlineSelection(*viewer_).selectPoints(
        paint_->outline(), paint_->shapeMode(), !remove, out, &used);
    if (used) paint_->clear();
    return status;
}

long Qel3DGraphicsPrivate::selectByLasso(QelRangeImage* out, bool remove) {
    bool used = false;
    const long status = OutlineSelection(*viewer_).selectRangeSamples(
        paint_->outline(), paint_->shapeMode(), !remove, out, &used);
    if (used) paint_->clear();
    return status;
}
