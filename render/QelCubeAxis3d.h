#pragma once

#include <array>
#include <map>
#include <osg/Camera>
#include <osg/Geode>
#include <osg/Geometry>
#include <osg/Group>
#include <osg/ref_ptr>
#include <osgText/Font>
#include <osgText/Text>
#include <string>
#include <vector>

#include "Qel3DGraphics.h"

class ScreenProjection;

// A measuring box around the data: the faces of its axis-aligned bounds
// with grid lines on the three faces behind the data, three coloured axis
// lines on the edges nearest the viewer, round-numbered tick labels outside
// the box's outline and the titles "X", "Y", "Z". The tick density follows
// the camera distance. The box is rebuilt when the bounds change and laid
// out again only when the camera has moved enough to change the density,
// the faces in front or the labelled edges (checked as the node is culled).
class QEL_GRAPHICS_API QelCubeAxis3d {
public:
    // Thrown by construction and setBounds for an extent that is not
    // positive on every axis: flat data has no cube axis.
    static constexpr const char* kSizeError = " - CubeAxis size is not right";

    struct Face {
        std::string name;
        std::array<int, 4> corners;
        std::array<osg::Vec3d, 4> points;
        osg::Vec3d normal;  // outward
    };
    // Where a text was placed, in window pixels (y up), for layout checks.
    struct Label {
        std::string text;
        int axis;  // 0 x, 1 y, 2 z
        bool title;
        double left, bottom, right, top;
    };

    // The camera decides label density and orientation; the reference
    // passed in is released. Without a camera no nodes are built.
    QelCubeAxis3d(osg::ref_ptr<osg::Camera>& camera, double xmin, double xmax, double ymin,
                  double ymax, double zmin, double zmax);
    ~QelCubeAxis3d();
    QelCubeAxis3d(const QelCubeAxis3d&) = delete;
    // Takes the other's bounds, camera and settings and builds its own nodes.
    QelCubeAxis3d& operator=(const QelCubeAxis3d& other);

    void setBounds(float xmin, float xmax, float ymin, float ymax, float zmin, float zmax);
    // Recomputes tick density, faces, edges and labels for the camera.
    void update();
    // Runs update() when the view no longer matches the last layout.
    void updateIfViewChanged();

    // R = 3.9 x half the box diagonal, doubled or more for a portrait
    // viewport; kNoDistance without a usable viewport.
    double referenceDistance() const;
    static constexpr double kNoDistance = -1;
    int tickCount() const { return tickCount_; }
    // Degrees (0..90) between the viewing direction and the X, Y, Z axes.
    osg::Vec3d viewAngles() const;

    const osg::Vec4& labelColor() const { return labelColor_; }
    void setLabelColor(const osg::Vec4& colour);
    void setGridVisible(bool visible);
    bool gridVisible() const { return gridVisible_; }
    // Parts of the box with a . p + d < 0 for plane (a, b, c, d) are cut.
    void setClipPlane(const osg::Vec4& plane);

    osg::Group* node() const { return group_.get(); }
    const std::vector<Face>& faces() const { return faces_; }
    const std::vector<Label>& labels() const { return labels_; }
    int oppositeCorner(int corner) const { return oppositeCorner_.at(corner); }
    const double* bounds() const { return bounds_; }

private:
    struct Layout;
    struct AxisPlacement;

    void setExtent(double xmin, double xmax, double ymin, double ymax, double zmin, double zmax);
    void buildNodes();
    void buildFaces();
    osg::Vec3d corner(int index) const;
    Layout layoutFor(const ScreenProjection& view) const;
    std::vector<int> keyFor(const ScreenProjection& view, const Layout& layout) const;
    void rebuildLines(const Layout& layout);
    void rebuildLabels(const Layout& layout, const ScreenProjection& view);
    AxisPlacement placeAxis(int axis, const Layout& layout, const ScreenProjection& view) const;
    osg::ref_ptr<osgText::Text> makeText(const std::string& text, float size) const;
    // Logical pixels (the sizes below) in the device pixels of the view.
    double px(double logical) const { return logical * ratio_; }
    bool kept(const osg::Vec3d& point) const;

    // The lines' program: colour as given, cut by the clip plane
    // (CubeAxisShaderSource.cpp).
    static const char* const kVertexSource;
    static const char* const kFragmentSource;

    double size_[3] = {0, 0, 0};
    double bounds_[6] = {0, 0, 0, 0, 0, 0};
    std::vector<Face> faces_;
    float labelOffset_ = 2.5f;
    float titleSize_ = 10.0f;
    osg::Vec4 labelColor_{1.0f, 1.0f, 1.0f, 1.0f};
    // Line width of the box, grid and ticks; tick length, gap to the label
    // and label character size, in pixels.
    float lineWidth_ = 1.5f;
    float tickLength_ = 10.0f;
    float labelGap_ = 5.0f;
    float labelSize_ = 15.0f;
    // Device pixels per logical pixel in the last layout.
    float ratio_ = 1.0f;
    double maxSize_ = 0;
    double minSize_ = 0;
    std::array<osg::ref_ptr<osg::Geometry>, 3> axisLines_;
    std::array<osg::ref_ptr<osg::Geometry>, 3> directionLines_;
    osg::ref_ptr<osg::Geometry> edgeLines_, gridLines_, tickLines_;
    osg::ref_ptr<osg::Geode> lines_, marks_, texts_;
    osg::ref_ptr<osg::Group> group_;
    osg::ref_ptr<osg::Camera> camera_;
    std::map<int, int> oppositeCorner_;

    osg::ref_ptr<osgText::Font> font_;
    osg::ref_ptr<osg::Uniform> clipPlane_, clipped_;
    osg::Vec4 clipEquation_;
    bool clipOn_ = false;
    bool gridVisible_ = true;
    int tickCount_ = 6;
    std::vector<Label> labels_;
    std::vector<int> layoutKey_;
};
