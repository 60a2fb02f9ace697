#pragma once

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
};
