#pragma once

#include <cstdint>

// Reads the samples of a range image by linear index (row * width + column):
// whether each is valid and its value. A sample is valid when it differs
// from its type's invalid marker by more than 1e-8 and is finite.
class RangePixelReader {
public:
    RangePixelReader(const unsigned char* data, int width, int dataType);

    bool isValid(long long index) const;
    double value(long long index) const;
    int elementWidth() const { return elementWidth_; }
    // The invalid marker of a data type; 0 for an unknown type.
    static double marker(int dataType);

private:
    const unsigned char* data_;
    int width_;
    int dataType_;
    int elementWidth_;
};
