#pragma once

#include <QColor>
#include <memory>
#include <osg/Group>
#include <osg/Vec4>
#include <osg/ref_ptr>

#include "RenderBins.h"

class GLViewer;
class QelColor;
class QelCubeAxis3d;

// What a view draws around its data: the background colour, the bounding
// box, the cube axis with its grid, and the pen the window's texts use.
// The box and the axis follow the data's bounds; both are drawn in the
// inverse of the background so they stay visible on any background. The
// axis exists while it is switched on and the data has a positive extent
// on every axis; flat data simply has none.
class ViewDecorations {
public:
    explicit ViewDecorations(GLViewer& view);
    ~ViewDecorations();

    // The group the bounding box hangs under, first under the view's root.
    osg::Group* group() const { return group_.get(); }
    // The viewer exists: the background and a switched-on axis apply.
    void viewerReady();
    // The data changed: box and axis follow its bounds.
    void followData();

    QColor backgroundColor() const { return background_; }
    void setBackgroundColor(int r, int g, int b, int a);
    // The inverse of the background, with its alpha.
    QColor labelColour() const;

    void setBoundingBoxVisible(bool visible);
    void setAxisVisible(bool visible);
    bool axisVisible() const { return axisOn_; }
    void setGridVisible(bool visible);
    QelCubeAxis3d* cubeAxis() const { return cubeAxis_.get(); }

    // Draws the box and the axis after everything in bins below
    // kAfterDataBin (the data, the shapes, a pass over them) while any of
    // the reasons asks for it; in the scene's order again when none does.
    static constexpr int kAfterDataBin = RenderBins::kAfterData;
    enum class AfterData { EyeDome = 1, KeptFrame = 2 };
    void drawAfterData(AfterData reason, bool after);

    void setTextPen(const QelColor& colour, long size);
    void getTextPen(QelColor* colour, long* size) const;

private:
    void rebuildBoundingBox();
    // Builds, re-sizes or drops the cube axis for the data's bounds.
    void rebuildCubeAxis();
    void dropCubeAxis();
    // Puts a node's drawing in the bin drawAfterData asks for.
    void placeInBin(osg::Node* node) const;

    GLViewer& view_;
    osg::ref_ptr<osg::Group> group_;
    QColor background_{Qt::black};
    bool bboxVisible_ = false;
    bool axisOn_ = false;
    bool gridOn_ = true;
    // The reasons drawAfterData was given (none: the scene's own order).
    unsigned int afterDataReasons_ = 0;
    std::unique_ptr<QelCubeAxis3d> cubeAxis_;
    QColor textPenColour_{Qt::white};
    long textPenSize_ = 12;
};
