#pragma once

#include <QObject>
#include <osg/Vec3>
#include <osg/Vec3d>
#include <osgGA/TrackballManipulator>

#include "SceneModes.h"

class QelOSGWidget;

// The camera manipulator of a 3D view: the trackball's left-button
// rotation and wheel zoom, a right-button pan in the screen plane, an
// orthographic mode and the seven standard views. It only moves the
// camera; tools that take the mouse (picking) are event handlers ahead of
// it. Reports every change of view through sig_ViewportChanged.
class ViewerManipulator : public QObject, public osgGA::TrackballManipulator {
    Q_OBJECT
public:
    ViewerManipulator(QelOSGWidget* widget = nullptr, osg::Node* sceneRoot = nullptr);

    void setWidget(QelOSGWidget* widget) { widget_ = widget; }
    void setSceneRoot(osg::Node* root) { sceneRoot_ = root; }
    void setSensorAxes(int axes) { sensorAxes_ = axes; }
    int sensorAxes() const { return sensorAxes_; }

    void setOrtho(bool on, double left, double right, double bottom, double top, double zNear,
                  double zFar);
    void getOrthoBox(double& left, double& right, double& bottom, double& top, double& zNear,
                     double& zFar) const;
    bool isOrtho() const { return ortho_; }

    osg::Vec3 boundingCenter() const;
    float boundingRadius() const;

    void getLookAt(osg::Vec3d& eye, osg::Vec3d& center, osg::Vec3d& up) const;
    void getInverseLookAt(osg::Vec3d& eye, osg::Vec3d& center, osg::Vec3d& up) const;
    void setLookAt(const osg::Vec3d& eye, const osg::Vec3d& center, const osg::Vec3d& up);

    void moveToView(StandardView view);

    // The rotation of a standard view in either set of axes.
    static osg::Quat standardViewRotation(StandardView view, int sensorAxes);

signals:
    void sig_ViewportChanged(osg::Vec3 center, float boundingRadius, osg::Vec3 boundingCenter);

public slots:
    void sendViewportChangedMsg();

protected:
    bool handleMousePush(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;
    bool handleMouseRelease(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;
    bool handleMouseDrag(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;
    bool handleFrame(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;
    bool handleMouseWheel(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;

private:
    osg::BoundingSphere sceneBound() const;
    void applyOrthoProjection(osgGA::GUIActionAdapter& us) const;

    QelOSGWidget* widget_ = nullptr;
    osg::Node* sceneRoot_ = nullptr;
    float reserved_ = 1.0f;
    int sensorAxes_ = 1;
    bool panning_ = false;
    float lastX_ = 0.0f;
    float lastY_ = 0.0f;
    osg::Vec3d eye_, center_, up_;
    float panScale_ = 0.1f;
    bool ortho_ = false;
    double orthoBox_[6] = {-1, 1, -1, 1, -10000, 10000};
};

Q_DECLARE_METATYPE(osg::Vec3)
