#pragma once

#include <QObject>
#include <osg/Vec3>
#include <osg/Vec3d>
#include <osgGA/TrackballManipulator>

class QelOSGWidget;

// The camera manipulator of a 3D view: the trackball's left-button
// rotation and wheel zoom, a right-button pan in the screen plane, a pick
// mode that only reports clicks, an orthographic mode and the seven
// standard views. Reports every change of view through sig_ViewportChanged.
class ViewerManipulator : public QObject, public osgGA::TrackballManipulator {
    Q_OBJECT
public:
    ViewerManipulator(QelOSGWidget* widget = nullptr, osg::Node* sceneRoot = nullptr);

    bool handle(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;

    void setWidget(QelOSGWidget* widget) { widget_ = widget; }
    void setSceneRoot(osg::Node* root) { sceneRoot_ = root; }
    void setPickMode(int mode) { pickMode_ = mode; }
    int pickMode() const { return pickMode_; }
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

    void moveToTopView();
    void moveToBottomView();
    void moveToRightView();
    void moveToLeftView();
    void moveToFrontView();
    void moveToBackView();
    void moveToObliqueView();
    // 0 top, 1 bottom, 2 front, 3 back, 4 left, 5 right, anything else oblique.
    void moveToView(int view);

    // The rotation of a standard view in either set of axes.
    static osg::Quat standardViewRotation(int view, int sensorAxes);

signals:
    void sig_ViewportChanged(osg::Vec3 center, float boundingRadius, osg::Vec3 boundingCenter);
    void sig_ClickPoint(float mouseX, float mouseY);
    // A button went down (true) or up (false) outside pick mode: the camera
    // may move in between.
    void sig_motion(bool moving);
    // One step of the wheel zoom.
    void sig_wheelStep();

public slots:
    void sendViewportChangedMsg();

protected:
    bool handleMouseWheel(const osgGA::GUIEventAdapter& ea, osgGA::GUIActionAdapter& us) override;

private:
    osg::BoundingSphere sceneBound() const;
    void applyOrthoProjection(osgGA::GUIActionAdapter& us) const;

    QelOSGWidget* widget_ = nullptr;
    osg::Node* sceneRoot_ = nullptr;
    float reserved_ = 1.0f;
    int pickMode_ = 0;
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
