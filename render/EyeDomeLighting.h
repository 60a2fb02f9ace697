#pragma once

#include <osg/Geode>
#include <osg/ref_ptr>

class EyeDomePass;
class GLViewer;

// The view's eye-dome lighting: off until switched on; on, a pass after the
// data and the shapes darkens each pixel by how far its neighbours lie in
// front of it, at half resolution while the camera moves. The view's
// decorations then draw after the pass, unshaded, like the texts and the
// measurements; off, nothing of it is in the scene.
class EyeDomeLighting {
public:
    static constexpr double kDefaultStrength = 0.4;
    // Logical pixels.
    static constexpr double kDefaultRadius = 1.4;
    static constexpr double kMinRadius = 0.5;
    static constexpr double kMaxRadius = 8.0;

    explicit EyeDomeLighting(GLViewer& view);
    ~EyeDomeLighting();

    // strength > 0 and radius in kMinRadius..kMaxRadius, both finite (the
    // caller checks); switching off keeps them for the next time.
    void setEnabled(bool on, double strength, double radius);
    void setEnabled(bool on) { setEnabled(on, strength_, radius_); }
    bool isOn() const { return on_; }
    double strength() const { return strength_; }
    double radius() const { return radius_; }
    const EyeDomePass& pass() const { return *pass_; }

private:
    GLViewer& view_;
    osg::ref_ptr<osg::Geode> node_;
    osg::ref_ptr<EyeDomePass> pass_;
    bool on_ = false;
    double strength_ = kDefaultStrength;
    double radius_ = kDefaultRadius;
};
