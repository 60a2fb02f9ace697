#pragma once

#include <functional>
#include <osgGA/GUIEventHandler>

// While enabled, takes the mouse and the keys from the camera: a button
// release is reported as a click (window coordinates, y up, as the viewer
// hands events on), a move without a button as a move, and nothing else
// moves the view. It sits ahead of the manipulator, which passes by the
// events it took.
class PickHandler : public osgGA::GUIEventHandler {
public:
    using Report = std::function<void(float x, float y)>;
    explicit PickHandler(Report onClick, Report onMove = nullptr)
        : onClick_(std::move(onClick)), onMove_(std::move(onMove)) {}

    void setEnabled(bool on) { enabled_ = on; }
    bool isEnabled() const { return enabled_; }

    bool handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& aa) override;
    using osgGA::GUIEventHandler::handle;

private:
    Report onClick_;
    Report onMove_;
    bool enabled_ = false;
};
