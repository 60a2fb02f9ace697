#include "QelVector3d.h"

#include <cfloat>
#include <cmath>

QelVector3d::QelVector3d() : x(0.0f), y(0.0f), z(FLT_MAX) {}

QelVector3d::QelVector3d(float x, float y, float z) : x(x), y(y), z(z) {}

bool QelVector3d::IsValid() const {
    return std::isfinite(x) && std::isfinite(y) && std::isfinite(z) && z != FLT_MAX;
}

float QelVector3d::Norm() const {
    return static_cast<float>(std::sqrt(double(x) * x + double(y) * y + double(z) * z));
}
