#pragma once

#include "QelColorArray.h"
#include "QelDataExport.h"
#include "QelVector3dArray.h"

// An ordered set of 3D points with optional per-point colours. Invalid
// points keep their slot, so point indices stay stable. Copies are deep.
class QEL_DATA_API QelPointCloud {
public:
    QelPointCloud() = default;

    // Number of points, invalid ones included.
    int Length() const { return points_.Length(); }
    int NumValidPoints() const;

    QelVector3d& operator[](int i) { return points_[i]; }
    const QelVector3d& operator[](int i) const { return points_[i]; }

    QelPointCloud DeepCopy() const { return *this; }
    QelVector3dArray DeepCopyPoints() const { return points_; }
    // Empty when the cloud has no colours.
    QelColorArray DeepCopyColors() const { return colors_; }
    bool IsValidColor() const;

    // Replaces the points; colours whose count no longer matches are dropped.
    void SetPoints(const QelVector3dArray& points);
    // Accepts an empty array (no colours) or one colour per point with 3 or
    // 4 channels; returns false and changes nothing otherwise.
    bool SetColors(const QelColorArray& colors);

private:
    QelVector3dArray points_;
    QelColorArray colors_;
};
