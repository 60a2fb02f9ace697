#include "Qel3DAxisTransform.h"

#include <cmath>

namespace QELMV {

bool Qel3DAxisTransform::IsPoseMatrix(const QelMatrix4& m) {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (!std::isfinite(m.Value(r, c))) return false;
    const double tol = kPoseTolerance;
    for (int c = 0; c < 4; ++c)
        if (std::fabs(m.Value(3, c) - (c == 3 ? 1.0 : 0.0)) > tol) return false;

    // Columns of the rotation must be orthonormal: R^T R = I.
    for (int i = 0; i < 3; ++i)
        for (int j = i; j < 3; ++j) {
            double dot = 0.0;
            for (int k = 0; k < 3; ++k)
                dot += m.Value(k, i) * m.Value(k, j);
            if (std::fabs(dot - (i == j ? 1.0 : 0.0)) > tol) return false;
        }
    auto v = [&](int r, int c) { return m.Value(r, c); };
    const double det = v(0, 0) * (v(1, 1) * v(2, 2) - v(1, 2) * v(2, 1)) -
                       v(0, 1) * (v(1, 0) * v(2, 2) - v(1, 2) * v(2, 0)) +
                       v(0, 2) * (v(1, 0) * v(2, 1) - v(1, 1) * v(2, 0));
    return std::fabs(det - 1.0) <= tol;
}

}  // namespace QELMV
