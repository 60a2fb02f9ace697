#pragma once

#include <QRunnable>
#include <cmath>
#include <cstdint>
#include <limits>

// Clears the samples of rows [rowBegin, rowEnd) whose height falls outside
// [zMin, zMax] (or that are invalid already) to the type's invalid marker:
// 0 for unsigned 16-bit samples, the lowest value for signed 32-bit ones.
template <typename T>
class RangeImageFilter : public QRunnable {
public:
    RangeImageFilter(T* pixels, double zMin, double zMax, double scale, double offset, int width,
                     int rowBegin, int rowEnd)
        : pixels_(pixels),
          zMin_(zMin),
          zMax_(zMax),
          scale_(scale),
          offset_(offset),
          width_(width),
          rowBegin_(rowBegin),
          rowEnd_(rowEnd) {}

    static constexpr T marker() {
        return std::is_unsigned<T>::value ? T(0) : std::numeric_limits<T>::lowest();
    }
    static bool isInvalid(T raw) { return std::fabs(double(raw) - double(marker())) < 1e-8; }

    void run() override {
        for (long long r = rowBegin_; r < rowEnd_; ++r)
            for (long long c = 0; c < width_; ++c) {
                T& raw = pixels_[r * width_ + c];
                const float z = static_cast<float>(double(raw) * scale_ + offset_);
                if (isInvalid(raw) || z < zMin_ || z > zMax_) raw = marker();
            }
    }

private:
    T* pixels_;
    double zMin_, zMax_, scale_, offset_;
    int width_, rowBegin_, rowEnd_;
};
