#include "QelROI.h"

#include <cmath>

bool QelROI::GenRect1(const QelPoint& topLeft, const QelPoint& bottomRight) {
    if (!std::isfinite(topLeft.x) || !std::isfinite(topLeft.y) || !std::isfinite(bottomRight.x) ||
        !std::isfinite(bottomRight.y))
        return false;
    if (bottomRight.x < topLeft.x || bottomRight.y < topLeft.y) return false;
    whole_ = false;
    topLeft_ = topLeft;
    bottomRight_ = bottomRight;
    return true;
}
