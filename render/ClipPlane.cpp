#include "ClipPlane.h"

#include <osg/ClipPlane>

#include "GLViewer.h"
#include "LightController.h"
#include "Qel3DPlane.h"
#include "QelCubeAxis3d.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"
#include "ShaderADS.h"
#include "ViewDecorations.h"

void ClipPlane::setClipPlane(const Qel3DPlane& plane) {
    view_.viewer();
    if (ShaderADS* lighting = view_.light().lighting()) {
        // d = -n . point, for the plane through the point.
        const QelVector3d& n = plane.Normal();
        const QelVector3d& p = plane.Point();
        const double d = -(double(n.x) * p.x + double(n.y) * p.y + double(n.z) * p.z);
        SceneLockGuard lock(view_.osgWidget());
        lighting->setClipPlane(float(n.x), float(n.y), float(n.z), float(d));
        on_ = true;
        plane_.set(float(n.x), float(n.y), float(n.z), float(d));
        if (QelCubeAxis3d* axis = view_.decorations().cubeAxis()) axis->setClipPlane(plane_);
        // Measurements draw without a program: the fixed clip plane cuts them.
        view_.content().measureGroup()->getOrCreateStateSet()->setAttributeAndModes(
            new osg::ClipPlane(0, osg::Vec4d(plane_)));
    }
    view_.requestRedraw();
}

bool ClipPlane::clipPlane(osg::Vec4d* plane) const {
    if (on_ && plane) *plane = osg::Vec4d(plane_);
    return on_;
}
