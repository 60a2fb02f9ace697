#pragma once

#include "QelDataExport.h"

// One RGBA colour, each channel 0..255. Alpha 255 is opaque.
class QEL_DATA_API QelColor {
public:
    constexpr QelColor() = default;
    constexpr QelColor(int r, int g, int b, int a = 255) : r(r), g(g), b(b), a(a) {}

    int r = 0;
    int g = 0;
    int b = 0;
    int a = 255;
};
