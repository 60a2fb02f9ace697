#include "PointPicker.h"

#include <limits>
#include <osg/ComputeBoundsVisitor>
#include <osg/Point>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/LineSegmentIntersector>
#include <osgViewer/Viewer>

#include "ClipPlane.h"
#include "GLViewer.h"
#include "NodeMasks.h"
#include "OSGDataManager.h"
#include "PickHandler.h"
#include "PixelRatio.h"
#include "QelOSGWidget.h"
#include "SceneContent.h"
#include "SceneLockGuard.h"

namespace {

// A point this close to the cursor, in logical pixels, counts as clicked;
// larger points count out to their own radius.
constexpr double kTolerance = 4.0;

bool kept(const osg::Vec4d* clip, const osg::Vec3d& p) {
    return !clip || clip->x() * p.x() + clip->y() * p.y() + clip->z() * p.z() + clip->w() >= 0.0;
}

// Render objects hang their model transform under their geode; the stock
// visitor takes every child of a geode for a drawable, so geodes are walked
// as the groups they are.
class RayVisitor : public osgUtil::IntersectionVisitor {
public:
    explicit RayVisitor(osgUtil::Intersector* intersector) : IntersectionVisitor(intersector) {
        setTraversalMask(NodeMasks::kPickable);
    }
    void apply(osg::Geode& geode) override { apply(static_cast<osg::Group&>(geode)); }
    using IntersectionVisitor::apply;
};

// The drawn point nearest the eye among those within the tolerance of a
// window position, over every geometry drawn as points. Levels of detail
// are walked as the camera at 'eye' draws them.
class PointsUnderCursor : public osg::NodeVisitor {
public:
    // ratio: device pixels (the window's unit) per logical pixel.
    PointsUnderCursor(const osg::Matrixd& toWindow, const osg::Vec3d& eye, double x, double y,
                      const osg::Vec4d* clip, double ratio)
        : NodeVisitor(TRAVERSE_ACTIVE_CHILDREN),
          toWindow_(toWindow),
          eye_(eye),
          x_(x),
          y_(y),
          clip_(clip),
          ratio_(ratio) {
        setTraversalMask(NodeMasks::kPickable);
    }

    bool found() const { return depth_ < std::numeric_limits<double>::infinity(); }
    double depth() const { return depth_; }
    const osg::Vec3d& point() const { return point_; }
    long long element() const { return element_; }
    const osg::NodePath& path() const { return path_; }

    osg::Vec3 getEyePoint() const override { return eye_; }
    float getDistanceToViewPoint(const osg::Vec3& position, bool) const override {
        return (position - osg::Vec3(eye_)).length();
    }

    void apply(osg::Geometry& geometry) override {
        const auto* vertices = dynamic_cast<const osg::Vec3Array*>(geometry.getVertexArray());
        if (!vertices) return;
        const osg::Matrixd toWorld = osg::computeLocalToWorld(getNodePath());
        const osg::Matrixd toWindow = toWorld * toWindow_;
        const double radius = ratio_ * std::max(kTolerance, pointSize() / 2.0);
        // Every vertex of a geometry drawn as points counts, also those a
        // frame in motion leaves out.
        for (unsigned int p = 0; p < geometry.getNumPrimitiveSets(); ++p) {
            if (geometry.getPrimitiveSet(p)->getMode() != GL_POINTS) continue;
            const osg::Vec3* first = vertices->empty() ? nullptr : &vertices->front();
            const osg::Vec3* nearest = nullptr;
            for (const osg::Vec3& v : *vertices)
                if (consider(v, toWindow, toWorld, radius)) nearest = &v;
            if (nearest) {
                element_ = nearest - first;
                path_ = getNodePath();
            }
            break;
        }
    }

private:
    // Whether v is the nearest point so far.
    bool consider(const osg::Vec3& v, const osg::Matrixd& toWindow, const osg::Matrixd& toWorld,
                  double radius) {
        const osg::Vec4d h = osg::Vec4d(v, 1.0) * toWindow;
        if (h.w() <= 0.0) return false;  // behind the eye
        const double dx = h.x() / h.w() - x_, dy = h.y() / h.w() - y_;
        if (dx * dx + dy * dy > radius * radius) return false;
        const double depth = h.z() / h.w();
        if (depth >= depth_) return false;
        const osg::Vec3d world = osg::Vec3d(v) * toWorld;
        if (!kept(clip_, world)) return false;
        depth_ = depth;
        point_ = world;
        return true;
    }

    // The point size the path sets, or 1.
    double pointSize() const {
        double size = 1.0;
        for (const osg::Node* node : getNodePath())
            if (const osg::StateSet* s = node->getStateSet())
                if (const auto* p = dynamic_cast<const osg::Point*>(
                        s->getAttribute(osg::StateAttribute::POINT)))
                    size = p->getSize();
        return size;
    }

    osg::Matrixd toWindow_;
    osg::Vec3d eye_;
    double x_, y_;
    const osg::Vec4d* clip_;
    double ratio_;
    double depth_ = std::numeric_limits<double>::infinity();
    osg::Vec3d point_;
    long long element_ = -1;
    osg::NodePath path_;
};

// The render object whose node lies on the path, or null.
const OSGData* objectOn(const osg::NodePath& path, const OSGDataManager* registry) {
    if (!registry) return nullptr;
    for (int i = 0; i < registry->count(); ++i) {
        const OSGData* object = registry->at(i);
        for (const osg::Node* node : path)
            if (node == object->node()) return object;
    }
    return nullptr;
}

ObjectId idOf(const OSGData* object) {
    return object ? object->id() : 0;
}

// The vertex of the hit triangle nearest to the hit, when it is drawn (on
// the kept side of the clip plane).
void snapToVertex(const osgUtil::LineSegmentIntersector::Intersection& surface,
                  const osg::Vec4d* clip, PickHit* hit) {
    const osg::Geometry* geometry = surface.drawable ? surface.drawable->asGeometry() : nullptr;
    const auto* vertices =
        geometry ? dynamic_cast<const osg::Vec3Array*>(geometry->getVertexArray()) : nullptr;
    if (!vertices) return;
    const osg::Vec3d at = hit->position;
    double best = std::numeric_limits<double>::infinity();
    for (unsigned index : surface.indexList) {
        if (index >= vertices->size()) continue;
        osg::Vec3d v = osg::Vec3d((*vertices)[index]);
        if (surface.matrix.valid()) v = v * *surface.matrix;
        const double d = (v - at).length2();
        if (d < best && kept(clip, v)) {
            best = d;
            hit->position = v;
            hit->element = index;
        }
    }
}

}  // namespace

PointPicker::PointPicker(GLViewer* view, QObject* parent) : QObject(parent), view_(view) {
    // The release arrives inside a frame, which holds the scene lock: the
    // pick runs after it.
    handler_ = new PickHandler([this](float x, float y) {
        QMetaObject::invokeMethod(
            this, [this, x, y] { pickAt(x, y); }, Qt::QueuedConnection);
    });
    view_->addEventHandler(handler_.get());
}

PointPicker::~PointPicker() {
    // The viewer may keep the handler a little longer; it reports nowhere.
    handler_->setEnabled(false);
}

void PointPicker::setEnabled(bool on) {
    handler_->setEnabled(on);
}

bool PointPicker::isEnabled() const {
    return handler_->isEnabled();
}

bool PointPicker::pick(osg::Camera& camera, osg::Node& scene, double x, double y, PickHit* hit,
                       const osg::Vec4d* clip, const OSGDataManager* registry, bool snap) {
    if (!camera.getViewport()) return false;
    const osg::Matrixd toWindow = camera.getViewMatrix() * camera.getProjectionMatrix() *
                                  camera.getViewport()->computeWindowMatrix();
    double bestDepth = std::numeric_limits<double>::infinity();

    // Surfaces: the first intersection on the kept side of the clip plane.
    osg::ref_ptr<osgUtil::LineSegmentIntersector> ray =
        new osgUtil::LineSegmentIntersector(osgUtil::Intersector::WINDOW, x, y);
    RayVisitor visitor(ray.get());
    camera.accept(visitor);
    for (const auto& surface : ray->getIntersections()) {
        const osg::Vec3d world = surface.getWorldIntersectPoint();
        if (!kept(clip, world)) continue;
        const osg::Vec4d h = osg::Vec4d(world, 1.0) * toWindow;
        bestDepth = h.w() > 0 ? h.z() / h.w() : bestDepth;
        *hit = PickHit{idOf(objectOn(surface.nodePath, registry)),
                       static_cast<long long>(surface.primitiveIndex), world};
        if (snap) snapToVertex(surface, clip, hit);
        break;
    }

    // Points: drawn within a few pixels of the cursor.
    osg::Vec3d eye, centre, up;
    camera.getViewMatrixAsLookAt(eye, centre, up);
    PointsUnderCursor points(toWindow, eye, x, y, clip, PixelRatio::of(&camera));
    scene.accept(points);
    if (points.found() && points.depth() < bestDepth) {
        // The vertex's point as the host numbers it.
        const OSGData* object = objectOn(points.path(), registry);
        const long long point =
            object ? static_cast<long long>(object->pointIndexOf(size_t(points.element())))
                   : points.element();
        *hit = PickHit{idOf(object), point, points.point()};
        return true;
    }
    return bestDepth < std::numeric_limits<double>::infinity();
}

void PointPicker::pickAt(float x, float y) {
    osgViewer::Viewer* viewer = view_->osgWidget()->viewer();
    if (!viewer || !viewer->getCamera()->getViewport()) return;
    osg::Camera& camera = *viewer->getCamera();
    osg::Vec4d clip;
    const bool clipped = view_->clip().clipPlane(&clip);
    PickHit hit;
    bool found = false;
    {
        // Shapes and the axis carry no pickable bit; no frame draws meanwhile.
        SceneLockGuard lock(view_->osgWidget());
        found = pick(camera, *view_->root(), x, y, &hit, clipped ? &clip : nullptr,
                     &view_->content().registry());
    }
    if (!found) return;
    last_ = hit;
    emit sig_pointPicked(hit);
}
