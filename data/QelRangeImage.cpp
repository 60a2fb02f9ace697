#include "QelRangeImage.h"

#include <climits>
#include <cstddef>
#include <cstring>

#include "Qel3DFileOperation.h"
#include "RangeScale.h"
#include "SampleTypes.h"

int QelRangeImage::SampleSize(int dataType) {
    int size = 0;
    qel::visitSampleType(dataType, [&](auto tag) {
        size = static_cast<int>(sizeof(typename decltype(tag)::Value));
    });
    return size;
}

unsigned char* QelRangeImage::Data() {
    return samples_.empty() ? nullptr : samples_.data();
}

const unsigned char* QelRangeImage::Data() const {
    return samples_.empty() ? nullptr : samples_.data();
}

bool QelRangeImage::IsValidColor() const {
    return !colors_.IsEmpty() && colorWidth_ == width_ && colorHeight_ == height_;
}

unsigned char* QelRangeImage::ColorData() {
    return colors_.Data();
}

const unsigned char* QelRangeImage::ColorData() const {
    return colors_.Data();
}

bool QelRangeImage::SetSize(int width, int height, int dataType) {
    const int sampleSize = SampleSize(dataType);
    if (width < 0 || height < 0 || sampleSize == 0) return false;
    const long long count = static_cast<long long>(width) * height;
    if (count > INT_MAX) return false;

    std::vector<std::uint8_t> samples(static_cast<std::size_t>(count) * sampleSize);
    qel::visitSampleType(dataType, [&](auto tag) {
        using T = typename decltype(tag)::Value;
        const T marker = decltype(tag)::marker();
        T* p = reinterpret_cast<T*>(samples.data());
        for (long long i = 0; i < count; ++i)
            p[i] = marker;
    });
    samples_.swap(samples);
    width_ = width;
    height_ = height;
    dataType_ = dataType;
    colors_ = QelColorArray();
    colorWidth_ = colorHeight_ = 0;
    return true;
}

void QelRangeImage::SetInfo(double resolutionX, double resolutionY, double resolutionZ,
                            double offsetX, double offsetY, double offsetZ) {
    resolution_[0] = resolutionX;
    resolution_[1] = resolutionY;
    resolution_[2] = resolutionZ;
    offset_[0] = offsetX;
    offset_[1] = offsetY;
    offset_[2] = offsetZ;
}

// Start index of a run of count elements in a width x height grid, or -1 when
// the run does not fit.
static long long runStart(int width, int height, int count, int startCol, int startRow) {
    if (count < 0 || startCol < 0 || startRow < 0 || startCol >= width || startRow >= height)
        return count == 0 ? 0 : -1;
    const long long start = static_cast<long long>(startRow) * width + startCol;
    if (start + count > static_cast<long long>(width) * height) return -1;
    return start;
}

bool QelRangeImage::SetValue(const void* samples, int count, double scale, double offset,
                             int startCol, int startRow) {
    const long long start = runStart(width_, height_, count, startCol, startRow);
    if (start < 0 || (count > 0 && !samples)) return false;
    if (count == 0) return true;
    qel::visitSampleType(dataType_, [&](auto tag) {
        using Tag = decltype(tag);
        using T = typename Tag::Value;
        const T* src = static_cast<const T*>(samples);
        T* dst = reinterpret_cast<T*>(samples_.data()) + start;
        if (scale == 1.0 && offset == 0.0) {
            std::memcpy(dst, src, static_cast<std::size_t>(count) * sizeof(T));
            return;
        }
        for (int i = 0; i < count; ++i) {
            const T v = src[i];
            dst[i] = Tag::isValid(v) ? qel::saturateSample<T>(double(v) * scale + offset)
                                     : Tag::marker();
        }
    });
    return true;
}

bool QelRangeImage::SetColorSize(int width, int height, int channels) {
    if (channels != 1 && channels != 3 && channels != 4) return false;
    QelColorArray colors;
    if (!colors.SetSize(width, height, channels)) return false;
    colors_ = std::move(colors);
    colorWidth_ = width;
    colorHeight_ = height;
    return true;
}

bool QelRangeImage::SetColorValue(const void* colors, int count, int channels, int startCol,
                                  int startRow) {
    if (colors_.IsEmpty() || channels != colors_.Channel()) return false;
    const long long start = runStart(colorWidth_, colorHeight_, count, startCol, startRow);
    if (start < 0 || (count > 0 && !colors)) return false;
    if (count > 0)
        std::memcpy(colors_.Data() + start * channels, colors,
                    static_cast<std::size_t>(count) * static_cast<std::size_t>(channels));
    return true;
}

bool QelRangeImage::Load(const wchar_t* path, double scale, double offset) {
    if (!path) return false;
    QelRangeImage loaded;
    QelVar file(path);
    if (QELMV::Qel3DFileOperation().Load(&loaded, file, true) != 0) return false;
    // A scale or offset that is not finite, or that carries heights beyond
    // single precision, is refused like the loader's resolutions.
    if (!qel::RangeScale::fitsSinglePrecision(loaded, loaded.resolution_[0], loaded.resolution_[1],
                                              scale, loaded.offset_[0], loaded.offset_[1], offset))
        return false;
    loaded.resolution_[2] = scale;
    loaded.offset_[2] = offset;
    *this = std::move(loaded);
    return true;
}
