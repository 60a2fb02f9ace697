#pragma once

// Compile-time description of the range image sample types, so loops over
// samples are instantiated once per type instead of switching per sample.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "QelDataEnums.h"

namespace qel {

template <typename T>
struct SampleType {
    using Value = T;
    static constexpr bool kFloat = std::is_floating_point<T>::value;
    // 0 marks unsigned samples invalid, the lowest value signed and float ones.
    static constexpr T marker() {
        return std::is_unsigned<T>::value ? T(0) : std::numeric_limits<T>::lowest();
    }
    // A float sample must also fit single precision: heights are drawn as
    // floats, and one infinite height would empty the whole picture.
    static bool isValid(T v) {
        if constexpr (kFloat)
            return std::isfinite(v) && v != marker() &&
                   std::fabs(double(v)) <= double(std::numeric_limits<float>::max());
        else
            return v != marker();
    }
};

// Height of a valid sample in the viewer's unit: float samples are heights
// already, integer samples are scaled by the Z resolution after the offset.
template <typename T>
double heightOf(T v, double resolutionZ, double offsetZ) {
    if constexpr (std::is_floating_point<T>::value)
        return static_cast<double>(v);
    else
        return (static_cast<double>(v) - offsetZ) * resolutionZ;
}

// Calls f(SampleType<T>{}) for the C++ type of a QelDataType; false for an
// unknown type.
template <typename F>
bool visitSampleType(int dataType, F&& f) {
    switch (dataType) {
        case QEL_8U:
            f(SampleType<std::uint8_t>{});
            return true;
        case QEL_8S:
            f(SampleType<std::int8_t>{});
            return true;
        case QEL_16U:
            f(SampleType<std::uint16_t>{});
            return true;
        case QEL_16S:
            f(SampleType<std::int16_t>{});
            return true;
        case QEL_32S:
            f(SampleType<std::int32_t>{});
            return true;
        case QEL_32F:
            f(SampleType<float>{});
            return true;
        case QEL_64F:
            f(SampleType<double>{});
            return true;
        default:
            return false;
    }
}

// Clamps and rounds a double into an integer sample type; NaN becomes the
// marker. Float types are converted directly (clamped to the finite range).
template <typename T>
T saturateSample(double v) {
    if (std::isnan(v)) return SampleType<T>::marker();
    if constexpr (std::is_floating_point<T>::value) {
        const double hi = static_cast<double>(std::numeric_limits<T>::max());
        if (v > hi) return std::numeric_limits<T>::max();
        if (v < -hi) return std::numeric_limits<T>::lowest();
        return static_cast<T>(v);
    } else {
        const double lo = static_cast<double>(std::numeric_limits<T>::lowest());
        const double hi = static_cast<double>(std::numeric_limits<T>::max());
        v = std::nearbyint(v);
        if (v <= lo) return std::numeric_limits<T>::lowest();
        if (v >= hi) return std::numeric_limits<T>::max();
        return static_cast<T>(v);
    }
}

}  // namespace qel
