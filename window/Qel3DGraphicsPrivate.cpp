#include "Qel3DGraphicsPrivate.h"

#include <QAction>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "ColorMapIndex.h"
#include "GLViewer.h"
#include "GbkText.h"
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
#include "ShaderADS.h"
#include "StatusCodes.h"
#include "TextLimit.h"

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

    badge_ = new QLabel(viewer_);
    badge_->setAlignment(Qt::AlignCenter);
    badge_->move(8, 8);
    badge_->hide();
    message_ = new QLabel(viewer_);
    message_->setStyleSheet("QLabel{color: white; background: rgba(0,0,0,110); padding: 2px 4px;}");
    message_->move(8, 46);
    message_->hide();
    status_ = new QLabel(this);
    status_->setMinimumWidth(1);
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    status_->setContentsMargins(4, 2, 4, 2);
    layout_->addWidget(status_);

    colorBar_ = new QelColorBarDialog(viewer_);
    colorBar_->setTextColour(Qt::white);  // the inverse of the black background
    colorBar_->hide();

    connect(viewer_, &GLViewer::sig_infoText, this, &Qel3DGraphicsPrivate::slt_setStatusBarText);
    connect(viewer_, &GLViewer::sig_heightRange, colorBar_, &QelColorBarDialog::setRange);
    connect(viewer_, &GLViewer::sig_labelColour, colorBar_, &QelColorBarDialog::setTextColour);
    connect(colorBar_, &QelColorBarDialog::sig_MinMax, viewer_, &GLViewer::applyHeightRange);

    paint_ = new PaintWidget(viewer_);
    paint_->setFocusPolicy(Qt::StrongFocus);
    paint_->hide();
    picker_ = new PointPicker(viewer_, this);
    connect(viewer_, &GLViewer::sig_ClickPoint, picker_, &PointPicker::pickAt);
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
    if (visible) {
        const QString digits = QString::number(number);
        const int size = 4 * std::max(4, int(digits.size())) + 14;
        badge_->setText(digits);
        badge_->setStyleSheet(QString("min-width: %1px; min-height: %1px; max-width:%1px; "
                                      "max-height: %1px;border-radius: %2px;  border:1px solid "
                                      "black;background:grey")
                                  .arg(size)
                                  .arg(size / 2));
        badge_->adjustSize();
        badge_->raise();
    }
    emit sig_setNumLabelVisible(visible);
}

void Qel3DGraphicsPrivate::slt_setNumLabelVisible(bool visible) {
    badge_->setVisible(visible);
}

void Qel3DGraphicsPrivate::drawMessageText(const QelVar& text) {
    switch (text.ValType()) {
        case QEL_VAR_STRING:
            messageText_ = QString::fromStdWString(GbkText::toWide(text.S()));
            break;
        case QEL_VAR_WSTRING:
            messageText_ = QString::fromWCharArray(text.WS());
            break;
        case QEL_VAR_DOUBLE:
            messageText_ = QString::number(text.D(), 'g', 6);
            break;
        default:
            messageText_ = QString::number(text.L());
            break;
    }
    message_->setText(laidOutText(messageText_));
    message_->adjustSize();
    message_->raise();
    message_->show();
}

void Qel3DGraphicsPrivate::moveMessageText(const QelPoint& position) {
    // Clamped into the view before the conversion: a non-finite or huge
    // double has no int value. NaN goes to 0.
    auto inside = [](double v, int size) {
        return v > 0 ? static_cast<int>(std::min(v, double(std::max(size - 1, 0)))) : 0;
    };
    message_->move(inside(position.x, viewer_->width()), inside(position.y, viewer_->height()));
}

void Qel3DGraphicsPrivate::setStatusbarVisible(bool visible) {
    status_->setVisible(visible);
}

void Qel3DGraphicsPrivate::setStatusLogLevel(int level) {
    logLevel_ = level;
    showStatusText();
}

void Qel3DGraphicsPrivate::slt_setStatusBarText(const QStringList& lines) {
    statusLines_ = lines;
    showStatusText();
}

void Qel3DGraphicsPrivate::showStatusText() {
    QString text;
    if (statusLines_.size() == 1)
        text = statusLines_.front();
    else if (logLevel_ < statusLines_.size())
        text = statusLines_.at(logLevel_);
    status_->setToolTip(text);
    const int width = status_->contentsRect().width();
    status_->setText(status_->fontMetrics().elidedText(text, Qt::ElideRight, std::max(width, 1)));
}

void Qel3DGraphicsPrivate::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    showStatusText();
    colorBar_->moveMessage();
}

void Qel3DGraphicsPrivate::setElementStateForAll(int mode) {
    viewer_->setElementStateForAll(mode);
    action("Render Points")->setChecked(mode == 0);
    action("Render Edges")->setChecked(mode == 1);
    action("Render Faces")->setChecked(mode == 4);
}

void Qel3DGraphicsPrivate::slt_displayPointMode() {
    setElementStateForAll(0);
}

void Qel3DGraphicsPrivate::slt_displayLineMode() {
    setElementStateForAll(1);
}

void Qel3DGraphicsPrivate::slt_displayFaceMode() {
    setElementStateForAll(4);
}

void Qel3DGraphicsPrivate::slt_changedRenderColor() {
    // Checked: each object's own colours; unchecked: colours by height.
    viewer_->setUseHeightColours(!action("Change render color mode")->isChecked());
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
    action("Toggle Axis")->setChecked(visible);
    viewer_->setAxisVisible(visible);
}

void Qel3DGraphicsPrivate::colourTableChanged() {
    colorBar_->setScheme(ColorMapIndex::current());
}

void Qel3DGraphicsPrivate::setLightState(bool on) {
    action("Toggle Light")->setChecked(on);
    viewer_->setLightState(on);
}

void Qel3DGraphicsPrivate::slt_toggleLight() {
    viewer_->setLightState(action("Toggle Light")->isChecked());
}

// Points the light along the current line of sight.
void Qel3DGraphicsPrivate::slt_moveLight() {
    QelVector3d eye, centre, up;
    viewer_->getCamera(&eye, &centre, &up);
    const QelVector3d direction(centre.x - eye.x, centre.y - eye.y, centre.z - eye.z);
    if (direction.Norm() > 0 && viewer_->lighting())
        viewer_->setLightParameter(viewer_->lighting()->lightPower(), direction);
}

void Qel3DGraphicsPrivate::slt_cleanScene() {
    viewer_->clearScene();
    emit sigUpdateClearScene();
}

void Qel3DGraphicsPrivate::slt_UpdateClearScene() {
    action("Show Bounding Box")->setChecked(false);
    if (QAction* checked = viewGroup_->checkedAction()) {
        viewGroup_->setExclusive(false);
        checked->setChecked(false);
        viewGroup_->setExclusive(true);
    }
}

void Qel3DGraphicsPrivate::slt_displayPropertyDlg() {
    const ShaderADS* light = viewer_->lighting();
    PropertyDlg dialog(3, 2, light ? light->lightPower() : 1.0f, this);
    auto forEachObject = [this](auto change) {
        OSGDataManager& registry = viewer_->registry();
        for (int i = 0; i < registry.count(); ++i)
            change(registry.at(i)->id());
    };
    connect(&dialog, &PropertyDlg::SetPointSize, this,
            [&](float size) { forEachObject([&](int id) { viewer_->setPointSize(id, size); }); });
    connect(&dialog, &PropertyDlg::SetLineWidth, this,
            [&](float width) { forEachObject([&](int id) { viewer_->setLineWidth(id, width); }); });
    connect(&dialog, &PropertyDlg::SetIntensity, this, [this](float intensity) {
        if (const ShaderADS* l = viewer_->lighting())
            viewer_->setLightParameter(
                intensity, QelVector3d(l->lightDir().x(), l->lightDir().y(), l->lightDir().z()));
    });
    dialog.exec();
}

void Qel3DGraphicsPrivate::slt_displayBoundingBox(bool checked) {
    viewer_->setBoundingBoxVisible(checked);
}

void Qel3DGraphicsPrivate::slt_setBackgroundcolor() {
    const QColor colour =
        QColorDialog::getColor(viewer_->backgroundColor(), this, "Set Background Color",
                               QColorDialog::DontUseNativeDialog);
    if (colour.isValid())
        viewer_->setBackgroundColor(colour.red(), colour.green(), colour.blue(), colour.alpha());
}

long Qel3DGraphicsPrivate::screenShot(QelImage* out) {
    // Hiding the tool bar or the status line only posts a layout request;
    // a host without an event loop grabs right after, so the view takes its
    // new size here.
    layout_->activate();
    const bool badgeShown = badge_->isVisible();
    if (badgeShown) badge_->hide();
    const long status = viewer_->screenShot(out);
    if (badgeShown) badge_->show();
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

void Qel3DGraphicsPrivate::moveToView(int view) {
    static const char* const kTexts[] = {"Top View",  "Bottom View", "Front View",  "Back View",
                                         "Left View", "Right View",  "Oblique View"};
    viewer_->moveToView(view);
    if (QAction* a = action(kTexts[view >= 0 && view < 6 ? view : 6])) a->setChecked(true);
}

void Qel3DGraphicsPrivate::slt_moveToObliqueView() {
    moveToView(6);
}
void Qel3DGraphicsPrivate::slt_moveToFrontView() {
    moveToView(2);
}
void Qel3DGraphicsPrivate::slt_moveToBackView() {
    moveToView(3);
}
void Qel3DGraphicsPrivate::slt_moveToTopView() {
    moveToView(0);
}
void Qel3DGraphicsPrivate::slt_moveToBottomView() {
    moveToView(1);
}
void Qel3DGraphicsPrivate::slt_moveToLeftView() {
    moveToView(4);
}
void Qel3DGraphicsPrivate::slt_moveToRightView() {
    moveToView(5);
}
