// The view's camera, light, clipping and furniture operations.
#include <QLayout>
#include <cmath>
#include <osg/ComputeBoundsVisitor>
#include <osg/DisplaySettings>
#include <osg/Geode>
#include <osg/Geometry>
#include <osgViewer/Viewer>

#include "GLViewer.h"
#include "OSGDataManager.h"
#include "Qel3DPlane.h"
#include "QelColor.h"
#include "QelCubeAxis3d.h"
#include "QelImage.h"
#include "QelOSGWidget.h"
#include "QelVector3d.h"
#include "SceneLockGuard.h"
#include "ShaderADS.h"
#include "StatusCodes.h"
#include "ViewerManipulator.h"

namespace {
osg::Vec3d toVec(const QelVector3d& v) {
    return osg::Vec3d(v.x, v.y, v.z);
}
QelVector3d fromVec(const osg::Vec3d& v) {
    return QelVector3d(float(v.x()), float(v.y()), float(v.z()));
}
}  // namespace

void GLViewer::ensureViewer() {
    if (!osgWidget_->renderer()) osgWidget_->grab();  // the first paint creates the viewer
}

ViewerManipulator* GLViewer::ensureManipulator() {
    ensureViewer();
    if (!manipulator_) installManipulator();
    return manipulator_;
}

void GLViewer::setCamera(const QelVector3d& eye, const QelVector3d& centre, const QelVector3d& up) {
    if (ViewerManipulator* m = ensureManipulator())
        m->setLookAt(toVec(eye), toVec(centre), toVec(up));
    repairProjection();
    requestRedraw();
}

void GLViewer::getCamera(QelVector3d* eye, QelVector3d* centre, QelVector3d* up) {
    ViewerManipulator* m = ensureManipulator();
    if (!m) return;
    osg::Vec3d e, c, u;
    {
        SceneLockGuard lock(osgWidget_);
        m->getTransformation(e, c, u);
    }
    if (eye) *eye = fromVec(e);
    if (centre) *centre = fromVec(c);
    if (up) *up = fromVec(u);
}

void GLViewer::moveToView(int view) {
    if (ViewerManipulator* m = ensureManipulator()) m->moveToView(view);
    repairProjection();
    requestRedraw();
}

void GLViewer::setProjection(bool orthographic) {
    ViewerManipulator* m = ensureManipulator();
    if (!m || m->isOrtho() == orthographic) return;
    osg::Camera* camera = osgWidget_->viewer()->getCamera();
    double left, right, bottom, top, zNear, zFar;
    if (orthographic) {
        // setOrtho reads the scene bound under the lock itself.
        camera->getProjectionMatrixAsFrustum(left, right, bottom, top, zNear, zFar);
        m->setOrtho(true, left, right, bottom, top, zNear, zFar);
        m->getOrthoBox(left, right, bottom, top, zNear, zFar);
        SceneLockGuard lock(osgWidget_);
        camera->setProjectionMatrixAsOrtho(left, right, bottom, top, zNear, zFar);
    } else {
        m->setOrtho(false, 0, 0, 0, 0, 0, 0);
        m->getOrthoBox(left, right, bottom, top, zNear, zFar);
        SceneLockGuard lock(osgWidget_);
        camera->setProjectionMatrixAsFrustum(left, right, bottom, top, zNear, zFar);
        const osg::GraphicsContext* gc = camera->getGraphicsContext();
        if (gc && gc->getTraits() && gc->getTraits()->height > 0 && top != bottom &&
            right != left) {
            const double ratio = (double(gc->getTraits()->width) / gc->getTraits()->height) /
                                 ((right - left) / (top - bottom));
            if (ratio != 1.0) {
                osg::Matrixd projection = camera->getProjectionMatrix();
                projection.postMultScale(osg::Vec3d(1.0 / ratio, 1.0, 1.0));
                camera->setProjectionMatrix(projection);
            }
        }
    }
    requestRedraw();
}

bool GLViewer::zoom(const QelVector3d& point, float factor, double minDistance,
                    double maxDistance) {
    ViewerManipulator* m = ensureManipulator();
    if (!m || !(factor > 0)) return false;
    {
        SceneLockGuard lock(osgWidget_);
        const double distance = m->getDistance() / factor;
        if (!(distance >= minDistance && distance <= maxDistance)) return false;
        m->setCenter(toVec(point));
        m->setDistance(distance);
    }
    m->sendViewportChangedMsg();
    requestRedraw();
    return true;
}

void GLViewer::zoomFit() {
    ViewerManipulator* m = ensureManipulator();
    if (!m) return;
    repairProjection();
    {
        SceneLockGuard lock(osgWidget_);
        // Keeps the current direction; only centre and distance follow the scene.
        const osg::BoundingSphere bound = dataGroup_->getBound();
        if (bound.valid() && bound.radius() > 0) {
            m->setCenter(bound.center());
            // The cube axis's labels sit outside the data: leave them room.
            m->setDistance(bound.radius() * (cubeAxis_ ? 4.2 : 3.5));
        }
    }
    m->sendViewportChangedMsg();
    requestRedraw();
}

// A projection that went non-finite (a degenerate frame's near and far
// values are written back into it) never recovers by itself: it is set back
// to the perspective every view starts with (the scene graph's default
// field of view, from its display settings), so a valid camera always shows
// the scene again.
void GLViewer::repairProjection() {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!viewer) return;
    osg::Camera* camera = viewer->getCamera();
    const osg::Matrixd& p = camera->getProjectionMatrix();
    bool finite = true;
    for (int i = 0; i < 16; ++i)
        finite = finite && std::isfinite(p.ptr()[i]);
    if (finite) return;
    const osg::GraphicsContext* gc = camera->getGraphicsContext();
    const double aspect = gc && gc->getTraits() && gc->getTraits()->height > 0
                              ? double(gc->getTraits()->width) / gc->getTraits()->height
                              : 1.0;
    const osg::DisplaySettings* ds = osg::DisplaySettings::instance().get();
    const double fovy = osg::RadiansToDegrees(
        2.0 * std::atan2(ds->getScreenHeight() / 2.0, ds->getScreenDistance()));
    SceneLockGuard lock(osgWidget_);
    camera->setProjectionMatrixAsPerspective(fovy, aspect, 1.0, 10000.0);
}

// New data in an empty scene keeps the camera when the camera already shows
// it at a usable size (a host that re-displays each scan of a part, or set
// its camera first, keeps its view); otherwise the view is fitted to it.
void GLViewer::fitIfOutOfView(const osg::BoundingSphere& bound) {
    osgViewer::Viewer* viewer = osgWidget_->viewer();
    if (!bound.valid() || !viewer || !manipulator_) return;
    const osg::Matrixd& projection = viewer->getCamera()->getProjectionMatrix();
    const osg::Vec4d centre =
        osg::Vec4d(bound.center(), 1.0) * manipulator_->getInverseMatrix() * projection;
    if (centre.w() > 0) {
        const double x = centre.x() / centre.w(), y = centre.y() / centre.w();
        // Half the view's height is 1 in clip space.
        const double radius = bound.radius() * projection(1, 1) / centre.w();
        if (std::fabs(x) <= 1 && std::fabs(y) <= 1 && radius > 0.02 && radius < 4.0) return;
    }
    zoomFit();
}

void GLViewer::setLightParameter(float power, const QelVector3d& direction) {
    ensureViewer();
    if (lighting_) {
        SceneLockGuard lock(osgWidget_);
        lighting_->setLightPower(power);
        lighting_->setLightDir(float(direction.x), float(direction.y), float(direction.z));
    }
    requestRedraw();
}

void GLViewer::setLightCoefficients(float ambient, float diffuse, float specular) {
    ensureViewer();
    if (lighting_) {
        SceneLockGuard lock(osgWidget_);
        lighting_->setAmbientWeight(ambient);
        lighting_->setDiffuseWeight(diffuse);
        lighting_->setSpecularWeight(specular);
    }
    requestRedraw();
}

void GLViewer::setClipPlane(const Qel3DPlane& plane) {
    ensureViewer();
    if (lighting_) {
        // Points p with n . p + d >= 0 stay, where d = -n . point.
        const QelVector3d& n = plane.Normal();
        const QelVector3d& p = plane.Point();
        const double d = -(double(n.x) * p.x + double(n.y) * p.y + double(n.z) * p.z);
        SceneLockGuard lock(osgWidget_);
        lighting_->setClipPlane(float(n.x), float(n.y), float(n.z), float(d));
        clipOn_ = true;
        clipPlane_.set(float(n.x), float(n.y), float(n.z), float(d));
        if (cubeAxis_) cubeAxis_->setClipPlane(clipPlane_);
    }
    requestRedraw();
}

bool GLViewer::clipPlane(osg::Vec4d* plane) const {
    if (clipOn_ && plane) *plane = osg::Vec4d(clipPlane_);
    return clipOn_;
}

void GLViewer::setTextPen(const QelColor& colour, long size) {
    textPenColour_ = QColor(colour.r, colour.g, colour.b, colour.a);
    textPenSize_ = size;
}

void GLViewer::getTextPen(QelColor* colour, long* size) const {
    if (colour)
        *colour =
            QelColor(textPenColour_.red(), textPenColour_.green(), textPenColour_.blue(), 255);
    if (size) *size = textPenSize_;
}

void GLViewer::setBoundingBoxVisible(bool visible) {
    bboxVisible_ = visible;
    rebuildBoundingBox();  // empties the box when hidden
    requestRedraw();
}

// Twelve edges of the data's axis-aligned box, in the inverted background
// colour so they stay visible on any background.
void GLViewer::rebuildBoundingBox() {
    SceneLockGuard lock(osgWidget_);
    bboxGroup_->removeChildren(0, bboxGroup_->getNumChildren());
    if (!bboxVisible_) return;
    osg::ComputeBoundsVisitor bounds;
    dataGroup_->accept(bounds);
    const osg::BoundingBox& box = bounds.getBoundingBox();
    if (!box.valid()) return;
    auto* corners = new osg::Vec3Array;
    for (int i = 0; i < 8; ++i)
        corners->push_back(box.corner(i));
    static const GLushort edges[] = {0, 1, 2, 3, 4, 5, 6, 7, 0, 2, 1, 3,
                                     4, 6, 5, 7, 0, 4, 1, 5, 2, 6, 3, 7};
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    // Drawn the way the data's geometries are (buffer and array objects).
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setUseVertexArrayObject(true);
    geometry->setVertexArray(corners);
    auto* colour = new osg::Vec4Array;
    colour->push_back(osg::Vec4(1.0f - background_.redF(), 1.0f - background_.greenF(),
                                1.0f - background_.blueF(), 1.0f));
    geometry->setColorArray(colour, osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(new osg::DrawElementsUShort(GL_LINES, 24, edges));
    osg::ref_ptr<osg::Geode> geode = new osg::Geode;
    geode->addDrawable(geometry);
    geode->getOrCreateStateSet()->setMode(GL_LIGHTING, osg::StateAttribute::OFF);
    bboxGroup_->addChild(geode);
}

bool GLViewer::overlaysShown() const {
    for (const QObject* child : children()) {
        const auto* widget = qobject_cast<const QWidget*>(child);
        if (widget && widget != osgWidget_ && widget->isVisibleTo(this)) return true;
    }
    return false;
}

// The frame as the view's drawing widget holds it (rows bottom up, red,
// green, blue, alpha), upright in the blue, green, red order of the data
// layer's images.
static std::vector<unsigned char> uprightBgr(const std::vector<unsigned char>& rgba,
                                             std::size_t width, std::size_t height) {
    std::vector<unsigned char> bgr(width * height * 3);
    for (std::size_t row = 0; row < height; ++row) {
        const unsigned char* from = rgba.data() + (height - 1 - row) * width * 4;
        unsigned char* to = bgr.data() + row * width * 3;
        for (std::size_t x = 0; x < width; ++x, from += 4, to += 3) {
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
        }
    }
    return bgr;
}

long GLViewer::screenShot(QelImage* out) {
    if (registry_->count() == 0) return QelStatus::kNoRenderObject;
    ensureViewer();
    if (!out) return QelStatus::kScreenshotFailed;
    // A frame takes the scene lock for reading itself.
    fullFrame_ = true;  // a screenshot always shows every point
    QelImage image;
    bool made = false;
    if (overlaysShown()) {
        // The colour bar or the lasso's layer lies over the frame: the
        // widget paints them all together.
        const QImage picture = grab().toImage().convertToFormat(QImage::Format_BGR888);
        made = !picture.isNull() &&
               image.CreateImage(picture.constBits(), picture.width(), picture.height(),
                                 picture.bytesPerLine(), 3, QelImageType(0));
    } else {
        // The frame alone is read straight from the framebuffer. The view
        // may have been resized while hidden: its drawing widget takes the
        // new size first.
        layout()->activate();
        std::vector<unsigned char> rgba;
        QSize size;
        if (osgWidget_->grabPixels(rgba, size)) {
            const std::vector<unsigned char> bgr =
                uprightBgr(rgba, std::size_t(size.width()), std::size_t(size.height()));
            made = image.CreateImage(bgr.data(), size.width(), size.height(), size.width() * 3, 3,
                                     QelImageType(0));
        }
    }
    fullFrame_ = false;
    if (!made) return QelStatus::kScreenshotFailed;
    *out = std::move(image);
    return 0;
}
