// GLViewer's point budget: while the user turns, pans or zooms the view,
// large clouds draw an even sample of their points so frames stay quick;
// the frame after the motion draws every point again.
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "GLViewer.h"
#include "MRenderer.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "QelOSGWidget.h"
#include "ViewerManipulator.h"

namespace {

// Measured on this project's machines (software GL, 2 threads, 800 x 800):
// a still frame costs about 0.12 microseconds a point (1.2 s for 10
// million), and a frame of 600,000 points in motion about 0.08 s, well
// under 0.2 s with room for the rest of the scene and slower machines.
constexpr long kDefaultPointBudget = 600000;
// The wheel has no release: motion ends this long after its last step.
constexpr int kWheelSettleMs = 250;

long budgetFromEnvironment() {
    const char* text = std::getenv("QEL3D_POINT_BUDGET");
    if (!text || !*text) return kDefaultPointBudget;
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    return (*end == '\0' && value >= 0) ? value : kDefaultPointBudget;
}

// Applies the budget the view wants to every render object, once a frame,
// before the frame is culled.
class BudgetCallback : public osg::NodeCallback {
public:
    explicit BudgetCallback(const GLViewer* view) : view_(view) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        const unsigned int budget = view_->effectiveBudget();
        for (int i = 0; i < view_->registry().count(); ++i)
            view_->registry().at(i)->setDrawBudget(budget);
        traverse(node, visitor);
    }

private:
    const GLViewer* view_;
};

}  // namespace

void GLViewer::setUpPointBudget() {
    pointBudget_ = budgetFromEnvironment();
    settleTimer_ = new QTimer(this);
    settleTimer_->setSingleShot(true);
    settleTimer_->setInterval(kWheelSettleMs);
    connect(settleTimer_, &QTimer::timeout, this, [this] { setMoving(false); });
    dataGroup_->setUpdateCallback(new BudgetCallback(this));
}

void GLViewer::watchMotion(ViewerManipulator* manipulator) {
    connect(manipulator, &ViewerManipulator::sig_motion, this, &GLViewer::setMoving);
    connect(manipulator, &ViewerManipulator::sig_wheelStep, this, [this] {
        moving_ = true;
        settleTimer_->start();
    });
}

void GLViewer::setMoving(bool moving) {
    if (moving_ == moving) return;
    moving_ = moving;
    // The settle frame, with every point: a release arrives inside a frame,
    // which then draws every point itself; the wheel's pause needs one.
    if (!moving && !osgWidget_->frameInProgress()) requestRedraw();
}

void GLViewer::setPointBudget(long budget) {
    pointBudget_ = budget < 0 ? 0 : budget;
    requestRedraw();
}

unsigned int GLViewer::effectiveBudget() const {
    if (!moving_ || fullFrame_ || pointBudget_ == 0) return 0u;
    // On a screen of ratio r every point covers r^2 device pixels: a budget
    // divided by r keeps a frame in motion as quick as at ratio 1 (10 million
    // points at ratio 2: 0.13 s a drag frame with 600,000, 0.07 s with
    // 300,000, against 0.09 s at ratio 1).
    const MRenderer* renderer = osgWidget_->renderer();
    const double ratio = renderer ? std::max(1.0f, renderer->pixelRatio()) : 1.0;
    return static_cast<unsigned int>(std::max(1.0, std::ceil(pointBudget_ / ratio)));
}
