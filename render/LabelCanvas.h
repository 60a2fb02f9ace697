#pragma once

#include <QFont>
#include <QImage>
#include <osg/Camera>
#include <osg/Geometry>
#include <osg/Image>
#include <osg/Texture2D>
#include <osg/Vec4>
#include <string>
#include <vector>

// The labels of a view drawn as one picture: the text engine of the window
// system paints every shown label into an image the size of the view, and
// one geometry draws a quad over each line of text, textured from it, over
// the scene. Hundreds of labels cost one draw, and a still view repaints
// nothing (the image changes only with the layout).
class LabelCanvas {
public:
    LabelCanvas();

    // The node to put where the labels are drawn: a camera of the view's
    // pixels, drawn in order, not cut by clip planes, never picked.
    osg::Camera* node() const { return camera_.get(); }

    // Starts a new picture for a view of width x height device pixels, with
    // characters 'size' pixels high; the previous labels are gone.
    void begin(int width, int height, float size);
    // The width in pixels a line of text takes at the current size.
    double textWidth(const std::string& text) const;
    // Paints text with its base line at (x, y), window pixels with y up, in
    // the colour, over a drop shadow in the inverse of the colour; a quad
    // shows it.
    void text(double x, double y, const std::string& text, const osg::Vec4& colour);
    // Hands the picture over to be drawn.
    void end();
    // Whether the last picture shows any text.
    bool empty() const { return corners_.empty(); }

private:
    void addQuad(double left, double bottom, double right, double top);

    QImage picture_;
    QFont font_;
    // Whether the picture holds text since it was last cleared, and since
    // it was last handed to the texture.
    bool used_ = false;
    bool changed_ = false;
    osg::ref_ptr<osg::Camera> camera_;
    osg::ref_ptr<osg::Geometry> quads_;
    osg::ref_ptr<osg::Image> image_;
    osg::ref_ptr<osg::Texture2D> texture_;
    std::vector<osg::Vec3> corners_;
    std::vector<osg::Vec2> texels_;
};
