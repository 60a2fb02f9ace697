#include "PrimitiveRect.h"

#include "Tessellation.h"

PrimitiveRect::PrimitiveRect(const osg::Vec3& centre, const osg::Vec3& angles, float width,
                             float height)
    : PrimitivePolygon({{-width / 2, -height / 2, 0},
                        {width / 2, -height / 2, 0},
                        {width / 2, height / 2, 0},
                        {-width / 2, height / 2, 0}}) {
    setPose(Tessellation::poseByAngles(centre, angles));
}
