#pragma once

#include <cstring>
#include <vector>

#include "QelRangeImage.h"

// Writes one sample of the image's own type.
inline void setSample(QelRangeImage& img, int index, double value) {
    const int size = QelRangeImage::SampleSize(img.DataType());
    unsigned char* p = img.Data() + static_cast<size_t>(index) * size;
    switch (img.DataType()) {
        case QEL_8U:
            *p = static_cast<unsigned char>(value);
            break;
        case QEL_8S:
            *reinterpret_cast<signed char*>(p) = static_cast<signed char>(value);
            break;
        case QEL_16U: {
            unsigned short v = static_cast<unsigned short>(value);
            std::memcpy(p, &v, 2);
            break;
        }
        case QEL_16S: {
            short v = static_cast<short>(value);
            std::memcpy(p, &v, 2);
            break;
        }
        case QEL_32S: {
            int v = static_cast<int>(value);
            std::memcpy(p, &v, 4);
            break;
        }
        case QEL_32F: {
            float v = static_cast<float>(value);
            std::memcpy(p, &v, 4);
            break;
        }
        default:
            std::memcpy(p, &value, 8);
            break;
    }
}

// A width x height image of one type, every sample 'value', with the listed
// linear indices set to the type's marker.
inline QelRangeImage imageOf(int type, int width, int height, double value,
                             std::vector<int> invalid = {}) {
    QelRangeImage img;
    img.SetSize(width, height, type);
    const int size = QelRangeImage::SampleSize(type);
    std::vector<unsigned char> marker(static_cast<size_t>(size));
    std::memcpy(marker.data(), img.Data(), static_cast<size_t>(size));
    for (int i = 0; i < width * height; ++i)
        setSample(img, i, value);
    for (int i : invalid)
        std::memcpy(img.Data() + static_cast<size_t>(i) * size, marker.data(), marker.size());
    return img;
}
