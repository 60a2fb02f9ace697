#include "ImageRangeReader.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>

#include "ImageHeaderCheck.h"
#include "QelDataStatus.h"
#include "QelRangeImage.h"
#include "SampleTypes.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_FORMAT_UNSUPPORTED;
using QELMV::QEL_DATA_OK;
using QELMV::QEL_DATA_TOO_LARGE;

int dataTypeOfDepth(int depth) {
    switch (depth) {
        case CV_8U:
            return QEL_8U;
        case CV_8S:
            return QEL_8S;
        case CV_16U:
            return QEL_16U;
        case CV_16S:
            return QEL_16S;
        case CV_32S:
            return QEL_32S;
        case CV_32F:
            return QEL_32F;
        case CV_64F:
            return QEL_64F;
        default:
            return -1;
    }
}

// Byte value of one colour channel, whatever the depth.
template <typename T>
std::uint8_t channelByte(T v) {
    if constexpr (sizeof(T) == 1)
        return static_cast<std::uint8_t>(std::is_signed<T>::value ? int(v) + 128 : v);
    else if constexpr (std::is_floating_point<T>::value)
        return v > 0 ? static_cast<std::uint8_t>(std::lround(std::min<double>(v, 1.0) * 255)) : 0;
    else if constexpr (std::is_unsigned<T>::value)
        return static_cast<std::uint8_t>(v >> 8);
    else
        return static_cast<std::uint8_t>(
            (static_cast<long long>(v) - std::numeric_limits<T>::min()) >> (8 * sizeof(T) - 8));
}

}  // namespace

// Only these four codecs are ever handed a file. The image library would
// otherwise pick any decoder it was built with by content, and some of them
// (the DICOM one among them) abort the process on malformed input.
bool ImageRangeReader::hasImageSignature(const std::uint8_t* d, std::size_t n) {
    return ImageHeaderCheck::formatOf(d, n) != ImageHeaderCheck::Format::None;
}

long ImageRangeReader::read(const std::uint8_t* data, std::size_t size, bool withColors,
                            QelRangeImage& out) {
    if (size == 0 || size > static_cast<std::size_t>(INT_MAX)) return QEL_DATA_FILE_MALFORMED;
    if (!hasImageSignature(data, size)) return QEL_DATA_FORMAT_UNSUPPORTED;
    cv::Mat mat;
    try {
        const cv::Mat buffer(1, static_cast<int>(size), CV_8U, const_cast<std::uint8_t*>(data));
        mat = cv::imdecode(buffer, cv::IMREAD_UNCHANGED);
    } catch (const cv::Exception&) {
        return QEL_DATA_FILE_MALFORMED;
    }
    if (mat.empty() || mat.dims != 2) return QEL_DATA_FILE_MALFORMED;
    const int dataType = dataTypeOfDepth(mat.depth());
    const int channels = mat.channels();
    if (dataType < 0 || channels > 4) return QEL_DATA_FORMAT_UNSUPPORTED;
    if (static_cast<long long>(mat.cols) * mat.rows > INT_MAX) return QEL_DATA_TOO_LARGE;

    QelRangeImage image;
    if (!image.SetSize(mat.cols, mat.rows, dataType)) return QEL_DATA_TOO_LARGE;
    const bool color = channels >= 3;
    if (color && withColors) image.SetColorSize(mat.cols, mat.rows, 3);

    visitSampleType(dataType, [&](auto tag) {
        using Tag = decltype(tag);
        using T = typename Tag::Value;
        T* dst = reinterpret_cast<T*>(image.Data());
        std::uint8_t* rgb = image.ColorData();
        for (int r = 0; r < mat.rows; ++r) {
            const T* row = mat.ptr<T>(r);
            for (int c = 0; c < mat.cols; ++c) {
                const T* px = row + static_cast<std::size_t>(c) * channels;
                T v = px[0];
                if (color) {
                    // Pixels are stored blue, green, red.
                    const double lum =
                        0.114 * double(px[0]) + 0.587 * double(px[1]) + 0.299 * double(px[2]);
                    v = saturateSample<T>(lum);
                    if (rgb) {
                        std::uint8_t* o = rgb + 3 * (static_cast<std::size_t>(r) * mat.cols + c);
                        o[0] = channelByte(px[2]);
                        o[1] = channelByte(px[1]);
                        o[2] = channelByte(px[0]);
                    }
                }
                if constexpr (Tag::kFloat)
                    if (!std::isfinite(v)) v = Tag::marker();
                dst[static_cast<std::size_t>(r) * mat.cols + c] = v;
            }
        }
    });
    out = std::move(image);
    return QEL_DATA_OK;
}

}  // namespace qel
