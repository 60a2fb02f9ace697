#pragma once

#include <cstddef>
#include <vector>

#include "QelDataExport.h"
#include "QelPoint.h"

// A list of 2D points, such as a lasso outline in window pixels.
class QEL_DATA_API QelPointArray {
public:
    QelPointArray() = default;

    void Append(const QelPoint& p);
    int Length() const { return static_cast<int>(items_.size()); }
    void Clear();

    QelPoint& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
    const QelPoint& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

private:
    std::vector<QelPoint> items_;
};
