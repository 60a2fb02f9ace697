#pragma once

#include "BasePrimitive.h"

// A line through two points (world coordinates), by Qel3DLineType: a
// segment between them; a segment with an arrow head at the second point
// (a cone a tenth of the length long in the surface form, four barbs in the
// line form); or an infinite line through both, drawn across the scene's
// bounds and re-sized whenever the data changes.
class PrimitiveLine : public virtual BasePrimitive {
public:
    PrimitiveLine(const osg::Vec3& start, const osg::Vec3& end, int lineType);
    void buildLines() override;
    void buildSurface() override;
    void fitToScene(const osg::Vec3& minCorner, const osg::Vec3& maxCorner, float radius,
                    const osg::Vec3& centre) override;
    bool resizesToScene() const override;

private:
    void appendArrowHead(bool surface);
    osg::Vec3 start_, end_;  // what is drawn
    osg::Vec3 through_, direction_;
    int lineType_;
};
