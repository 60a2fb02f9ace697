#include "OffReader.h"

#include <algorithm>
#include <cmath>

#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_OK;

// The next non-empty line, comments removed, split into fields.
bool nextFields(TextScanner& text, std::vector<std::string_view>& f) {
    std::string_view line;
    while (text.nextLine(line)) {
        line = line.substr(0, line.find('#'));
        TextScanner::split(line, f);
        if (!f.empty()) return true;
    }
    return false;
}

struct Header {
    bool colored = false;
    bool normals = false;
    long long vertices = 0;
    long long faces = 0;
};

// The keyword ([C][N]OFF) and the counts, which may follow it on its line.
long readHeader(TextScanner& text, Header& h) {
    std::vector<std::string_view> f;
    if (!nextFields(text, f)) return QEL_DATA_FILE_MALFORMED;
    std::string_view keyword = f[0];
    if (keyword.size() < 3 || keyword.substr(keyword.size() - 3) != "OFF")
        return QEL_DATA_FILE_MALFORMED;
    for (char c : keyword.substr(0, keyword.size() - 3)) {
        if (c == 'C')
            h.colored = true;
        else if (c == 'N')
            h.normals = true;
        else
            return QEL_DATA_FILE_MALFORMED;  // 4D, texture and other variants
    }
    std::vector<std::string_view> counts(f.begin() + 1, f.end());
    if (counts.empty()) {
        if (!nextFields(text, f)) return QEL_DATA_FILE_MALFORMED;
        counts = f;
    }
    if (counts.size() < 2 || !TextScanner::toLong(counts[0], h.vertices) ||
        !TextScanner::toLong(counts[1], h.faces) || h.vertices < 0 || h.faces < 0)
        return QEL_DATA_FILE_MALFORMED;
    // Every vertex and face takes a line of at least two bytes.
    if (static_cast<unsigned long long>(h.vertices) + static_cast<unsigned long long>(h.faces) >
        text.remaining() / 2 + 1)
        return QEL_DATA_FILE_MALFORMED;
    return h.vertices == 0 ? QEL_DATA_EMPTY : QEL_DATA_OK;
}

// A vertex's colour, from its fields after the position (and normal).
long readColour(const std::vector<std::string_view>& f, std::size_t first, GeometryData& g) {
    if (f.size() < first + 3) return QEL_DATA_FILE_MALFORMED;
    double rgba[4] = {0, 0, 0, 0};
    // Colours written as decimals no larger than 1 are fractions.
    bool decimal = false, small = true;
    for (std::size_t k = first; k < std::min(f.size(), first + 4); ++k) {
        double& c = rgba[k - first];
        if (!TextScanner::toDouble(f[k], c)) return QEL_DATA_FILE_MALFORMED;
        decimal = decimal || f[k].find_first_of(".eE") != std::string_view::npos;
        small = small && c <= 1.0;
    }
    const bool unit = decimal && small;
    if (g.colorChannels == 0) g.colorChannels = 3;
    for (int k = 0; k < 3; ++k) {
        const double c = unit ? rgba[k] * 255.0 : rgba[k];
        g.colors.push_back(c > 0 ? static_cast<std::uint8_t>(std::min(255.0, std::round(c))) : 0);
    }
    return QEL_DATA_OK;
}

long readVertices(TextScanner& text, const Header& h, GeometryData& g) {
    std::vector<std::string_view> f;
    g.xyz.reserve(static_cast<std::size_t>(h.vertices) * 3);
    const std::size_t first = h.normals ? 6 : 3;  // where colours start
    for (long long i = 0; i < h.vertices; ++i) {
        if (!nextFields(text, f) || f.size() < first) return QEL_DATA_FILE_MALFORMED;
        for (int k = 0; k < 3; ++k) {
            float v = 0;
            if (!TextScanner::toFloat(f[k], v)) return QEL_DATA_FILE_MALFORMED;
            g.xyz.push_back(v);
        }
        if (h.colored)
            if (long status = readColour(f, first, g)) return status;
    }
    return QEL_DATA_OK;
}

// Faces as fans of triangles.
long readFaces(TextScanner& text, const Header& h, GeometryData& g) {
    std::vector<std::string_view> f;
    for (long long i = 0; i < h.faces; ++i) {
        long long n = 0;
        if (!nextFields(text, f) || !TextScanner::toLong(f[0], n) || n < 0 ||
            static_cast<unsigned long long>(n) + 1 > f.size())
            return QEL_DATA_FILE_MALFORMED;
        long long idx[3] = {0, 0, 0};
        for (long long k = 0; k < n; ++k) {
            long long v = 0;
            if (!TextScanner::toLong(f[static_cast<std::size_t>(k) + 1], v) || v < 0 ||
                v >= h.vertices)
                return QEL_DATA_FILE_MALFORMED;
            if (k == 0) idx[0] = v;
            idx[1] = idx[2];
            idx[2] = v;
            if (k >= 2)
                for (long long t : idx)
                    g.triangles.push_back(static_cast<int>(t));
        }
    }
    return QEL_DATA_OK;
}

}  // namespace

long OffReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out) {
    TextScanner text(data, size);
    Header h;
    if (long status = readHeader(text, h)) return status;
    GeometryData g;
    if (long status = readVertices(text, h, g)) return status;
    if (options.faces)
        if (long status = readFaces(text, h, g)) return status;
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
