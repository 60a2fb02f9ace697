#include "QelPointArray.h"

void QelPointArray::Append(const QelPoint& p) {
    items_.push_back(p);
}

void QelPointArray::Clear() {
    items_.clear();
}
