#include "RangePixelReader.h"

#include <cfloat>
#include <cmath>
#include <cstring>

#include "QelRangeImage.h"

RangePixelReader::RangePixelReader(const unsigned char* data, int width, int dataType)
    : data_(data),
      width_(width),
      dataType_(dataType),
      elementWidth_(QelRangeImage::SampleSize(dataType)) {}

double RangePixelReader::marker(int dataType) {
    switch (dataType) {
        case QEL_8S:
            return -128.0;
        case QEL_16S:
            return -32768.0;
        case QEL_32S:
            return -2147483648.0;
        case QEL_32F:
            return -static_cast<double>(FLT_MAX);
        case QEL_64F:
            return -DBL_MAX;
        default:
            return 0.0;
    }
}

double RangePixelReader::value(long long index) const {
    const unsigned char* p = data_ + index * elementWidth_;
    auto read = [p](auto v) {
        std::memcpy(&v, p, sizeof(v));
        return static_cast<double>(v);
    };
    switch (dataType_) {
        case QEL_8U:
            return read(std::uint8_t());
        case QEL_8S:
            return read(std::int8_t());
        case QEL_16U:
            return read(std::uint16_t());
        case QEL_16S:
            return read(std::int16_t());
        case QEL_32S:
            return read(std::int32_t());
        case QEL_32F:
            return read(float());
        case QEL_64F:
            return read(double());
        default:
            return 0.0;
    }
}

bool RangePixelReader::isValid(long long index) const {
    if (elementWidth_ == 0) return false;
    const double v = value(index);
    // Heights are drawn in single precision: a sample beyond it is invalid.
    return std::isfinite(v) && std::fabs(v - marker(dataType_)) > 1e-8 &&
           std::fabs(v) <= static_cast<double>(FLT_MAX);
}
