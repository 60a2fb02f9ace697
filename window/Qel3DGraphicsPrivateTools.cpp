// The window's tools over the view: "Select point", which reports the
// picked point to the host's callback, "Draw lasso", whose outline selects
// from the last render object, and "Measure", whose clicks make
// measurements. One is on at a time.
#include <QAction>
#include <QActionGroup>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>

#include "GLViewer.h"
#include "MeasureTool.h"
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

void Qel3DGraphicsPrivate::slt_measure() {
    if (action(ToolBarAction::Measure)->isChecked())
        startMeasuring(measureKind_);
    else
        stopMeasuring();
}

void Qel3DGraphicsPrivate::startMeasuring(MeasureKind kind) {
    measureKind_ = kind;
    measureKinds_->actions().at(static_cast<int>(kind))->setChecked(true);
    setTool(Tool::Measure);
}

void Qel3DGraphicsPrivate::stopMeasuring() {
    if (measure_->kind()) setTool(Tool::None);
}

void Qel3DGraphicsPrivate::buildMeasureMenu() {
    auto* menu = new QMenu(this);
    measureKinds_ = new QActionGroup(this);
    const char* const kKinds[] = {"Distance", "Angle", "Height"};
    for (int k = 0; k < 3; ++k) {
        QAction* a = menu->addAction(kKinds[k]);
        a->setCheckable(true);
        a->setChecked(k == 0);
        measureKinds_->addAction(a);
        connect(a, &QAction::triggered, this,
                [this, k] { startMeasuring(static_cast<MeasureKind>(k)); });
    }
    action(ToolBarAction::Measure)->setMenu(menu);
}

void Qel3DGraphicsPrivate::registerMeasure(long long handle, QelMeasureCallback callback,
                                           void* user) {
    if (!measureReport_) measureReport_ = std::make_unique<MeasureRecord>();
    *measureReport_ = MeasureRecord{handle, user, callback};
}

void Qel3DGraphicsPrivate::reportMeasurement(ObjectId id, MeasureKind kind, double value) {
    if (measureReport_ && measureReport_->callback)
        measureReport_->callback(measureReport_->handle, id, static_cast<int>(kind), value,
                                 measureReport_->user);
}

void Qel3DGraphicsPrivate::setTool(Tool tool) {
    action(ToolBarAction::SelectPoint)->setChecked(tool == Tool::Pick);
    action(ToolBarAction::Lasso)->setChecked(tool == Tool::Lasso);
    action(ToolBarAction::Measure)->setChecked(tool == Tool::Measure);
    picker_->setEnabled(tool == Tool::Pick);
    measure_->setKind(tool == Tool::Measure ? std::optional<MeasureKind>(measureKind_)
                                            : std::nullopt);
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
    const bool escape = event->type() == QEvent::KeyPress &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (escape && measure_->pointCount() > 0) {
        measure_->cancel();
        return true;
    }
    if (escape && (action(ToolBarAction::SelectPoint)->isChecked() ||
                   action(ToolBarAction::Lasso)->isChecked() || measure_->kind())) {
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
