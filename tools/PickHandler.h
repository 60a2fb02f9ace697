#pragma once

#include <functional>
#include <osgGA/GUIEventHandler>

// While enabled, takes the mouse and the keys from the camera: a button
// release is reported as a click (window coordinates, y up, as the viewer
// hands events on), and nothing else moves the view. It sits ahead of the
// manipulator, which passes by the events it took.
class PickHandler : public osgGA::GUIEventHandler {
public:
    explicit PickHandler(std::function<void(float x, float y)> onClick)
        : onClick_(std::move(onClick)) {}

    void setEnabled(bool on) { enabled_ = on; }
    bool isEnabled() const { return enabled_; }

    bool handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& aa) override;
    using osgGA::GUIEventHandler::handle;

private:
    std::function<void(float, float)> onClick_;
    bool enabled_ = false;
};
