#pragma once

#include <cstddef>
#include <vector>

#include "QelDataExport.h"
#include "QelVector3d.h"

// A resizable array of QelVector3d, stored as packed x, y, z float triples.
class QEL_DATA_API QelVector3dArray {
public:
    QelVector3dArray() = default;
    explicit QelVector3dArray(int n);

    int Length() const { return static_cast<int>(items_.size()); }
    // Sets the element count; new elements are invalid points. False for n < 0.
    bool SetSize(int n);
    void Append(const QelVector3d& v);

    // Packed triples: element i starts at Data()[3 * i]. Null when empty.
    float* Data();
    const float* Data() const;

    QelVector3d& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
    const QelVector3d& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

private:
    std::vector<QelVector3d> items_;
};
