#pragma once

#include <cstdint>
#include <vector>

#include "QelColor.h"
#include "QelDataExport.h"

// Packed 8-bit colours, 1 (grey), 3 (RGB) or 4 (RGBA) channels per element.
class QEL_DATA_API QelColorArray {
public:
    QelColorArray() = default;

    // Allocates count elements of zeroed bytes. False (and unchanged) for a
    // negative count, a channel count outside 1..4, or a size overflow.
    bool Create(int count, int channels);
    // The same for a width x height grid of colours.
    bool SetSize(int width, int height, int channels);

    int Length() const { return count_; }
    int Channel() const { return channels_; }
    bool IsEmpty() const { return count_ == 0; }

    // Element i starts at Data()[Channel() * i]. Null when empty.
    unsigned char* Data();
    const unsigned char* Data() const;

    // Element i as a colour: grey expands to r = g = b, missing alpha is 255.
    QelColor operator[](int i) const;

private:
    int count_ = 0;
    int channels_ = 0;
    std::vector<std::uint8_t> bytes_;
};
