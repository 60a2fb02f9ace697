#include "Qel3DGraphicsPrivate.h"

#include <QAction>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

#include "CameraController.h"
#include "ColorMapIndex.h"
#include "EyeDomeLighting.h"
#include "GLViewer.h"
#include "LightController.h"
#include "MeasureTool.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "PaintWidget.h"
#include "PointPicker.h"
#include "PropertyDlg.h"
#include "QelColorBarDialog.h"
#include "QelImage.h"
#include "QelOSGWidget.h"
#include "QelPoint.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "SceneContent.h"
#include "ScreenCapture.h"
#include "ShaderADS.h"
#include "StatusCodes.h"
#include "ViewDecorations.h"
#include "WindowStatus.h"

namespace {

const char* const kScreenShotFilter = "BMP File (*.bmp);;PNG File (*.png);;JPG File (*.jpg)";

}  // namespace

Qel3DGraphicsPrivate::Qel3DGraphicsPrivate(QWidget* parent, bool parentIsToolkitWidget)
    : QWidget(parent), parentIsToolkitWidget_(parentIsToolkitWidget) {
    setObjectName("Qel3DGraphicsPrivate");
    resize(800, 800);
    setFocusPolicy(Qt::StrongFocus);
    setWindowTitle("Form");
    layout_ = new QVBoxLayout(this);
    layout_->setSpacing(0);
    layout_->setSizeConstraint(QLayout::SetDefaultConstraint);
    layout_->setContentsMargins(0, 0, 0, 0);

    viewer_ = new GLViewer(this);
    viewer_->setFocusPolicy(Qt::StrongFocus);
    viewer_->setStyleSheet(QString());
    viewer_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    layout_->addWidget(viewer_);

    buildToolBar();

    status_ = new WindowStatus(this, viewer_);
    layout_->addWidget(status_->statusLine());

    colorBar_ = new QelColorBarDialog(viewer_);
    colorBar_->setTextColour(Qt::white);  // the inverse of the black background
    colorBar_->hide();

    connect(viewer_, &GLViewer::sig_infoText, status_, &WindowStatus::setStatusLines);
    connect(viewer_, &GLViewer::sig_heightRange, colorBar_, &QelColorBarDialog::setRange);
    connect(viewer_, &GLViewer::sig_labelColour, colorBar_, &QelColorBarDialog::setTextColour);
    connect(colorBar_, &QelColorBarDialog::sig_MinMax, &viewer_->content(),
            &SceneContent::applyHeightRange);

    paint_ = new PaintWidget(viewer_);
    paint_->setFocusPolicy(Qt::StrongFocus);
    paint_->hide();
    picker_ = new PointPicker(viewer_, this);
    measure_ = new MeasureTool(viewer_, this);
    connect(measure_, &MeasureTool::sig_measured, this, &Qel3DGraphicsPrivate::reportMeasurement);
    connect(picker_, &PointPicker::sig_pointPicked, this, &Qel3DGraphicsPrivate::reportPickedPoint);
    viewer_->installEventFilter(this);
    viewer_->osgWidget()->installEventFilter(this);
    paint_->installEventFilter(this);
    connect(this, &Qel3DGraphicsPrivate::sig_setNumLabelVisible, this,
            &Qel3DGraphicsPrivate::slt_setNumLabelVisible);
    connect(this, &Qel3DGraphicsPrivate::sigUpdateClearScene, this,
            &Qel3DGraphicsPrivate::slt_UpdateClearScene);
}

Qel3DGraphicsPrivate::~Qel3DGraphicsPrivate() = default;

void Qel3DGraphicsPrivate::setWindowNumber(int number, bool visible) {
    if (visible) status_->setNumber(number);
    emit sig_setNumLabelVisible(visible);
}

void Qel3DGraphicsPrivate::slt_setNumLabelVisible(bool visible) {
    status_->badge()->setVisible(visible);
}

void Qel3DGraphicsPrivate::drawMessageText(const QelVar& text) {
    status_->setMessage(text);
}

void Qel3DGraphicsPrivate::moveMessageText(const QelPoint& position) {
    status_->moveMessage(position);
}

void Qel3DGraphicsPrivate::setStatusbarVisible(bool visible) {
    status_->statusLine()->setVisible(visible);
}

void Qel3DGraphicsPrivate::setStatusLogLevel(int level) {
    status_->setLogLevel(level);
}

void Qel3DGraphicsPrivate::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    status_->showStatusText();
    colorBar_->moveMessage();
}

void Qel3DGraphicsPrivate::setElementStateForAll(RenderMode mode) {
    viewer_->content().setElementStateForAll(mode);
    action(ToolBarAction::RenderPoints)->setChecked(mode == RenderMode::Points);
    action(ToolBarAction::RenderEdges)->setChecked(mode == RenderMode::Wireframe);
    action(ToolBarAction::RenderFaces)->setChecked(mode == RenderMode::Faces);
}

void Qel3DGraphicsPrivate::slt_displayPointMode() {
    setElementStateForAll(RenderMode::Points);
}

void Qel3DGraphicsPrivate::slt_displayLineMode() {
    setElementStateForAll(RenderMode::Wireframe);
}

void Qel3DGraphicsPrivate::slt_displayFaceMode() {
    setElementStateForAll(RenderMode::Faces);
}

void Qel3DGraphicsPrivate::slt_changedRenderColor() {
    // Checked: each object's own colours; unchecked: colours by height.
    viewer_->content().setUseHeightColours(!action(ToolBarAction::ColourMode)->isChecked());
}

void Qel3DGraphicsPrivate::slt_showColorBar(bool visible) {
    if (!visible) {
        colorBar_->hide();
        return;
    }
    colorBar_->setScheme(ColorMapIndex::current());
    if (!colorBar_->isVisible()) {
        // Top right of the view, clear of the number badge.
        colorBar_->move(std::max(0, viewer_->width() - colorBar_->width() - 12), 48);
        colorBar_->resize(colorBar_->width(), std::clamp(viewer_->height() / 3, 160, 320));
    }
    colorBar_->show();
    colorBar_->raise();
}

void Qel3DGraphicsPrivate::setAxisVisible(bool visible) {
    action(ToolBarAction::Axis)->setChecked(visible);
    viewer_->decorations().setAxisVisible(visible);
}

void Qel3DGraphicsPrivate::slt_toggleAxis(bool visible) {
    viewer_->decorations().setAxisVisible(visible);
}

void Qel3DGraphicsPrivate::slt_resetView() {
    viewer_->camera().zoomFit();
}

void Qel3DGraphicsPrivate::colourTableChanged() {
    colorBar_->setScheme(ColorMapIndex::current());
}

void Qel3DGraphicsPrivate::setLightState(bool on) {
    action(ToolBarAction::Light)->setChecked(on);
    viewer_->light().setLightState(on);
}

void Qel3DGraphicsPrivate::setEyeDome(bool on, double strength, double radius) {
    const QSignalBlocker quiet(action(ToolBarAction::EyeDome));
    action(ToolBarAction::EyeDome)->setChecked(on);
    viewer_->eyeDome().setEnabled(on, strength, radius);
}

void Qel3DGraphicsPrivate::slt_toggleEyeDome(bool on) {
    viewer_->eyeDome().setEnabled(on);
}

void Qel3DGraphicsPrivate::slt_toggleLight() {
    viewer_->light().setLightState(action(ToolBarAction::Light)->isChecked());
}

// Points the light along the current line of sight.
void Qel3DGraphicsPrivate::slt_moveLight() {
    QelVector3d eye, centre, up;
    viewer_->camera().getCamera(&eye, &centre, &up);
    const QelVector3d direction(centre.x - eye.x, centre.y - eye.y, centre.z - eye.z);
    LightController& light = viewer_->light();
    if (direction.Norm() > 0 && light.lighting())
        light.setLightParameter(light.lighting()->lightPower(), direction);
}

void Qel3DGraphicsPrivate::slt_cleanScene() {
    viewer_->content().clearScene();
    emit sigUpdateClearScene();
}

void Qel3DGraphicsPrivate::slt_UpdateClearScene() {
    action(ToolBarAction::BoundingBox)->setChecked(false);
    if (QAction* checked = viewGroup_->checkedAction()) {
        viewGroup_->setExclusive(false);
        checked->setChecked(false);
        viewGroup_->setExclusive(true);
    }
}

void Qel3DGraphicsPrivate::slt_displayPropertyDlg() {
    const ShaderADS* light = viewer_->light().lighting();
    PropertyDlg dialog(3, 2, light ? light->lightPower() : 1.0f, this);
    auto forEachObject = [this](auto change) {
        OSGDataManager& registry = viewer_->content().registry();
        for (int i = 0; i < registry.count(); ++i)
            change(registry.at(i)->id());
    };
    connect(&dialog, &PropertyDlg::SetPointSize, this, [&](float size) {
        forEachObject([&](ObjectId id) { viewer_->content().setPointSize(id, size); });
    });
    connect(&dialog, &PropertyDlg::SetLineWidth, this, [&](float width) {
        forEachObject([&](ObjectId id) { viewer_->content().setLineWidth(id, width); });
    });
    connect(&dialog, &PropertyDlg::SetIntensity, this, [this](float intensity) {
        if (const ShaderADS* l = viewer_->light().lighting())
            viewer_->light().setLightParameter(
                intensity, QelVector3d(l->lightDir().x(), l->lightDir().y(), l->lightDir().z()));
    });
    dialog.exec();
}

void Qel3DGraphicsPrivate::slt_displayBoundingBox(bool checked) {
    viewer_->decorations().setBoundingBoxVisible(checked);
}

void Qel3DGraphicsPrivate::slt_setBackgroundcolor() {
    const QColor colour =
        QColorDialog::getColor(viewer_->decorations().backgroundColor(), this,
                               "Set Background Color", QColorDialog::DontUseNativeDialog);
    if (colour.isValid())
        viewer_->decorations().setBackgroundColor(colour.red(), colour.green(), colour.blue(),
                                                  colour.alpha());
}

long Qel3DGraphicsPrivate::screenShot(QelImage* out) {
    // Hiding the tool bar or the status line only posts a layout request;
    // a host without an event loop grabs right after, so the view takes its
    // new size here.
    layout_->activate();
    QLabel* badge = status_->badge();
    const bool badgeShown = badge->isVisible();
    if (badgeShown) badge->hide();
    const long status = viewer_->capture().screenShot(out);
    if (badgeShown) badge->show();
    return status;
}

void Qel3DGraphicsPrivate::slt_screenShot() {
    QString filter;
    const QString path =
        QFileDialog::getSaveFileName(this, "Screen Shot", QString(), kScreenShotFilter, &filter,
                                     QFileDialog::DontUseNativeDialog);
    if (path.isEmpty()) return;
    // The suffix decides the format; without one, the chosen filter does.
    const QString suffix = QFileInfo(path).suffix().toLower();
    int format = QEL_IMAGE_FORMAT_BMP;
    if (suffix == "png" || (suffix.isEmpty() && filter.startsWith("PNG")))
        format = QEL_IMAGE_FORMAT_PNG;
    else if (suffix == "jpg" || suffix == "jpeg" || (suffix.isEmpty() && filter.startsWith("JPG")))
        format = QEL_IMAGE_FORMAT_JPG;
    QelImage image;
    if (screenShot(&image) == 0) image.SaveImage(path.toStdWString().c_str(), format);
}

void Qel3DGraphicsPrivate::moveToView(StandardView view) {
    // The view's action, in the order of StandardView.
    static constexpr ToolBarAction kActions[] = {
        ToolBarAction::TopView,    ToolBarAction::BottomView, ToolBarAction::FrontView,
        ToolBarAction::BackView,   ToolBarAction::LeftView,   ToolBarAction::RightView,
        ToolBarAction::ObliqueView};
    viewer_->camera().moveToView(view);
    action(kActions[static_cast<size_t>(view)])->setChecked(true);
}

void Qel3DGraphicsPrivate::slt_moveToObliqueView() {
    moveToView(StandardView::Oblique);
}
void Qel3DGraphicsPrivate::slt_moveToFrontView() {
    moveToView(StandardView::Front);
}
void Qel3DGraphicsPrivate::slt_moveToBackView() {
    moveToView(StandardView::Back);
}
void Qel3DGraphicsPrivate::slt_moveToTopView() {
    moveToView(StandardView::Top);
}
void Qel3DGraphicsPrivate::slt_moveToBottomView() {
    moveToView(StandardView::Bottom);
}
void Qel3DGraphicsPrivate::slt_moveToLeftView() {
    moveToView(StandardView::Left);
}
void Qel3DGraphicsPrivate::slt_moveToRightView() {
    moveToView(StandardView::Right);
}
