#pragma once

#include "QelDataExport.h"

// A 2D point of doubles: image column or window x, then row or window y.
class QEL_DATA_API QelPoint {
public:
    QelPoint() = default;
    QelPoint(double x, double y) : x(x), y(y) {}

    double x = 0.0;
    double y = 0.0;
};
