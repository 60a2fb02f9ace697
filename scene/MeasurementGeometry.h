#pragma once

#include <osg/Vec3d>
#include <string>
#include <vector>

#include "SceneModes.h"

// The value of a measurement and what its drawing needs, computed in double
// from the points as given (world coordinates):
// - distance: |p1 - p0|;
// - angle: at p1, between p0 - p1 and p2 - p1, in degrees 0..180;
// - height: of p3 along the unit normal (p1 - p0) x (p2 - p0) of the plane
//   through p0, p1, p2, signed; foot is p3's projection on that plane.
class MeasurementGeometry {
public:
    // How many points a kind takes.
    static int pointCount(MeasureKind kind);
    // 0, or 11200003 when the points do not make a measurement of the kind:
    // the wrong count, a non-finite coordinate, an angle leg of zero length,
    // or three plane points on one line.
    static long make(MeasureKind kind, const std::vector<osg::Vec3d>& points,
                     MeasurementGeometry* out);

    MeasureKind kind() const { return kind_; }
    const std::vector<osg::Vec3d>& points() const { return points_; }
    double value() const { return value_; }
    const osg::Vec3d& foot() const { return foot_; }
    const osg::Vec3d& normal() const { return normal_; }
    // The label: the value with at least four significant digits ("90.00°"),
    // for a distance also its "Δx Δy Δz" and its horizontal distance.
    std::string label() const;
    // Where the label belongs in the world.
    osg::Vec3d labelAnchor() const;

    // v with at least four significant digits, fixed-point.
    static std::string fourDigits(double v);

private:
    MeasureKind kind_ = MeasureKind::Distance;
    std::vector<osg::Vec3d> points_;
    double value_ = 0;
    osg::Vec3d foot_;
    osg::Vec3d normal_;
};
