#include "QelCubeAxis3d.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <osg/Depth>
#include <osg/Program>
#include <stdexcept>

#include "CubeAxisBox.h"
#include "LabelFont.h"
#include "PixelRatio.h"
#include "ScaledLineWidth.h"
#include "ScreenProjection.h"

using namespace CubeAxisBox;

namespace {

constexpr float kDirectionLineWidth = 6.0f;
// An edge shorter than this on screen (its axis seen end-on) is not labelled.
constexpr double kMinEdgePixels = 24.0;

osg::ref_ptr<osg::Geometry> lineGeometry(float width) {
    osg::ref_ptr<osg::Geometry> geometry = new osg::Geometry;
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setVertexArray(new osg::Vec3Array);
    geometry->setColorArray(new osg::Vec4Array(1), osg::Array::BIND_OVERALL);
    geometry->addPrimitiveSet(new osg::DrawArrays(GL_LINES, 0, 0));
    geometry->getOrCreateStateSet()->setAttributeAndModes(new ScaledLineWidth(width));
    return geometry;
}

osg::Vec4 mix(const osg::Vec4& from, const osg::Vec4& to, float t) {
    return osg::Vec4(from.r() + (to.r() - from.r()) * t, from.g() + (to.g() - from.g()) * t,
                     from.b() + (to.b() - from.b()) * t, 1.0f);
}

// Tick density for the camera distance d against the reference distance r;
// exactly on a threshold the density stays as it was.
int densityFor(float d, float r, int current) {
    const float thresholds[4] = {3.5f * r, 2.5f * r, 1.5f * r, 0.8f * r};
    const int counts[4] = {3, 6, 8, 10};
    for (float t : thresholds)
        if (d == t) return current;
    for (int i = 0; i < 4; ++i)
        if (d > thresholds[i]) return counts[i];
    return 12;
}

// Lays the axis out again when the camera has changed enough, just before
// the box is drawn (the camera of this frame is known by then).
class ViewCheck : public osg::NodeCallback {
public:
    explicit ViewCheck(QelCubeAxis3d* axis) : axis_(axis) {}
    void operator()(osg::Node* node, osg::NodeVisitor* visitor) override {
        axis_->updateIfViewChanged();
        traverse(node, visitor);
    }

private:
    QelCubeAxis3d* axis_;
};

}  // namespace

QelCubeAxis3d::QelCubeAxis3d(osg::ref_ptr<osg::Camera>& camera, double xmin, double xmax,
                             double ymin, double ymax, double zmin, double zmax)
    : oppositeCorner_{{0, 6}, {1, 7}, {2, 4}, {3, 5}, {4, 2}, {5, 3}, {6, 0}, {7, 1}} {
    osg::ref_ptr<osg::Camera> given;
    given.swap(camera);
    setExtent(xmin, xmax, ymin, ymax, zmin, zmax);
    camera_ = given;
    if (!camera_) return;
    buildNodes();
    buildFaces();
    update();
}

QelCubeAxis3d::~QelCubeAxis3d() {
    if (group_) group_->setCullCallback(nullptr);
}

QelCubeAxis3d& QelCubeAxis3d::operator=(const QelCubeAxis3d& other) {
    if (this == &other) return *this;
    setExtent(other.bounds_[0], other.bounds_[1], other.bounds_[2], other.bounds_[3],
              other.bounds_[4], other.bounds_[5]);
    labelOffset_ = other.labelOffset_;
    titleSize_ = other.titleSize_;
    labelColor_ = other.labelColor_;
    lineWidth_ = other.lineWidth_;
    tickLength_ = other.tickLength_;
    labelGap_ = other.labelGap_;
    labelSize_ = other.labelSize_;
    tickCount_ = other.tickCount_;
    gridVisible_ = other.gridVisible_;
    camera_ = other.camera_;
    if (camera_ && !group_) buildNodes();
    buildFaces();
    if (group_) {
        if (other.clipOn_) setClipPlane(other.clipEquation_);
        update();
    }
    return *this;
}

void QelCubeAxis3d::setExtent(double xmin, double xmax, double ymin, double ymax, double zmin,
                              double zmax) {
    const double size[3] = {xmax - xmin, ymax - ymin, zmax - zmin};
    const double largest = std::max({size[0], size[1], size[2]});
    const double smallest = std::min({size[0], size[1], size[2]});
    if (!(smallest > 0.0) || !std::isfinite(largest)) throw std::runtime_error(kSizeError);
    std::copy(size, size + 3, size_);
    maxSize_ = largest;
    minSize_ = smallest;
    const double bounds[6] = {xmin, xmax, ymin, ymax, zmin, zmax};
    std::copy(bounds, bounds + 6, bounds_);
}

void QelCubeAxis3d::setBounds(float xmin, float xmax, float ymin, float ymax, float zmin,
                              float zmax) {
    setExtent(xmin, xmax, ymin, ymax, zmin, zmax);
    buildFaces();
    if (group_) update();
}

void QelCubeAxis3d::buildNodes() {
    group_ = new osg::Group;
    group_->setName("cube axis");
    lines_ = new osg::Geode;
    marks_ = new osg::Geode;
    texts_ = new osg::Geode;
    edgeLines_ = lineGeometry(lineWidth_);
    gridLines_ = lineGeometry(1.0f);
    tickLines_ = lineGeometry(lineWidth_);
    lines_->addDrawable(edgeLines_);
    lines_->addDrawable(gridLines_);
    marks_->addDrawable(tickLines_);
    for (int axis = 0; axis < 3; ++axis) {
        axisLines_[axis] = lineGeometry(2.0f * lineWidth_);
        directionLines_[axis] = lineGeometry(kDirectionLineWidth);
        marks_->addDrawable(axisLines_[axis]);
        marks_->addDrawable(directionLines_[axis]);
    }
    osg::ref_ptr<osg::Program> program = new osg::Program;
    program->addShader(new osg::Shader(osg::Shader::VERTEX, kVertexSource));
    program->addShader(new osg::Shader(osg::Shader::FRAGMENT, kFragmentSource));
    clipPlane_ = new osg::Uniform("clipplane", osg::Vec4f(0, 0, 0, 0));
    clipped_ = new osg::Uniform("isClipped", false);
    for (osg::Geode* geode : {lines_.get(), marks_.get()}) {
        osg::StateSet* state = geode->getOrCreateStateSet();
        state->setAttributeAndModes(program);
        state->addUniform(clipPlane_);
        state->addUniform(clipped_);
    }
    // The grid stays behind the data. Axis lines, ticks and labels lie on
    // or outside the box's outline: drawn after the data, over it.
    for (osg::Geode* geode : {marks_.get(), texts_.get()}) {
        osg::StateSet* state = geode->getOrCreateStateSet();
        state->setMode(GL_DEPTH_TEST, osg::StateAttribute::OFF);
        state->setRenderBinDetails(20, "RenderBin");
    }
    group_->addChild(lines_);
    group_->addChild(marks_);
    group_->addChild(texts_);
    group_->setCullCallback(new ViewCheck(this));
    font_ = LabelFont::load();
}

osg::Vec3d QelCubeAxis3d::corner(int index) const {
    const int* side = kCornerSide[index];
    return osg::Vec3d(bounds_[side[0]], bounds_[2 + side[1]], bounds_[4 + side[2]]);
}

void QelCubeAxis3d::buildFaces() {
    faces_.clear();
    for (const FaceEntry& entry : kFaces) {
        Face face{entry.name, entry.corners, {}, entry.normal};
        for (int i = 0; i < 4; ++i)
            face.points[i] = corner(entry.corners[i]);
        faces_.push_back(face);
    }
}

double QelCubeAxis3d::referenceDistance() const {
    const osg::Viewport* viewport = camera_ ? camera_->getViewport() : nullptr;
    if (!viewport) return kNoDistance;
    const int w = static_cast<int>(viewport->width());
    const int h = static_cast<int>(viewport->height());
    if (w < 1 || h < 1) return kNoDistance;
    const int f = (w / h == 0) ? h / w : 1;  // integer quotients: portrait viewports
    const float halfDiagonal = static_cast<float>(
        std::sqrt(size_[0] * size_[0] + size_[1] * size_[1] + size_[2] * size_[2]) / 2.0);
    return static_cast<double>(3.9f * halfDiagonal * static_cast<float>(f));
}

osg::Vec3d QelCubeAxis3d::viewAngles() const {
    if (!camera_) return osg::Vec3d();
    // Towards the eye is +z in view space; the inverse view turns it into world axes.
    osg::Vec3d v = osg::Matrixd::transform3x3(osg::Vec3d(0, 0, 1),
                                              osg::Matrixd::inverse(camera_->getViewMatrix()));
    v.normalize();
    osg::Vec3d angles;
    for (int axis = 0; axis < 3; ++axis)
        angles[axis] = osg::RadiansToDegrees(std::acos(std::min(1.0, std::abs(v[axis]))));
    return angles;
}

void QelCubeAxis3d::setLabelColor(const osg::Vec4& colour) {
    labelColor_ = colour;
    if (group_) update();
}

void QelCubeAxis3d::setGridVisible(bool visible) {
    gridVisible_ = visible;
    if (group_) update();
}

void QelCubeAxis3d::setClipPlane(const osg::Vec4& plane) {
    clipEquation_ = plane;
    clipOn_ = true;
    if (!group_) return;
    clipPlane_->set(osg::Vec4f(plane));
    clipped_->set(true);
    update();
}

bool QelCubeAxis3d::kept(const osg::Vec3d& point) const {
    const osg::Vec3d n(clipEquation_.x(), clipEquation_.y(), clipEquation_.z());
    return !clipOn_ || n * point + clipEquation_.w() >= 0.0;
}

void QelCubeAxis3d::update() {
    if (!group_) return;
    const double r = referenceDistance();
    if (r == -1) return;
    ratio_ = PixelRatio::of(camera_.get());
    const ScreenProjection view(*camera_);
    if (!view.valid()) return;
    const osg::Vec3f toCentre = osg::Vec3f(view.eye()) - osg::Vec3f(corner(0) + corner(6)) * 0.5f;
    tickCount_ = densityFor(toCentre.length(), static_cast<float>(r), tickCount_);
    const Layout layout = layoutFor(view);
    rebuildLines(layout);
    rebuildLabels(layout, view);
    layoutKey_ = keyFor(view, layout);
}

void QelCubeAxis3d::updateIfViewChanged() {
    if (!group_ || referenceDistance() == kNoDistance) return;
    const ScreenProjection view(*camera_);
    if (!view.valid()) return;
    if (PixelRatio::of(camera_.get()) != ratio_ || keyFor(view, layoutFor(view)) != layoutKey_)
        update();
}

// What the layout depends on: viewport, projection kind, density, faces in
// front, labelled edges with their screen direction (10 degree steps) and
// the pixel size at the centre (quarter octaves).
std::vector<int> QelCubeAxis3d::keyFor(const ScreenProjection& view, const Layout& layout) const {
    const osg::Vec3d centre = (corner(0) + corner(6)) * 0.5;
    const osg::Vec3f toCentre = osg::Vec3f(view.eye()) - osg::Vec3f(centre);
    const int density =
        densityFor(toCentre.length(), static_cast<float>(referenceDistance()), tickCount_);
    const double pixel = (view.shifted(centre, osg::Vec2d(1, 0)) - centre).length();
    std::vector<int> key = {
        view.width(),        view.height(),
        view.orthographic(), density,
        layout.backCorner,   pixel > 0 ? static_cast<int>(std::lround(4.0 * std::log2(pixel))) : 0};
    for (bool f : layout.facing)
        key.push_back(f);
    for (int axis = 0; axis < 3; ++axis) {
        key.push_back(layout.edge[axis]);
        const osg::Vec2d& o = layout.outward[axis];
        key.push_back(static_cast<int>(std::lround(std::atan2(o.y(), o.x()) * 18.0 / M_PI)));
    }
    return key;
}

QelCubeAxis3d::Layout QelCubeAxis3d::layoutFor(const ScreenProjection& view) const {
    Layout out;
    const osg::Vec3d centre = (corner(0) + corner(6)) * 0.5;
    const osg::Vec3d towardsEye = view.eye() - centre;
    // The corner nearest the viewer; the grid goes on the faces of its opposite.
    int front = 0;
    double nearest = -std::numeric_limits<double>::infinity();
    for (int c = 0; c < 8; ++c) {
        const double s = (corner(c) - centre) * towardsEye;
        if (s > nearest) nearest = s, front = c;
    }
    out.backCorner = oppositeCorner_.at(front);
    for (int f = 0; f < 6; ++f) {
        const Face& face = faces_[f];
        const osg::Vec3d faceCentre = (face.points[0] + face.points[2]) * 0.5;
        const osg::Vec3d toEye = view.orthographic() ? towardsEye : view.eye() - faceCentre;
        out.facing[f] = face.normal * toEye > 0.0;
    }
    // Per axis, an edge on the box's outline (one of its faces turned to the
    // viewer, the other away), preferring the lower and then the left one,
    // so labels sit outside the box where a reader expects them.
    const osg::Vec2d screenCentre = toScreen(view.toWindow(centre));
    for (int axis = 0; axis < 3; ++axis) {
        double best = -std::numeric_limits<double>::infinity();
        for (int e = axis * 4; e < axis * 4 + 4; ++e) {
            const std::array<int, 2> adjacent = facesOfEdge(e);
            if (out.facing[adjacent[0]] == out.facing[adjacent[1]]) continue;
            if (!view.inFront(corner(kEdges[e][0])) || !view.inFront(corner(kEdges[e][1])))
                continue;
            const osg::Vec3d a = view.toWindow(corner(kEdges[e][0]));
            const osg::Vec3d b = view.toWindow(corner(kEdges[e][1]));
            const osg::Vec2d d = toScreen(b) - toScreen(a);
            const double length = d.length();
            if (length < px(kMinEdgePixels)) continue;
            osg::Vec2d outward(-d.y() / length, d.x() / length);
            if (outward * ((toScreen(a) + toScreen(b)) * 0.5 - screenCentre) < 0.0)
                outward = -outward;
            const double score = -outward.y() - 0.9 * outward.x();
            if (score > best) {
                best = score;
                out.edge[axis] = e;
                out.outward[axis] = outward;
            }
        }
    }
    return out;
}

void QelCubeAxis3d::rebuildLines(const Layout& layout) {
    const osg::Vec4 background(1.0f - labelColor_.r(), 1.0f - labelColor_.g(),
                               1.0f - labelColor_.b(), 1.0f);
    osg::ref_ptr<osg::Vec3Array> edges = new osg::Vec3Array;
    // The edges of the three faces behind the data.
    for (const auto& edge : kEdges) {
        const bool behind =
            std::any_of(std::begin(kFaces), std::end(kFaces), [&](const FaceEntry& f) {
                return hasCorner(f, layout.backCorner) && hasCorner(f, edge[0]) &&
                       hasCorner(f, edge[1]);
            });
        if (!behind) continue;
        edges->push_back(corner(edge[0]));
        edges->push_back(corner(edge[1]));
    }
    setLines(edgeLines_.get(), edges.get(), mix(background, labelColor_, 0.6f));

    // Five divisions per axis on each of those faces.
    osg::ref_ptr<osg::Vec3Array> grid = new osg::Vec3Array;
    for (const Face& face : faces_) {
        if (!gridVisible_ || std::find(face.corners.begin(), face.corners.end(),
                                       layout.backCorner) == face.corners.end())
            continue;
        const osg::Vec3d& p0 = face.points[0];
        const osg::Vec3d u = face.points[1] - p0, v = face.points[3] - p0;
        for (int i = 1; i < 5; ++i) {
            grid->push_back(p0 + u * (i / 5.0));
            grid->push_back(p0 + u * (i / 5.0) + v);
            grid->push_back(p0 + v * (i / 5.0));
            grid->push_back(p0 + v * (i / 5.0) + u);
        }
    }
    setLines(gridLines_.get(), grid.get(), mix(background, labelColor_, 0.3f));
}
