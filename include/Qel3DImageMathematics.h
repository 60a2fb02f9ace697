#pragma once

#include "QelDataExport.h"
#include "QelPoint.h"
#include "QelROI.h"
#include "QelRangeImage.h"

namespace QELMV {

class QEL_DATA_API Qel3DImageMathematics {
public:
    Qel3DImageMathematics() = default;

    // The largest and smallest valid height inside the region and where they
    // lie (x = column, y = row; the first occurrence in row-major order).
    // Heights are in the unit of the viewer: (sample - OffsetZ) * ResolutionZ
    // for integer samples, the sample itself for float ones. Any output may
    // be null. Fails when the region misses the image or holds no valid
    // sample.
    long RangeImageMaxMin(const QelRangeImage& image, const QelROI& roi, QelPoint* maxPosition,
                          QelPoint* minPosition, double* maxHeight, double* minHeight);
};

}  // namespace QELMV
