#include "MeasurementGeometry.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "StatusCodes.h"

namespace {

// The points argument of the exported functions is the third.
constexpr long kBadPoints = QelStatus::argument(3);

bool finite(const osg::Vec3d& p) {
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

}  // namespace

int MeasurementGeometry::pointCount(MeasureKind kind) {
    static constexpr int kCounts[] = {2, 3, 4};
    return kCounts[static_cast<int>(kind)];
}

long MeasurementGeometry::make(MeasureKind kind, const std::vector<osg::Vec3d>& points,
                               MeasurementGeometry* out) {
    if (static_cast<int>(points.size()) != pointCount(kind)) return kBadPoints;
    for (const osg::Vec3d& p : points)
        if (!finite(p)) return kBadPoints;
    MeasurementGeometry g;
    g.kind_ = kind;
    g.points_ = points;
    switch (kind) {
        case MeasureKind::Distance:
            g.value_ = (points[1] - points[0]).length();
            break;
        case MeasureKind::Angle: {
            const osg::Vec3d a = points[0] - points[1], b = points[2] - points[1];
            if (a.length() == 0 || b.length() == 0) return kBadPoints;
            // atan2 of the cross and dot products stays exact near 0 and 180.
            g.value_ = std::atan2((a ^ b).length(), a * b) * 180.0 / M_PI;
            break;
        }
        case MeasureKind::Height: {
            const osg::Vec3d n = (points[1] - points[0]) ^ (points[2] - points[0]);
            const double length = n.length();
            // On one line (to double precision, against the legs' lengths).
            const double scale =
                (points[1] - points[0]).length() * (points[2] - points[0]).length();
            if (!(length > 1e-12 * scale) || !std::isfinite(length)) return kBadPoints;
            g.normal_ = n / length;
            g.value_ = (points[3] - points[0]) * g.normal_;
            g.foot_ = points[3] - g.normal_ * g.value_;
            break;
        }
    }
    if (!std::isfinite(g.value_)) return kBadPoints;
    *out = std::move(g);
    return QelStatus::kOk;
}

std::string MeasurementGeometry::fourDigits(double v) {
    // The decimal exponent after rounding to four digits: 0.0099999998
    // reads 0.01000, not 0.010000.
    char text[64];
    std::snprintf(text, sizeof text, "%.3e", v);
    const char* e = std::strchr(text, 'e');
    int decimals = v != 0 && e ? 3 - std::atoi(e + 1) : 3;
    decimals = decimals < 0 ? 0 : decimals > 12 ? 12 : decimals;
    std::snprintf(text, sizeof text, "%.*f", decimals, v);
    return text;
}

std::string MeasurementGeometry::label() const {
    switch (kind_) {
        case MeasureKind::Distance: {
            const osg::Vec3d d = points_[1] - points_[0];
            return fourDigits(value_) + "\n\u0394x " + fourDigits(d.x()) + "  \u0394y " +
                   fourDigits(d.y()) + "  \u0394z " + fourDigits(d.z()) + "\nhorizontal " +
                   fourDigits(std::hypot(d.x(), d.y()));
        }
        case MeasureKind::Angle:
            return fourDigits(value_) + "\u00b0";
        case MeasureKind::Height:
            return "h " + fourDigits(value_);
    }
    return std::string();
}

osg::Vec3d MeasurementGeometry::labelAnchor() const {
    switch (kind_) {
        case MeasureKind::Distance:
            return (points_[0] + points_[1]) * 0.5;
        case MeasureKind::Angle:
            return points_[1];
        case MeasureKind::Height:
            return (points_[3] + foot_) * 0.5;
    }
    return osg::Vec3d();
}
