#include "QelPointCloud.h"

int QelPointCloud::NumValidPoints() const {
    int n = 0;
    for (int i = 0; i < points_.Length(); ++i)
        if (points_[i].IsValid()) ++n;
    return n;
}

bool QelPointCloud::IsValidColor() const {
    return !colors_.IsEmpty() && colors_.Length() == points_.Length() && colors_.Channel() >= 3;
}

void QelPointCloud::SetPoints(const QelVector3dArray& points) {
    points_ = points;
    if (colors_.Length() != points_.Length()) colors_ = QelColorArray();
}

bool QelPointCloud::SetColors(const QelColorArray& colors) {
    if (colors.IsEmpty()) {
        colors_ = QelColorArray();
        return true;
    }
    if (colors.Length() != points_.Length() || colors.Channel() < 3) return false;
    colors_ = colors;
    return true;
}
