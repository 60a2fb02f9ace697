// The window's tool bar: its actions in the order the user sees them, and
// the host's mask that shows or hides them.
#include <QAction>
#include <QActionGroup>
#include <QHBoxLayout>
#include <QToolBar>
#include <QVBoxLayout>

#include "GLViewer.h"
#include "Qel3DGraphicsPrivate.h"
#include "StatusCodes.h"

namespace {

const char* const kToolBarStyle =
    "QToolBar{background-color: rgba(255,255,255,255);}QMenu::icon { padding-left: 15px;}"
    "QMenu::item{ padding-left: 30px;}QToolButton{border-radius: 4px;border-image: "
    "url(:/Icons/bg-default.png);}QToolButton:hover{border-image: "
    "url(:/Icons/bg-hover.png);}QToolButton:checked{border-image: "
    "url(:/Icons/bg-selected.png);}QToolButton:pressed{border-image: "
    "url(:/Icons/bg-selected.png);}";

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

}  // namespace

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
