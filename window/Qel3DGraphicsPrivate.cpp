#include "Qel3DGraphicsPrivate.h"

#include <QAction>
#include <QActionGroup>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>

#include "ColorMapIndex.h"
#include "GLViewer.h"
#include "GbkText.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "PaintWidget.h"
#include "PointPicker.h"
#include "PropertyDlg.h"
#include "Qel3DFileOperation.h"
#include "QelColorBarDialog.h"
#include "QelImage.h"
#include "QelOSGWidget.h"
#include "QelPoint.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "QelVar.h"
#include "QelVector3d.h"
#include "ShaderADS.h"
#include "StatusCodes.h"
#include "TextLimit.h"
#include "ViewerManipulator.h"

namespace {

const char* const kToolBarStyle =
    "QToolBar{background-color: rgba(255,255,255,255);}QMenu::icon { padding-left: 15px;}"
    "QMenu::item{ padding-left: 30px;}QToolButton{border-radius: 4px;border-image: "
    "url(:/Icons/bg-default.png);}QToolButton:hover{border-image: "
    "url(:/Icons/bg-hover.png);}QToolButton:checked{border-image: "
    "url(:/Icons/bg-selected.png);}QToolButton:pressed{border-image: "
    "url(:/Icons/bg-selected.png);}";

const char* const kImportFilter =
    "RangeImage Files (*.srt *.png *.jpg *.bmp *.ecd *.csv *.mri *.tif *.jxr);;PointCloud File "
    "(*.spt *.pcd *.txt *.asc *.obj *.ply *.xyz *.xyzn *.xyzrgb);;TriangleMesh Files (*.stmt "
    "*.obj *.off *.ply *.stl)";

const char* const kScreenShotFilter = "BMP File (*.bmp);;PNG File (*.png);;JPG File (*.jpg)";

// The tool-bar bits of the toolbar-visibility call, with the action texts
// they show or hide.
struct MaskBit {
    unsigned long bit;
    const char* texts[7];
};
const MaskBit kMaskBits[] = {
    {0x80000000, {"Import image"}},
    {0x20000000, {"Render Points"}},
    {0x10000000, {"Render Edges"}},
    {0x08000000, {"Render Faces"}},
    {0x00000002, {"Change render color mode"}},
    {0x04000000, {"Set Point Size and Line Width"}},
    {0x02000000, {"Toggle Axis"}},
    {0x00800000, {"Change Background Color"}},
    {0x00010000,
     {"Front View", "Back View", "Left View", "Right View", "Top View", "Bottom View",
      "Oblique View"}},
    {0x00002000, {"Show Color Bar"}},
    {0x00040000, {"Toggle Light"}},
    {0x00020000, {}},
    {0x00008000, {"Clear Mesh"}},
    {0x00004000, {"Save Screen"}},
    {0x00001000, {"Show Bounding Box"}},
    {0x00000800, {"Reset View"}},
    {0x00000010, {"Oblique View"}},
    {0x00000020, {"Top View"}},
    {0x00000040, {"Bottom View"}},
    {0x00000080, {"Left View"}},
    {0x00000100, {"Right View"}},
    {0x00000200, {"Front View"}},
    {0x00000400, {"Back View"}},
    {0x00400000, {"Draw lasso"}},
    {0x00200000, {"Select point"}},
};
constexpr unsigned long kStandardToolBar = 0xBE87F802;

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

QAction* Qel3DGraphicsPrivate::addAction(const char* icon, const QString& text, bool checkable,
                                         bool checked) {
    auto* action =
        icon ? new QAction(QIcon(QString(":/Icons/") + icon), text, this) : new QAction(text, this);
    action->setToolTip(text);
    action->setCheckable(checkable);
    action->setChecked(checked);
    actions_.append(action);
    return action;
}

void Qel3DGraphicsPrivate::buildToolBar() {
    toolBar_ = new QToolBar("Tool Bar", this);
    toolBar_->setIconSize(QSize(36, 36));
    toolBar_->setStyleSheet(kToolBarStyle);
    toolBarLayout_ = new QHBoxLayout;
    toolBarLayout_->setSpacing(0);
    toolBarLayout_->setContentsMargins(0, 0, 0, 0);
    toolBarLayout_->addWidget(toolBar_);
    layout_->insertLayout(0, toolBarLayout_);

    using Self = Qel3DGraphicsPrivate;
    auto slot = [this](QAction* action, void (Self::*method)()) {
        connect(action, &QAction::triggered, this, method);
        return action;
    };
    toolBar_->addAction(
        slot(addAction("open.png", "Import image", false, false), &Self::slt_importData));
    toolBar_->addAction(
        slot(addAction("screenshot.png", "Save Screen", false, false), &Self::slt_screenShot));
    toolBar_->addAction(
        slot(addAction("points.png", "Render Points", true, false), &Self::slt_displayPointMode));
    toolBar_->addAction(
        slot(addAction("edges.png", "Render Edges", true, false), &Self::slt_displayLineMode));
    toolBar_->addAction(
        slot(addAction("faces.png", "Render Faces", true, true), &Self::slt_displayFaceMode));
    toolBar_->addSeparator();
    QAction* property = addAction("pointsize.png", "Set Property", false, false);
    property->setText("Set Point Size and Line Width");
    property->setToolTip("Set Point Size and Line Width");
    toolBar_->addAction(slot(property, &Self::slt_displayPropertyDlg));
    QAction* colorBar = addAction("colorbar.png", "Show Color Bar", true, false);
    connect(colorBar, &QAction::toggled, this, &Self::slt_showColorBar);
    toolBar_->addAction(colorBar);
    toolBar_->addAction(
        slot(addAction("lights.png", "Toggle Light", true, true), &Self::slt_toggleLight));
    QAction* axis = addAction("coord.png", "Toggle Axis", true, false);
    connect(axis, &QAction::toggled, viewer_, &GLViewer::setAxisVisible);
    toolBar_->addAction(axis);
    QAction* bbox = addAction("bbox.png", "Show Bounding Box", true, false);
    connect(bbox, &QAction::toggled, this, &Self::slt_displayBoundingBox);
    toolBar_->addAction(bbox);
    toolBar_->addSeparator();
    QAction* reset = addAction("zoomfit.png", "Reset View", false, false);
    connect(reset, &QAction::triggered, this, [this] { viewer_->zoomFit(); });
    toolBar_->addAction(reset);
    viewGroup_ = new QActionGroup(this);
    viewGroup_->setExclusive(true);
    const struct {
        const char* icon;
        const char* text;
        void (Self::*method)();
    } views[] = {{"oblique.png", "Oblique View", &Self::slt_moveToObliqueView},
                 {"up.png", "Top View", &Self::slt_moveToTopView},
                 {"down.png", "Bottom View", &Self::slt_moveToBottomView},
                 {"left.png", "Left View", &Self::slt_moveToLeftView},
                 {"right.png", "Right View", &Self::slt_moveToRightView},
                 {"front.png", "Front View", &Self::slt_moveToFrontView},
                 {"back.png", "Back View", &Self::slt_moveToBackView}};
    for (const auto& view : views) {
        QAction* action = slot(addAction(view.icon, view.text, true, false), view.method);
        viewGroup_->addAction(action);
        toolBar_->addAction(action);
    }
    toolBar_->addSeparator();
    toolBar_->addAction(
        slot(addAction("erase.png", "Clear Mesh", false, false), &Self::slt_cleanScene));
    toolBar_->addSeparator();
    toolBar_->addAction(slot(addAction("bg_color.png", "Change Background Color", false, false),
                             &Self::slt_setBackgroundcolor));
    toolBar_->addAction(slot(addAction("3D.png", "Change render color mode", true, false),
                             &Self::slt_changedRenderColor));

    // At the end, hidden until a host shows them through the tool-bar mask.
    QAction* lasso = addAction("lasso.png", "Draw lasso", true, false);
    lasso->setVisible(false);
    connect(lasso, &QAction::triggered, this, &Self::slt_drawLasso);
    toolBar_->addAction(lasso);
    QAction* select = addAction("pick.png", "Select point", true, false);
    select->setVisible(false);
    connect(select, &QAction::triggered, this, &Self::slt_selectPoint);
    toolBar_->addAction(select);
}

QAction* Qel3DGraphicsPrivate::action(const QString& text) const {
    for (QAction* a : actions_)
        if (a->text() == text) return a;
    return nullptr;
}

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

long Qel3DGraphicsPrivate::setToolbarMask(long mask, bool visible) {
    unsigned long bits = static_cast<unsigned long>(mask) & 0xFFFFFFFFul;
    if (bits == 1) bits = kStandardToolBar;
    bool recognised = false;
    for (const MaskBit& entry : kMaskBits)
        recognised = recognised || (bits & entry.bit);
    if (!recognised) return QelStatus::argument(2);
    for (const MaskBit& entry : kMaskBits) {
        if (!(bits & entry.bit)) continue;
        for (const char* text : entry.texts)
            if (text)
                if (QAction* a = action(text)) a->setVisible(visible);
    }
    return 0;
}

void Qel3DGraphicsPrivate::setToolbarVisible(bool visible) {
    toolBar_->setVisible(visible);
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

void Qel3DGraphicsPrivate::registerSelectPoint(long long handle, QelSelectPointCallback callback,
                                               void* user) {
    if (!selectPoint_) selectPoint_ = std::make_unique<SelectPointRecord>();
    *selectPoint_ = SelectPointRecord{handle, user, callback};
}

void Qel3DGraphicsPrivate::slt_selectPoint() {
    setTool(action("Select point")->isChecked() ? Tool::Pick : Tool::None);
}

void Qel3DGraphicsPrivate::slt_drawLasso() {
    setTool(action("Draw lasso")->isChecked() ? Tool::Lasso : Tool::None);
}

void Qel3DGraphicsPrivate::setTool(Tool tool) {
    action("Select point")->setChecked(tool == Tool::Pick);
    action("Draw lasso")->setChecked(tool == Tool::Lasso);
    viewer_->setPickMode(tool == Tool::Pick);
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
        (action("Select point")->isChecked() || action("Draw lasso")->isChecked())) {
        setTool(Tool::None);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void Qel3DGraphicsPrivate::reportPickedPoint(float x, float y, float z) {
    if (!selectPoint_ || !selectPoint_->callback) return;
    QelVector3d point(x, y, z);
    selectPoint_->callback(selectPoint_->handle, point, selectPoint_->user);
}

long Qel3DGraphicsPrivate::selectByLasso(QelPointCloud* out, bool remove) {
    bool used = false;
    const long status =
        viewer_->selectPoints(paint_->outline(), paint_->shapeMode(), !remove, out, &used);
    if (used) paint_->clear();
    return status;
}

long Qel3DGraphicsPrivate::selectByLasso(QelRangeImage* out, bool remove) {
    bool used = false;
    const long status =
        viewer_->selectRangeSamples(paint_->outline(), paint_->shapeMode(), !remove, out, &used);
    if (used) paint_->clear();
    return status;
}

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
