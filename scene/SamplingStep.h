#pragma once

#include <algorithm>

// The automatic sampling step of large images, from their pixel count:
// 2 for 1-5 million pixels, 4 up to 10 million (and, deliberately, for
// every image of at most 1 million), 8 up to 100 million, 15 above.
class SamplingStep {
public:
    static int automatic(double pixels) {
        if (pixels > 1000000.0 && pixels <= 5000000.0) return 2;
        if (pixels <= 10000000.0) return 4;
        if (pixels <= 100000000.0) return 8;
        if (pixels > 100000000.0) return 15;
        return 1;  // only for a count that compares neither way (NaN)
    }

    // The automatic steps of a streamed image: every sample of an image of
    // at most a million pixels (a scanner's bands are narrow and arrive a
    // few lines at a time), and never a column step that reaches the width,
    // so every declared stream draws at least one row and two columns.
    static void forStream(double width, double height, int* rowStep, int* columnStep) {
        const double pixels = width * height;
        const int step = pixels <= 1000000.0 ? 1 : automatic(pixels);
        *rowStep = step;
        *columnStep = width > 1 ? static_cast<int>(std::min<double>(step, width - 1)) : 1;
    }
};
