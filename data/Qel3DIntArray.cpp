#include "Qel3DIntArray.h"

bool Qel3DIntArray::SetSize(int n) {
    if (n < 0) return false;
    items_.resize(static_cast<std::size_t>(n), 0);
    return true;
}

int* Qel3DIntArray::Data() {
    return items_.empty() ? nullptr : items_.data();
}

const int* Qel3DIntArray::Data() const {
    return items_.empty() ? nullptr : items_.data();
}
