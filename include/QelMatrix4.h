#pragma once

#include "QelDataExport.h"

// A 4 x 4 matrix of doubles acting on column vectors: the translation is in
// column 3. The default value is the identity.
class QEL_DATA_API QelMatrix4 {
public:
    QelMatrix4();

    // Out-of-range indices read 0 and are ignored by SetValue (which then
    // returns false).
    double Value(int row, int col) const;
    bool SetValue(int row, int col, double v);
    QelMatrix4 Transposed() const;

private:
    double m_[4][4];
};
