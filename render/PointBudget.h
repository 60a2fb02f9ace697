#pragma once

#include <QTimer>
#include <osgGA/GUIEventHandler>

class GLViewer;

// The point budget of a view: while the camera moves (a button held, or
// the wheel turned in the last 250 ms) a cloud draws at most this many
// points, an even sample; 0 draws every point. The default comes from
// QEL3D_POINT_BUDGET or is 600,000. Screenshots, picking and the lasso
// always see every point. It watches the view's events for the motion and
// hands the budget to every render object once a frame.
class PointBudget : public osgGA::GUIEventHandler {
public:
    explicit PointBudget(GLViewer& view);

    bool handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& aa) override;
    using osgGA::GUIEventHandler::handle;

    void setBudget(long budget);
    long budget() const { return budget_; }
    // The camera starts or stops moving under the user's hand; the frame
    // after the motion draws every point again.
    void setMoving(bool moving);
    bool isMoving() const { return moving_; }
    // While set (a frame for a picture), every point counts.
    void setFullFrame(bool on) { fullFrame_ = on; }
    bool isFullFrame() const { return fullFrame_; }
    // The budget for the frame being drawn (0: every point), divided by the
    // view's device pixel ratio.
    unsigned int effectiveBudget() const;

private:
    GLViewer& view_;
    long budget_ = 0;
    bool moving_ = false;
    bool fullFrame_ = false;
    QTimer settle_;
};
