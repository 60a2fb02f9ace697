#pragma once

#include <osg/BoundingSphere>

#include "SceneModes.h"

class GLViewer;
class QelVector3d;

// The camera of a view: where it looks from, the standard views, the
// projection, zooming and fitting the data into view. Every call works
// before the first paint (the viewer and the manipulator are made first)
// and asks for a redraw.
class CameraController {
public:
    explicit CameraController(GLViewer& view) : view_(view) {}

    void setCamera(const QelVector3d& eye, const QelVector3d& centre, const QelVector3d& up);
    void getCamera(QelVector3d* eye, QelVector3d* centre, QelVector3d* up);
    void moveToView(StandardView view);
    void setProjection(bool orthographic);
    // Moves the rotation centre to the point and divides the distance by
    // factor; false, changing nothing, when the new distance would leave
    // [minDistance, maxDistance].
    bool zoom(const QelVector3d& point, float factor, double minDistance, double maxDistance);
    // Centre and distance follow the data; the direction stays.
    void zoomFit();
    // New data in an empty scene keeps the camera when the camera already
    // shows it at a usable size; otherwise the view is fitted to it.
    void fitIfOutOfView(const osg::BoundingSphere& bound);

private:
    void repairProjection();

    GLViewer& view_;
};
