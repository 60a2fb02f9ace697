#pragma once

#include "QelDataExport.h"
#include "QelMatrix4.h"

namespace QELMV {

class QEL_DATA_API Qel3DAxisTransform {
public:
    Qel3DAxisTransform() = default;

    // True for a rigid pose: the upper-left 3 x 3 block is orthonormal with
    // determinant +1 and the last row is 0 0 0 1, each within
    // kPoseTolerance; every element must be finite.
    bool IsPoseMatrix(const QelMatrix4& matrix);

    static constexpr double kPoseTolerance = 1e-5;
};

}  // namespace QELMV
