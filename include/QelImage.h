#pragma once

#include <cstdint>
#include <vector>

#include "QelDataEnums.h"
#include "QelDataExport.h"

// A 2D image of 1 to 4 channels with tightly packed rows. Three-channel
// pixels are stored in blue, green, red order. Copies are deep.
class QEL_DATA_API QelImage {
public:
    QelImage() = default;
    QelImage(const unsigned char* data, int width, int height, int bytesPerLine, int channels,
             QelImageType type);

    // Copies width x height pixels read with the given row stride. False
    // (and unchanged) for a null pointer, a non-positive size, a stride
    // shorter than a row, channels outside 1..4 or an unknown type.
    bool CreateImage(const unsigned char* data, int width, int height, int bytesPerLine,
                     int channels, QelImageType type);

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Channels() const { return channels_; }
    QelImageType BitDepth() const { return static_cast<QelImageType>(type_); }
    unsigned char* ImageData();
    const unsigned char* ImageData() const;

    // Writes the image as BMP, PNG or JPG (a QelImageFormat), whatever the
    // path's suffix. 8-bit images of 1, 3 or 4 channels, and 16-bit unsigned
    // ones as PNG, can be saved; false otherwise or when writing fails.
    bool SaveImage(const wchar_t* path, int format) const;

    // Bytes per channel value of an image type, 0 for an unknown type.
    static int ValueSize(int type);

private:
    int width_ = 0;
    int height_ = 0;
    int channels_ = 0;
    int type_ = QEL_IMAGE_8U;
    std::vector<std::uint8_t> pixels_;
};
