#include "Qel3DPlane.h"

#include <cmath>

Qel3DPlane::Qel3DPlane() : point_(0.0f, 0.0f, 0.0f), normal_(0.0f, 0.0f, 0.0f) {}

Qel3DPlane::Qel3DPlane(const QelVector3d& point, const QelVector3d& normal)
    : point_(point), normal_(normal) {}

bool Qel3DPlane::IsValid() const {
    const float values[6] = {point_.x, point_.y, point_.z, normal_.x, normal_.y, normal_.z};
    for (float v : values)
        if (!std::isfinite(v)) return false;
    return normal_.x != 0.0f || normal_.y != 0.0f || normal_.z != 0.0f;
}
