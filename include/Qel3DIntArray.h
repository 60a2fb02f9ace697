#pragma once

#include <cstddef>
#include <vector>

#include "QelDataExport.h"

// A resizable array of ints.
class QEL_DATA_API Qel3DIntArray {
public:
    Qel3DIntArray() = default;

    int Length() const { return static_cast<int>(items_.size()); }
    // New elements are 0. False for n < 0.
    bool SetSize(int n);
    int* Data();
    const int* Data() const;

    int& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
    int operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

private:
    std::vector<int> items_;
};
