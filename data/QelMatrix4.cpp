#include "QelMatrix4.h"

QelMatrix4::QelMatrix4() {
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            m_[r][c] = (r == c) ? 1.0 : 0.0;
}

static bool inRange(int row, int col) {
    return row >= 0 && row < 4 && col >= 0 && col < 4;
}

double QelMatrix4::Value(int row, int col) const {
    return inRange(row, col) ? m_[row][col] : 0.0;
}

bool QelMatrix4::SetValue(int row, int col, double v) {
    if (!inRange(row, col)) return false;
    m_[row][col] = v;
    return true;
}

QelMatrix4 QelMatrix4::Transposed() const {
    QelMatrix4 t;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            t.m_[r][c] = m_[c][r];
    return t;
}
