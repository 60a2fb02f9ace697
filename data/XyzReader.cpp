#include "XyzReader.h"

#include <algorithm>
#include <cmath>

#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_OK;

long XyzReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out) {
    TextScanner text(data, size);
    GeometryData g;
    std::vector<double> extra;  // columns 4 to 6 of every line, while all lines have them
    bool allHaveExtra = true, byteColors = true, unitColors = true;
    std::vector<std::string_view> f;
    std::string_view line;
    bool firstLine = true;
    while (text.nextLine(line)) {
        const std::string_view trimmed = TextScanner::trim(line);
        if (trimmed.empty() || trimmed.front() == '#' || trimmed.substr(0, 2) == "//") continue;
        TextScanner::split(trimmed, f, ",;");
        double v[6];
        std::size_t parsed = 0;
        while (parsed < std::min<std::size_t>(f.size(), 6) &&
               TextScanner::toDouble(f[parsed], v[parsed]))
            ++parsed;
        const bool header = firstLine && parsed < 3;
        firstLine = false;
        if (header) continue;
        if (parsed < 3) return QEL_DATA_FILE_MALFORMED;
        for (int k = 0; k < 3; ++k)
            g.xyz.push_back(static_cast<float>(v[k]));
        if (parsed < 6) {
            allHaveExtra = false;
            extra.clear();
        }
        if (!allHaveExtra) continue;
        for (int k = 3; k < 6; ++k) {
            extra.push_back(v[k]);
            byteColors = byteColors && v[k] >= 0 && v[k] <= 255 && v[k] == std::floor(v[k]);
            unitColors = unitColors && v[k] >= 0 && v[k] <= 1;
        }
    }
    if (g.xyz.empty()) return QEL_DATA_EMPTY;

    const bool colorSuffix = options.suffix == "xyzrgb";
    const bool normalSuffix = options.suffix == "xyzn";
    if (allHaveExtra && !normalSuffix && (colorSuffix || byteColors)) {
        // .xyzrgb colours in 0..1 are floats; everything else is bytes.
        const double scale = (colorSuffix && unitColors) ? 255.0 : 1.0;
        g.colorChannels = 3;
        g.colors.reserve(extra.size());
        for (double c : extra) {
            const double b = c * scale;
            g.colors.push_back(b > 0 ? static_cast<std::uint8_t>(std::min(255.0, std::round(b)))
                                     : 0);
        }
    }
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
