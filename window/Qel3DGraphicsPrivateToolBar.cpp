// The window's tool bar: one table holds every action with its icon, text,
// host-mask bits and slot. It builds the tool bar, answers the host's mask
// and finds actions by id.
#include <QAction>
#include <QActionGroup>
#include <QHBoxLayout>
#include <QToolBar>
#include <QVBoxLayout>

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

// Host-mask bits: each names the actions it shows or hides. One bit covers
// all seven views, and each view has a bit of its own as well.
constexpr unsigned long kAllViewsBit = 0x00010000;
// Recognised by the mask, though this window has no action for it.
constexpr unsigned long kUnusedBit = 0x00020000;
// What mask 1 stands for: the standard tool bar.
constexpr unsigned long kStandardToolBar = 0xBE87F802;

using Self = Qel3DGraphicsPrivate;

enum Flags : unsigned {
    kPlain = 0,
    kCheckable = 1,
    kChecked = 2,
    // Hidden until a host shows it through the mask.
    kHidden = 4,
    // A separator goes before it.
    kSeparated = 8,
    // One of the exclusive standard views.
    kView = 16,
};

struct ActionRow {
    ToolBarAction id;
    const char* icon;
    const char* text;
    unsigned long maskBits;
    unsigned flags;
    void (Self::*triggered)();
    void (Self::*toggled)(bool);
};

const ActionRow kActions[] = {
    {ToolBarAction::Import, "open.png", "Import image", 0x80000000, kPlain, &Self::slt_importData,
     nullptr},
    {ToolBarAction::SaveScreen, "screenshot.png", "Save Screen", 0x00004000, kPlain,
     &Self::slt_screenShot, nullptr},
    {ToolBarAction::RenderPoints, "points.png", "Render Points", 0x20000000, kCheckable,
     &Self::slt_displayPointMode, nullptr},
    {ToolBarAction::RenderEdges, "edges.png", "Render Edges", 0x10000000, kCheckable,
     &Self::slt_displayLineMode, nullptr},
    {ToolBarAction::RenderFaces, "faces.png", "Render Faces", 0x08000000, kCheckable | kChecked,
     &Self::slt_displayFaceMode, nullptr},
    {ToolBarAction::Properties, "pointsize.png", "Set Point Size and Line Width", 0x04000000,
     kSeparated, &Self::slt_displayPropertyDlg, nullptr},
    {ToolBarAction::ColorBar, "colorbar.png", "Show Color Bar", 0x00002000, kCheckable, nullptr,
     &Self::slt_showColorBar},
    {ToolBarAction::Light, "lights.png", "Toggle Light", 0x00040000, kCheckable | kChecked,
     &Self::slt_toggleLight, nullptr},
    {ToolBarAction::EyeDome, "edl.png", "Eye-Dome Lighting", 0x00080000, kCheckable, nullptr,
     &Self::slt_toggleEyeDome},
    {ToolBarAction::Axis, "coord.png", "Toggle Axis", 0x02000000, kCheckable, nullptr,
     &Self::slt_toggleAxis},
    {ToolBarAction::BoundingBox, "bbox.png", "Show Bounding Box", 0x00001000, kCheckable, nullptr,
     &Self::slt_displayBoundingBox},
    {ToolBarAction::ResetView, "zoomfit.png", "Reset View", 0x00000800, kSeparated,
     &Self::slt_resetView, nullptr},
    {ToolBarAction::ObliqueView, "oblique.png", "Oblique View", kAllViewsBit | 0x00000010,
     kCheckable | kView, &Self::slt_moveToObliqueView, nullptr},
    {ToolBarAction::TopView, "up.png", "Top View", kAllViewsBit | 0x00000020, kCheckable | kView,
     &Self::slt_moveToTopView, nullptr},
    {ToolBarAction::BottomView, "down.png", "Bottom View", kAllViewsBit | 0x00000040,
     kCheckable | kView, &Self::slt_moveToBottomView, nullptr},
    {ToolBarAction::LeftView, "left.png", "Left View", kAllViewsBit | 0x00000080,
     kCheckable | kView, &Self::slt_moveToLeftView, nullptr},
    {ToolBarAction::RightView, "right.png", "Right View", kAllViewsBit | 0x00000100,
     kCheckable | kView, &Self::slt_moveToRightView, nullptr},
    {ToolBarAction::FrontView, "front.png", "Front View", kAllViewsBit | 0x00000200,
     kCheckable | kView, &Self::slt_moveToFrontView, nullptr},
    {ToolBarAction::BackView, "back.png", "Back View", kAllViewsBit | 0x00000400,
     kCheckable | kView, &Self::slt_moveToBackView, nullptr},
    {ToolBarAction::ClearScene, "erase.png", "Clear Mesh", 0x00008000, kSeparated,
     &Self::slt_cleanScene, nullptr},
    {ToolBarAction::BackgroundColour, "bg_color.png", "Change Background Color", 0x00800000,
     kSeparated, &Self::slt_setBackgroundcolor, nullptr},
    {ToolBarAction::ColourMode, "3D.png", "Change render color mode", 0x00000002, kCheckable,
     &Self::slt_changedRenderColor, nullptr},
    // The tools, hidden until a host shows them through the mask.
    {ToolBarAction::Measure, "measure.png", "Measure", 0x00100000, kCheckable | kHidden,
     &Self::slt_measure, nullptr},
    {ToolBarAction::Lasso, "lasso.png", "Draw lasso", 0x00400000, kCheckable | kHidden,
     &Self::slt_drawLasso, nullptr},
    {ToolBarAction::SelectPoint, "pick.png", "Select point", 0x00200000, kCheckable | kHidden,
     &Self::slt_selectPoint, nullptr},
};
static_assert(std::size(kActions) == kToolBarActionCount, "one row for every action");

}  // namespace

void Qel3DGraphicsPrivate::buildToolBar() {
    toolBar_ = new QToolBar("Tool Bar", this);
    toolBar_->setIconSize(QSize(36, 36));
    toolBar_->setStyleSheet(kToolBarStyle);
    toolBarLayout_ = new QHBoxLayout;
    toolBarLayout_->setSpacing(0);
    toolBarLayout_->setContentsMargins(0, 0, 0, 0);
    toolBarLayout_->addWidget(toolBar_);
    layout_->insertLayout(0, toolBarLayout_);
    viewGroup_ = new QActionGroup(this);
    viewGroup_->setExclusive(true);

    for (const ActionRow& row : kActions) {
        auto* a = new QAction(QIcon(QString(":/Icons/") + row.icon), row.text, this);
        a->setToolTip(row.text);
        a->setCheckable(row.flags & kCheckable);
        a->setChecked(row.flags & kChecked);
        a->setVisible(!(row.flags & kHidden));
        if (row.triggered) connect(a, &QAction::triggered, this, row.triggered);
        if (row.toggled) connect(a, &QAction::toggled, this, row.toggled);
        if (row.flags & kView) viewGroup_->addAction(a);
        if (row.flags & kSeparated) toolBar_->addSeparator();
        toolBar_->addAction(a);
        actions_[static_cast<size_t>(row.id)] = a;
    }
    buildMeasureMenu();
}

long Qel3DGraphicsPrivate::setToolbarMask(long mask, bool visible) {
    unsigned long bits = static_cast<unsigned long>(mask) & 0xFFFFFFFFul;
    if (bits == 1) bits = kStandardToolBar;
    unsigned long known = kUnusedBit;
    for (const ActionRow& row : kActions)
        known |= row.maskBits;
    if (!(bits & known)) return QelStatus::argument(2);
    for (const ActionRow& row : kActions)
        if (bits & row.maskBits) action(row.id)->setVisible(visible);
    return 0;
}

void Qel3DGraphicsPrivate::setToolbarVisible(bool visible) {
    toolBar_->setVisible(visible);
}
