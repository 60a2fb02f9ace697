#pragma once

#include <functional>
#include <osg/Drawable>
#include <osg/FrameBufferObject>
#include <osg/Geode>

#include "RenderBins.h"

// The picture of the data as the last frame left it, colour and depth, so
// that a frame can go on from it instead of starting over: a step drawn
// after the data copies the framebuffer into it, a step drawn before
// anything else copies it back when asked to. What is drawn after the copy
// (the decorations, texts, measurements) is drawn anew on every frame.
class KeptFrame {
public:
    KeptFrame();

    // Drawn after the data (bin kSnapshotBin) and first of all.
    osg::Node* snapshotNode() const { return snapshot_.get(); }
    osg::Node* restoreNode() const { return restore_.get(); }
    static constexpr int kSnapshotBin = RenderBins::kKeptSnapshot;

    // Whether the next frame starts from the kept picture instead of the
    // cleared framebuffer.
    void setRestoring(bool on) { restoring_ = on; }
    bool isRestoring() const { return restoring_; }
    // Whether a picture of this size is kept.
    bool holds(int width, int height) const {
        return kept_ && width == width_ && height == height_;
    }

    // Called as each picture is kept (the frame's camera is final then).
    void onKept(std::function<void()> kept) { onKept_ = std::move(kept); }

    // Copies between the framebuffer being drawn and the kept picture.
    void copy(osg::RenderInfo& renderInfo, bool intoKept);

private:
    osg::ref_ptr<osg::Geode> snapshot_, restore_;
    osg::ref_ptr<osg::FrameBufferObject> kept_;
    int width_ = 0, height_ = 0;
    bool restoring_ = false;
    std::function<void()> onKept_;
};
