#include "QelVarArray.h"

bool QelVarArray::SetSize(int n) {
    if (n < 0) return false;
    items_.resize(static_cast<std::size_t>(n));
    return true;
}

void QelVarArray::Append(const QelVar& v) {
    items_.push_back(v);
}
