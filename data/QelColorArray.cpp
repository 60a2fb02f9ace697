#include "QelColorArray.h"

#include <climits>
#include <cstddef>

bool QelColorArray::Create(int count, int channels) {
    if (count < 0 || channels < 1 || channels > 4) return false;
    if (static_cast<long long>(count) * channels > INT_MAX) return false;
    bytes_.assign(static_cast<std::size_t>(count) * static_cast<std::size_t>(channels), 0);
    count_ = count;
    channels_ = channels;
    return true;
}

bool QelColorArray::SetSize(int width, int height, int channels) {
    if (width < 0 || height < 0) return false;
    const long long count = static_cast<long long>(width) * height;
    if (count > INT_MAX) return false;
    return Create(static_cast<int>(count), channels);
}

unsigned char* QelColorArray::Data() {
    return bytes_.empty() ? nullptr : bytes_.data();
}

const unsigned char* QelColorArray::Data() const {
    return bytes_.empty() ? nullptr : bytes_.data();
}

QelColor QelColorArray::operator[](int i) const {
    const std::uint8_t* p =
        bytes_.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(channels_);
    switch (channels_) {
        case 1:
            return QelColor(p[0], p[0], p[0], 255);
        case 2:
            return QelColor(p[0], p[0], p[0], p[1]);
        case 3:
            return QelColor(p[0], p[1], p[2], 255);
        default:
            return QelColor(p[0], p[1], p[2], p[3]);
    }
}
