#pragma once

#include <cstddef>
#include <vector>

#include "QelDataExport.h"
#include "QelVar.h"

// A list of variants: the parameter list of a range image.
class QEL_DATA_API QelVarArray {
public:
    QelVarArray() = default;

    int Length() const { return static_cast<int>(items_.size()); }
    // New elements are empty variants. False for n < 0.
    bool SetSize(int n);
    void Append(const QelVar& v);

    QelVar& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
    const QelVar& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }

private:
    std::vector<QelVar> items_;
};
