#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "Qel3DGraphics.h"
#include "SceneModes.h"
#include "ToolBarAction.h"

class GLViewer;
class QAction;
class QActionGroup;
class QHBoxLayout;
class QLabel;
class QToolBar;
class QelColorBarDialog;
class PaintWidget;
class PointPicker;
class MeasureTool;
class QelPointCloud;
class QelRangeImage;
class QVBoxLayout;
class WindowStatus;
struct PickHit;

using QelSelectPointCallback = QELMV::QelSelectPointEvent;
using QelMeasureCallback = QELMV::QelMeasureCallback;

// One 3D window: a tool bar over the 3D view, with the number badge and the
// message label floating over the view and the status line below it. The
// exported functions call its methods; the tool bar calls the same ones.
class Qel3DGraphicsPrivate : public QWidget {
    Q_OBJECT
public:
    // parentIsToolkitWidget: the parent is a widget of the host's own
    // application rather than a hosting widget around a native window.
    Qel3DGraphicsPrivate(QWidget* parent, bool parentIsToolkitWidget);
    ~Qel3DGraphicsPrivate() override;

    GLViewer* viewer() const { return viewer_; }
    QToolBar* toolBar() const { return toolBar_; }
    bool parentIsToolkitWidget() const { return parentIsToolkitWidget_; }
    QAction* action(ToolBarAction id) const { return actions_[static_cast<size_t>(id)]; }
    WindowStatus& status() const { return *status_; }

    void setWindowNumber(int number, bool visible);
    void drawMessageText(const QelVar& text);
    void moveMessageText(const QelPoint& position);
    // 11200002 when the mask names no action; mask 1 is the standard set.
    long setToolbarMask(long mask, bool visible);
    void setToolbarVisible(bool visible);
    void setStatusbarVisible(bool visible);
    void setStatusLogLevel(int level);
    // Sets every render object to the mode and checks its action.
    void setElementStateForAll(RenderMode mode);
    void setLightState(bool on);
    // Eye-dome lighting with its strength and radius (checked by the caller).
    void setEyeDome(bool on, double strength, double radius);
    // Shows or hides the cube axis and checks "Toggle Axis" to match.
    void setAxisVisible(bool visible);
    QelColorBarDialog* colorBar() const { return colorBar_; }
    // The colour legend follows the process-wide colour table.
    void colourTableChanged();
    PaintWidget* lassoLayer() const { return paint_; }
    // Selects from the last render object by the lasso drawn last and
    // clears it (see OutlineSelection); remove keeps the outside.
    long selectByLasso(QelPointCloud* out, bool remove);
    long selectByLasso(QelRangeImage* out, bool remove);
    void moveToView(StandardView view);
    // The view without the number badge (see ScreenCapture::screenShot).
    long screenShot(QelImage* out);
    void registerSelectPoint(long long handle, QelSelectPointCallback callback, void* user);
    // The measuring tool with the kind, as "Measure" and its menu turn it on.
    void startMeasuring(MeasureKind kind);
    void stopMeasuring();
    MeasureTool* measureTool() const { return measure_; }
    void registerMeasure(long long handle, QelMeasureCallback callback, void* user);

    // Reads a file by its suffix and shows it: the import action after its
    // dialog. False (after the "load file failed" box) when loading failed.
    bool importFile(const QString& path);

signals:
    void sig_setNumLabelVisible(bool isVisible);
    void sigUpdateClearScene();

public slots:
    void slt_importData();
    void slt_displayPointMode();
    void slt_displayLineMode();
    void slt_displayFaceMode();
    void slt_changedRenderColor();
    void slt_showColorBar(bool visible);
    void slt_toggleLight();
    void slt_toggleAxis(bool visible);
    void slt_toggleEyeDome(bool on);
    void slt_moveLight();
    void slt_cleanScene();
    void slt_displayPropertyDlg();
    void slt_displayBoundingBox(bool checked);
    void slt_setBackgroundcolor();
    void slt_screenShot();
    void slt_resetView();
    void slt_UpdateClearScene();
    void slt_moveToObliqueView();
    void slt_moveToFrontView();
    void slt_moveToBackView();
    void slt_moveToTopView();
    void slt_moveToBottomView();
    void slt_moveToLeftView();
    void slt_moveToRightView();
    void slt_selectPoint();
    void slt_drawLasso();
    void slt_measure();
    void slt_setNumLabelVisible(bool visible);

protected:
    void resizeEvent(QResizeEvent* event) override;
    // Escape in the view leaves the pick and lasso tools, and drops the
    // measurement in progress (with none, it leaves the measuring tool).
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct SelectPointRecord {
        long long handle;
        void* user;
        QelSelectPointCallback callback;
    };

    // At most one of the two tools is on; with neither, the mouse moves the camera.
    struct MeasureRecord {
        long long handle;
        void* user;
        QelMeasureCallback callback;
    };
    enum class Tool { None, Pick, Lasso, Measure };
    void setTool(Tool tool);
    void reportPickedPoint(const PickHit& hit);
    void reportMeasurement(ObjectId id, MeasureKind kind, double value);
    // The menu of the "Measure" button: "Distance", "Angle", "Height".
    void buildMeasureMenu();
    // Builds the tool bar from the action table (Qel3DGraphicsPrivateToolBar.cpp).
    void buildToolBar();
    void warnLoadFailed();

    bool parentIsToolkitWidget_;
    QVBoxLayout* layout_ = nullptr;
    QHBoxLayout* toolBarLayout_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    GLViewer* viewer_ = nullptr;
    WindowStatus* status_ = nullptr;
    QelColorBarDialog* colorBar_ = nullptr;
    PaintWidget* paint_ = nullptr;
    PointPicker* picker_ = nullptr;
    MeasureTool* measure_ = nullptr;
    MeasureKind measureKind_ = MeasureKind::Distance;
    QActionGroup* measureKinds_ = nullptr;
    QActionGroup* viewGroup_ = nullptr;
    std::array<QAction*, kToolBarActionCount> actions_{};
    std::unique_ptr<SelectPointRecord> selectPoint_;
    std::unique_ptr<MeasureRecord> measureReport_;
};
