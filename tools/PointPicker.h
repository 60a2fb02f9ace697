#pragma once

#include <QObject>
#include <osg/Vec3d>
#include <osg/Vec4d>
#include <osg/ref_ptr>

#include "PickHit.h"

class GLViewer;
class OSGDataManager;
class PickHandler;
namespace osg {
class Camera;
class Node;
}  // namespace osg

// Picks the scene point under a click in the view. A surface (triangles,
// lines) hit by the ray through the pixel and a point drawn within a few
// pixels of it both count; the one nearer the eye wins, so a cloud drawn as
// points can be picked as well as a mesh. Only nodes with the pickable mask
// bit count: shapes and the cube axis are passed by.
class PointPicker : public QObject {
    Q_OBJECT
public:
    // Puts its click handler ahead of the view's camera.
    explicit PointPicker(GLViewer* view, QObject* parent = nullptr);
    ~PointPicker() override;

    // While enabled, clicks in the view pick and the camera stays still.
    void setEnabled(bool on);
    bool isEnabled() const;

    // Window position (x right, y up) in the camera's viewport; false when
    // nothing drawn is there. Parts of the scene on the negative side of
    // 'clip' (a . p + d < 0) are not drawn and not picked when clipping is
    // on. With a registry, the hit names the render object it lies on.
    // A surface is hit where the ray meets it; with 'snap', at the vertex of
    // the hit triangle nearest to that place (a measured sample, not a
    // point between samples), the vertex's index then the element.
    static bool pick(osg::Camera& camera, osg::Node& scene, double x, double y, PickHit* hit,
                     const osg::Vec4d* clip = nullptr, const OSGDataManager* registry = nullptr,
                     bool snap = false);
    // The last hit of pickAt.
    const PickHit& lastHit() const { return last_; }

public slots:
    // A click at window position (x, y), y up, as the viewer hands events
    // on: picks and emits sig_pointPicked on a hit.
    void pickAt(float x, float y);

signals:
    void sig_pointPicked(const PickHit& hit);

private:
    GLViewer* view_;
    osg::ref_ptr<PickHandler> handler_;
    PickHit last_;
};
