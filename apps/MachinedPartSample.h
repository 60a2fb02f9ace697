#pragma once

#include "Qel3DGraphics.h"

// The demo's bundled sample: a 16-bit range image of a machined aluminium
// block as a laser line scanner would deliver it. Built by code, the same
// every time: a base plate with a raised pad, a stepped pocket, two drilled
// through-holes, a counterbored hole, a ramp, a chamfered edge, and the
// missing samples such scanners leave (occlusion shadows behind steps,
// the through-holes, a few dropouts).
class MachinedPartSample {
public:
    static constexpr int kWidth = 900;
    static constexpr int kHeight = 600;
    static constexpr double kPixelSize = 0.1;       // mm per pixel in x and y
    static constexpr double kHeightStep = 0.001;    // mm per sample unit
    static constexpr double kHeightOffset = 10000;  // sample value of height 0

    // Heights in millimetres (NaN for no sample) at pixel (column, row).
    static double heightAt(int column, int row);
    static QelRangeImage build();
};
