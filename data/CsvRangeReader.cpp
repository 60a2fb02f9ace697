#include "CsvRangeReader.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <vector>

#include "QelDataStatus.h"
#include "QelRangeImage.h"
#include "TextScanner.h"

namespace qel {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_OK;
using QELMV::QEL_DATA_TOO_LARGE;

long CsvRangeReader::read(const std::uint8_t* data, std::size_t size, QelRangeImage& out) {
    TextScanner text(data, size);
    std::vector<float> heights;
    std::vector<std::string_view> f;
    std::size_t width = 0, height = 0;
    std::string_view line;
    while (text.nextLine(line)) {
        line = TextScanner::trim(line);
        if (line.empty()) continue;
        // A separator at the very end of a line closes it; it adds no cell.
        if (line.back() == ',' || line.back() == ';') line.remove_suffix(1);
        TextScanner::split(line, f, ",;", true);
        if (height == 0) width = f.size();
        if (f.size() != width || width == 0) return QEL_DATA_FILE_MALFORMED;
        for (std::string_view cell : f) {
            double v = 0;
            if (cell.empty()) {
                heights.push_back(-FLT_MAX);
            } else if (!TextScanner::toDouble(cell, v)) {
                return QEL_DATA_FILE_MALFORMED;
            } else {
                const bool representable = std::isfinite(v) && std::fabs(v) < FLT_MAX;
                heights.push_back(representable ? static_cast<float>(v) : -FLT_MAX);
            }
        }
        ++height;
    }
    if (height == 0) return QEL_DATA_EMPTY;
    if (width > INT_MAX || height > INT_MAX || width * height > INT_MAX) return QEL_DATA_TOO_LARGE;
    QelRangeImage image;
    if (!image.SetSize(static_cast<int>(width), static_cast<int>(height), QEL_32F))
        return QEL_DATA_TOO_LARGE;
    image.SetValue(heights.data(), static_cast<int>(heights.size()), 1.0, 0.0, 0, 0);
    out = std::move(image);
    return QEL_DATA_OK;
}

}  // namespace qel
