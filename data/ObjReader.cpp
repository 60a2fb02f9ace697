#include "ObjReader.h"

#include <algorithm>
#include <cmath>

#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_OK;

std::uint8_t unitToByte(double v) {
    if (!(v > 0.0)) return 0;
    return static_cast<std::uint8_t>(std::lround(std::min(v, 1.0) * 255.0));
}

}  // namespace

long ObjReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out) {
    TextScanner text(data, size);
    GeometryData g;
    std::vector<std::string_view> f;
    std::vector<std::uint8_t> rgb;
    bool allColored = true;
    // Faces are kept as 1-based, resolved indices and checked at the end,
    // since a face may come before some of the vertices it names.
    std::vector<long long> polygon;
    std::string_view line;
    while (text.nextLine(line)) {
        TextScanner::split(line, f);
        if (f.empty() || f[0].front() == '#') continue;
        if (f[0] == "v") {
            if (f.size() < 4) return QEL_DATA_FILE_MALFORMED;
            double v[6] = {0, 0, 0, 0, 0, 0};
            const std::size_t n = std::min<std::size_t>(f.size() - 1, 6);
            for (std::size_t k = 0; k < n; ++k)
                if (!TextScanner::toDouble(f[k + 1], v[k])) return QEL_DATA_FILE_MALFORMED;
            for (int k = 0; k < 3; ++k)
                g.xyz.push_back(static_cast<float>(v[k]));
            if (n == 6) {
                for (int k = 3; k < 6; ++k)
                    rgb.push_back(unitToByte(v[k]));
            } else {
                allColored = false;
            }
        } else if (f[0] == "f" && options.faces) {
            polygon.clear();
            const long long count = static_cast<long long>(g.vertexCount());
            for (std::size_t k = 1; k < f.size(); ++k) {
                const std::string_view ref = f[k].substr(0, f[k].find('/'));
                long long index = 0;
                if (!TextScanner::toLong(ref, index) || index == 0) return QEL_DATA_FILE_MALFORMED;
                if (index < 0) index = count + index + 1;  // relative to the vertices so far
                if (index < 1) return QEL_DATA_FILE_MALFORMED;
                polygon.push_back(index - 1);
            }
            for (std::size_t k = 2; k < polygon.size(); ++k) {
                for (long long idx : {polygon[0], polygon[k - 1], polygon[k]}) {
                    if (idx > 0x7fffffff) return QEL_DATA_FILE_MALFORMED;
                    g.triangles.push_back(static_cast<int>(idx));
                }
            }
        }
    }
    if (g.xyz.empty()) return QEL_DATA_EMPTY;
    const long long nv = static_cast<long long>(g.vertexCount());
    for (int index : g.triangles)
        if (index >= nv) return QEL_DATA_FILE_MALFORMED;
    if (allColored) {
        g.colors = std::move(rgb);
        g.colorChannels = 3;
    }
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
