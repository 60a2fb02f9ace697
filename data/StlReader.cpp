#include "StlReader.h"

#include <cstring>

#include "ByteCursor.h"
#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_OK;

void addTriangleIndices(GeometryData& g) {
    const int base = static_cast<int>(g.vertexCount()) - 3;
    for (int k = 0; k < 3; ++k)
        g.triangles.push_back(base + k);
}

// 0 on success, QEL_DATA_FILE_MALFORMED when the text is not STL.
long readAscii(const std::uint8_t* data, std::size_t size, GeometryData& g) {
    TextScanner text(data, size);
    std::string_view token;
    if (!text.nextToken(token) || token != "solid") return QEL_DATA_FILE_MALFORMED;
    int inLoop = 0;
    bool facet = false;
    while (text.nextToken(token)) {
        if (token == "vertex") {
            if (!facet || inLoop >= 3) return QEL_DATA_FILE_MALFORMED;
            for (int k = 0; k < 3; ++k) {
                float v = 0;
                if (!text.nextToken(token) || !TextScanner::toFloat(token, v))
                    return QEL_DATA_FILE_MALFORMED;
                g.xyz.push_back(v);
            }
            ++inLoop;
        } else if (token == "facet") {
            if (facet) return QEL_DATA_FILE_MALFORMED;
            facet = true;
            inLoop = 0;
        } else if (token == "endfacet") {
            if (!facet || inLoop != 3) return QEL_DATA_FILE_MALFORMED;
            addTriangleIndices(g);
            facet = false;
        } else if (token == "endsolid") {
            if (facet) return QEL_DATA_FILE_MALFORMED;
            break;  // the rest is the solid's name
        }
        // "normal", "outer", "loop", "endloop", numbers of the normal and the
        // solid's name need nothing.
    }
    if (facet) return QEL_DATA_FILE_MALFORMED;
    return g.triangles.empty() ? QEL_DATA_EMPTY : QEL_DATA_OK;
}

long readBinary(const std::uint8_t* data, std::size_t size, GeometryData& g) {
    ByteCursor in(data, size);
    std::uint32_t count = 0;
    if (!in.skip(80) || !in.read(count)) return QEL_DATA_FILE_MALFORMED;
    if (count == 0) return QEL_DATA_EMPTY;
    if (count > in.remaining() / 50 || count > 0x7fffffffu / 9) return QEL_DATA_FILE_MALFORMED;
    g.xyz.reserve(std::size_t(count) * 9);
    g.triangles.reserve(std::size_t(count) * 3);
    for (std::uint32_t t = 0; t < count; ++t) {
        float v[12];
        for (float& x : v)
            in.read(x);  // fits: checked against the size above
        g.xyz.insert(g.xyz.end(), v + 3, v + 12);
        addTriangleIndices(g);
        in.skip(2);  // attribute byte count
    }
    return QEL_DATA_OK;
}

long finish(long status, GeometryData& g, GeometryData& out) {
    if (status == QEL_DATA_OK) out = std::move(g);
    return status;
}

}  // namespace

bool StlReader::isBinaryBySize(const std::uint8_t* head, std::size_t headSize,
                               std::uint64_t fileSize) {
    ByteCursor in(head, headSize);
    std::uint32_t count = 0;
    if (!in.skip(80) || !in.read(count)) return false;
    return fileSize == 84 + 50 * std::uint64_t(count);
}

long StlReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions&,
                     GeometryData& out) {
    GeometryData g;
    // A file whose size is exactly what its triangle count says is binary,
    // whatever its header holds: CAD exporters often begin it with "solid".
    // Otherwise it is ASCII when it parses as such with at least one facet,
    // and binary as a last resort.
    long status = QEL_DATA_FILE_MALFORMED;
    if (isBinaryBySize(data, size, size)) return finish(readBinary(data, size, g), g, out);
    if (size >= 5 && std::memcmp(data, "solid", 5) == 0) status = readAscii(data, size, g);
    if (status != QEL_DATA_OK) {
        GeometryData binary;
        const long binaryStatus = readBinary(data, size, binary);
        if (binaryStatus == QEL_DATA_OK || status == QEL_DATA_FILE_MALFORMED) {
            status = binaryStatus;
            g = std::move(binary);
        }
    }
    return finish(status, g, out);
}

}  // namespace qel
