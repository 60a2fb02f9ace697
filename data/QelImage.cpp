#include "QelImage.h"

#include <climits>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "PathText.h"

int QelImage::ValueSize(int type) {
    switch (type) {
        case QEL_IMAGE_8U:
        case QEL_IMAGE_8S:
            return 1;
        case QEL_IMAGE_16U:
        case QEL_IMAGE_16S:
            return 2;
        case QEL_IMAGE_32F:
            return 4;
        default:
            return 0;
    }
}

QelImage::QelImage(const unsigned char* data, int width, int height, int bytesPerLine, int channels,
                   QelImageType type) {
    CreateImage(data, width, height, bytesPerLine, channels, type);
}

bool QelImage::CreateImage(const unsigned char* data, int width, int height, int bytesPerLine,
                           int channels, QelImageType type) {
    const int valueSize = ValueSize(type);
    if (!data || width <= 0 || height <= 0 || channels < 1 || channels > 4 || valueSize == 0)
        return false;
    const long long rowBytes = static_cast<long long>(width) * channels * valueSize;
    if (bytesPerLine < rowBytes || rowBytes * height > INT_MAX) return false;

    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(rowBytes * height));
    for (int r = 0; r < height; ++r)
        std::memcpy(pixels.data() + r * rowBytes, data + static_cast<long long>(r) * bytesPerLine,
                    static_cast<std::size_t>(rowBytes));
    pixels_.swap(pixels);
    width_ = width;
    height_ = height;
    channels_ = channels;
    type_ = type;
    return true;
}

unsigned char* QelImage::ImageData() {
    return pixels_.empty() ? nullptr : pixels_.data();
}

const unsigned char* QelImage::ImageData() const {
    return pixels_.empty() ? nullptr : pixels_.data();
}

bool QelImage::SaveImage(const wchar_t* path, int format) const {
    static const char* const kSuffix[] = {".bmp", ".png", ".jpg"};
    if (!path || pixels_.empty() || format < 0 || format > 2) return false;
    const bool eightBit = type_ == QEL_IMAGE_8U;
    const bool sixteenBitPng = type_ == QEL_IMAGE_16U && format == QEL_IMAGE_FORMAT_PNG;
    if (!eightBit && !sixteenBitPng) return false;
    if (format == QEL_IMAGE_FORMAT_JPG && channels_ == 4) return false;
    if (channels_ == 2) return false;

    const int depth = eightBit ? CV_8U : CV_16U;
    // The encoder only reads the pixels; the const_cast never leads to a write.
    const cv::Mat mat(height_, width_, CV_MAKETYPE(depth, channels_),
                      const_cast<std::uint8_t*>(pixels_.data()));
    std::vector<uchar> encoded;
    try {
        if (!cv::imencode(kSuffix[format], mat, encoded)) return false;
    } catch (const cv::Exception&) {
        return false;
    }
    std::ofstream out(qel::pathToUtf8(path), std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(reinterpret_cast<const char*>(encoded.data()),
              static_cast<std::streamsize>(encoded.size()));
    return static_cast<bool>(out);
}
