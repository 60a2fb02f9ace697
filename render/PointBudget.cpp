// While the user turns, pans or zooms the view, large clouds draw an even
// sample of their points so frames stay quick; the frame after the motion
// draws every point again.
#include "PointBudget.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "GLViewer.h"
#include "MRenderer.h"
#include "OSGData.h"
#include "OSGDataManager.h"
#include "ProgressiveFrames.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"

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

// Applies the budget to every render object, once a frame, before the
// frame is culled: a sample while the camera moves, every point for a
// picture, and a still frame as the progressive frames go.
class BudgetCallback : public osg::NodeCallback {
public:
    BudgetCallback(const PointBudget& budget, ProgressiveFrames& frames,
                   const OSGDataManager& registry)
        : budget_(budget), frames_(frames), registry_(registry) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        frames_.beginFrame(registry_, budget_.effectiveBudget(),
                           budget_.isMoving() || budget_.isFullFrame());
        traverse(node, visitor);
    }

private:
    const PointBudget& budget_;
    ProgressiveFrames& frames_;
    const OSGDataManager& registry_;
};

}  // namespace

PointBudget::PointBudget(GLViewer& view) : view_(view), budget_(budgetFromEnvironment()) {
    settle_.setSingleShot(true);
    settle_.setInterval(kWheelSettleMs);
    QObject::connect(&settle_, &QTimer::timeout, [this] { setMoving(false); });
    SceneContent& content = view.content();
    content.dataGroup()->setUpdateCallback(
        new BudgetCallback(*this, view.progressive(), content.registry()));
}

bool PointBudget::handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter&) {
    // A tool that took the event (a pick) keeps the camera still.
    if (ea.getHandled()) return false;
    using E = osgGA::GUIEventAdapter;
    switch (ea.getEventType()) {
        case E::PUSH:
            setMoving(true);
            break;
        case E::RELEASE:
            setMoving(false);
            break;
        case E::SCROLL:
            // The steps the manipulator zooms by.
            if (ea.getScrollingMotion() == E::SCROLL_UP ||
                ea.getScrollingMotion() == E::SCROLL_DOWN) {
                moving_ = true;
                settle_.start();
            }
            break;
        default:
            break;
    }
    return false;
}

void PointBudget::setMoving(bool moving) {
    if (moving_ == moving) return;
    moving_ = moving;
    // The settle frame, with every point: a release arrives inside a frame,
    // which then draws every point itself; the wheel's pause needs one.
    if (!moving && !view_.osgWidget()->frameInProgress()) view_.requestRedraw();
    // A still view fills in from a sample.
    if (!moving) view_.progressive().start();
}

void PointBudget::setBudget(long budget) {
    budget_ = budget < 0 ? 0 : budget;
    view_.requestRedraw();
}

unsigned int PointBudget::effectiveBudget() const {
    if (!moving_ || fullFrame_ || budget_ == 0) return 0u;
    // On a screen of ratio r every point covers r^2 device pixels: a budget
    // divided by r keeps a frame in motion as quick as at ratio 1 (10 million
    // points at ratio 2: 0.13 s a drag frame with 600,000, 0.07 s with
    // 300,000, against 0.09 s at ratio 1).
    const MRenderer* renderer = view_.osgWidget()->renderer();
    const double ratio = renderer ? std::max(1.0f, renderer->pixelRatio()) : 1.0;
    return static_cast<unsigned int>(std::max(1.0, std::ceil(budget_ / ratio)));
}
