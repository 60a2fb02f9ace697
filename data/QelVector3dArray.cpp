#include "QelVector3dArray.h"

static_assert(sizeof(QelVector3d) == 3 * sizeof(float), "QelVector3d must pack to three floats");

QelVector3dArray::QelVector3dArray(int n) {
    SetSize(n);
}

bool QelVector3dArray::SetSize(int n) {
    if (n < 0) return false;
    items_.resize(static_cast<std::size_t>(n));
    return true;
}

void QelVector3dArray::Append(const QelVector3d& v) {
    items_.push_back(v);
}

float* QelVector3dArray::Data() {
    return items_.empty() ? nullptr : reinterpret_cast<float*>(items_.data());
}

const float* QelVector3dArray::Data() const {
    return items_.empty() ? nullptr : reinterpret_cast<const float*>(items_.data());
}
