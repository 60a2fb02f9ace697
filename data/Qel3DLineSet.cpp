#include "Qel3DLineSet.h"

#include <climits>
#include <cstddef>

bool Qel3DLineSet::SetSize(int numVertex, int numLine) {
    if (numVertex < 0 || numLine < 0) return false;
    if (numVertex > INT_MAX / 3 || numLine > INT_MAX / 2) return false;
    vertices_.assign(static_cast<std::size_t>(numVertex) * 3, 0.0f);
    lines_.assign(static_cast<std::size_t>(numLine) * 2, 0);
    return true;
}

float* Qel3DLineSet::VertexData() {
    return vertices_.empty() ? nullptr : vertices_.data();
}

const float* Qel3DLineSet::VertexData() const {
    return vertices_.empty() ? nullptr : vertices_.data();
}

int* Qel3DLineSet::LineData() {
    return lines_.empty() ? nullptr : lines_.data();
}

const int* Qel3DLineSet::LineData() const {
    return lines_.empty() ? nullptr : lines_.data();
}
