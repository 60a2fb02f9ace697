#pragma once

#include <QObject>
#include <osg/Vec3d>
#include <osg/Vec4d>

class GLViewer;
namespace osg {
class Camera;
class Node;
}  // namespace osg

// Picks the scene point under a click in the view. A surface (triangles,
// lines) hit by the ray through the pixel and a point drawn within a few
// pixels of it both count; the one nearer the eye wins, so a cloud drawn as
// points can be picked as well as a mesh. Shapes, text and the cube axis
// are taken out of the scene while it picks, so only data is reported.
class PointPicker : public QObject {
    Q_OBJECT
public:
    explicit PointPicker(GLViewer* view, QObject* parent = nullptr);

    // Window position (x right, y up) in the camera's viewport; the world
    // point, false when nothing drawn is there. Parts of the scene on the
    // negative side of 'clip' (a . p + d < 0) are not drawn and not picked
    // when clipping is on.
    static bool pick(osg::Camera& camera, osg::Node& scene, double x, double y, osg::Vec3d* point,
                     const osg::Vec4d* clip = nullptr);

public slots:
    // A click at window position (x, y), y up, as the viewer hands events
    // to the manipulator: picks and emits sig_pointPicked on a hit.
    void pickAt(float x, float y);

signals:
    void sig_pointPicked(float x, float y, float z);

private:
    GLViewer* view_;
};
