#pragma once

#include <memory>

class GLViewer;
class QelVector3d;
class ShaderADS;
namespace osg {
class Node;
}

// The view's light: the lighting program over the data (made when the
// viewer first initialises), switched on and off, with its power,
// direction and weights. With the light off the data shows its plain
// colours.
class LightController {
public:
    explicit LightController(GLViewer& view);
    ~LightController();

    // Puts the lighting program over the node (once, at initialisation).
    void attachTo(osg::Node* data);
    // Attaches or detaches the program as the state says.
    void apply();

    void setLightState(bool on);
    bool lightState() const { return on_; }
    void setLightParameter(float power, const QelVector3d& direction);
    void setLightCoefficients(float ambient, float diffuse, float specular);
    // Null before the viewer first initialises.
    ShaderADS* lighting() const { return lighting_.get(); }

private:
    GLViewer& view_;
    std::unique_ptr<ShaderADS> lighting_;
    bool on_ = true;
};
