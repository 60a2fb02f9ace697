#pragma once

#include "QelDataExport.h"
#include "QelPoint.h"

// A region of interest in image pixels. The default region is the whole
// image; GenRect1 makes it a rectangle that includes both corners
// (x = column, y = row).
class QEL_DATA_API QelROI {
public:
    QelROI() = default;

    // False (and unchanged) when a corner is not finite or the bottom-right
    // corner lies above or left of the top-left one.
    bool GenRect1(const QelPoint& topLeft, const QelPoint& bottomRight);

    bool IsWholeImage() const { return whole_; }
    const QelPoint& TopLeft() const { return topLeft_; }
    const QelPoint& BottomRight() const { return bottomRight_; }

private:
    bool whole_ = true;
    QelPoint topLeft_;
    QelPoint bottomRight_;
};
