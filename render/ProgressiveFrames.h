#pragma once

#include <QElapsedTimer>
#include <map>
#include <osg/Matrixd>
#include <osg/NodeCallback>
#include <set>

#include "KeptFrame.h"
#include "RefinePace.h"
#include "SceneModes.h"

class GLViewer;
class OSGDataManager;

// Progressive still frames: after new data or when the camera stops, the
// first frame draws every cloud over a fifth of the point budget as an
// even sample (its first slice of that size) and keeps the picture; each
// later frame starts from the kept picture and adds the next slices of
// those clouds only, as many as fit in about frameMs(), until every point
// is drawn. Every run of slices from the first is an even sample, and each
// frame adds to the last, so the picture fills in without flicker. A stream
// that grew draws only its new bands over the kept picture, and a new or
// changed text or measurement none of the data; shapes are drawn anew over
// the kept picture. Any other change, a camera move, a new size or a
// screenshot draw whole frames.
class ProgressiveFrames {
public:
    // The time a refinement frame aims at, unless the environment sets
    // QEL3D_REFINE_MS (milliseconds, 10 to 10000).
    static constexpr double kFrameMs = 100.0;
    // The first frame draws this share of the point budget: a picture
    // soon after the display, filled in by the frames after it.
    static constexpr long kFirstShare = 5;

    explicit ProgressiveFrames(GLViewer& view);
    ~ProgressiveFrames();

    void setEnabled(bool on);
    double frameMs() const { return frameMs_; }
    bool isEnabled() const { return enabled_; }
    // The next frame starts a progressive picture.
    void start() { startPending_ = true; }
    // The next frame is drawn whole, every point.
    void stop();
    // A stream grew: the next frame may add its new bands to the kept
    // picture alone.
    void streamGrew() { appendPending_ = true; }
    // Only what is drawn over the data changed (a text overlay, a
    // measurement): the next frame may draw it over the kept picture alone.
    void overlaysChanged() { overlayPending_ = true; }
    bool isRefining() const { return refining_; }

    // Once a frame before it is culled: how each render object draws.
    void beginFrame(const OSGDataManager& registry, unsigned int budget, bool whole);
    // Whether the frame being culled draws this render object's node.
    bool drawsNow(const osg::Node* node) const;
    // Frames that went on from the kept picture, by kind (for checks).
    long refineFrames() const { return refineFrames_; }
    long appendFrames() const { return appendFrames_; }
    long overlayFrames() const { return overlayFrames_; }

private:
    struct Progress {
        unsigned int slices, done;
    };
    // Every render object whole; the kept picture is not restored.
    void wholeFrame(const OSGDataManager& registry, unsigned int budget);
    bool sameView() const;
    void remember();
    // Draws the new bands of the streams over the kept picture, when that is
    // the same view and the bands lie within its depth range.
    bool appendFrame(const OSGDataManager& registry);
    // Draws nothing of the data over the kept picture, when that is the same
    // view and the overlays lie within its depth range.
    bool overlayFrame();
    // Whether the box lies within the kept picture's depth range.
    bool withinDepthRange(const osg::BoundingBox& box) const;

    GLViewer& view_;
    KeptFrame kept_;
    osg::ref_ptr<osg::NodeCallback> gate_;
    bool enabled_ = false;
    bool refining_ = false;
    bool startPending_ = false;
    bool appendPending_ = false;
    bool overlayPending_ = false;
    bool wholeWanted_ = true;
    std::map<ObjectId, Progress> progress_;
    std::set<const osg::Node*> drawing_;
    double frameMs_;
    unsigned int slicesPerFrame_ = 1;
    RefinePace pace_;
    QElapsedTimer clock_;
    osg::Matrixd viewMatrix_, projection_;
    double viewport_[4] = {0, 0, 0, 0};
    long refineFrames_ = 0;
    long appendFrames_ = 0;
    long overlayFrames_ = 0;
};
