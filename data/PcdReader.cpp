#include "PcdReader.h"

#include <cstring>
#include <string>
#include <vector>

#include "ByteCursor.h"
#include "LzfDecoder.h"
#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_FORMAT_UNSUPPORTED;
using QELMV::QEL_DATA_OK;

struct Field {
    std::string name;
    long long size = 4;
    char type = 'F';
    long long count = 1;
    std::size_t offset = 0;  // within a point record
};

// One value of a field from raw bytes, as a double.
double decodeValue(const std::uint8_t* p, const Field& f) {
    ByteCursor c(p, static_cast<std::size_t>(f.size));
    auto get = [&](auto t) {
        c.read(t);
        return static_cast<double>(t);
    };
    switch (f.type) {
        case 'F':
            return f.size == 8 ? get(double()) : get(float());
        case 'U':
            return f.size == 1   ? get(std::uint8_t())
                   : f.size == 2 ? get(std::uint16_t())
                   : f.size == 4 ? get(std::uint32_t())
                                 : get(std::uint64_t());
        default:
            return f.size == 1   ? get(std::int8_t())
                   : f.size == 2 ? get(std::int16_t())
                   : f.size == 4 ? get(std::int32_t())
                                 : get(std::int64_t());
    }
}

bool validField(const Field& f) {
    const bool sizeOk = f.type == 'F' ? (f.size == 4 || f.size == 8)
                                      : (f.size == 1 || f.size == 2 || f.size == 4 || f.size == 8);
    return sizeOk && (f.type == 'F' || f.type == 'U' || f.type == 'I') && f.count >= 1 &&
           f.count <= 65536;
}

// What the header says: the fields, the number of points, the data mode,
// and where in a record each field lies.
struct Header {
    std::vector<Field> fields;
    long long points = 0;
    std::string mode;
    std::size_t recordSize = 0;
    int axis[3] = {-1, -1, -1};
    int color = -1;
};

// Reads the header up to and including its DATA line.
long readHeader(TextScanner& text, Header& h) {
    std::vector<std::string_view> f;
    long long width = -1, height = 1, points = -1;
    std::string_view line;
    while (h.mode.empty() && text.nextLine(line)) {
        TextScanner::split(line, f);
        if (f.empty() || f[0].front() == '#') continue;
        const std::string_view key = f[0];
        // One value a field on this line, each given to setter.
        auto numbers = [&](auto setter) {
            if (f.size() - 1 != h.fields.size()) return false;
            for (std::size_t k = 1; k < f.size(); ++k) {
                long long v = 0;
                if (!setter(h.fields[k - 1], f[k], v)) return false;
            }
            return true;
        };
        if (key == "FIELDS") {
            h.fields.clear();
            for (std::size_t k = 1; k < f.size(); ++k)
                h.fields.push_back(Field{std::string(f[k])});
        } else if (key == "SIZE") {
            if (!numbers([](Field& fd, std::string_view t, long long& v) {
                    return TextScanner::toLong(t, v) && ((fd.size = v), true);
                }))
                return QEL_DATA_FILE_MALFORMED;
        } else if (key == "TYPE") {
            if (!numbers([](Field& fd, std::string_view t, long long&) {
                    return t.size() == 1 && ((fd.type = t[0]), true);
                }))
                return QEL_DATA_FILE_MALFORMED;
        } else if (key == "COUNT") {
            if (!numbers([](Field& fd, std::string_view t, long long& v) {
                    return TextScanner::toLong(t, v) && ((fd.count = v), true);
                }))
                return QEL_DATA_FILE_MALFORMED;
        } else if (key == "WIDTH" || key == "HEIGHT" || key == "POINTS") {
            long long v = 0;
            if (f.size() != 2 || !TextScanner::toLong(f[1], v) || v < 0)
                return QEL_DATA_FILE_MALFORMED;
            (key == "WIDTH" ? width : key == "HEIGHT" ? height : points) = v;
        } else if (key == "DATA") {
            if (f.size() != 2) return QEL_DATA_FILE_MALFORMED;
            h.mode = std::string(f[1]);
        } else if (key != "VERSION" && key != "VIEWPOINT") {
            return QEL_DATA_FILE_MALFORMED;
        }
    }
    if (h.mode.empty() || h.fields.empty()) return QEL_DATA_FILE_MALFORMED;
    if (points < 0) {
        if (width < 0 || (height > 0 && width > (1LL << 40) / height))
            return QEL_DATA_FILE_MALFORMED;
        points = width * height;
    }
    h.points = points;

    // The record layout and the fields we read.
    for (std::size_t k = 0; k < h.fields.size(); ++k) {
        Field& fd = h.fields[k];
        if (!validField(fd)) return QEL_DATA_FILE_MALFORMED;
        fd.offset = h.recordSize;
        h.recordSize += static_cast<std::size_t>(fd.size * fd.count);
        const int index = static_cast<int>(k);
        if (fd.name == "x") h.axis[0] = index;
        if (fd.name == "y") h.axis[1] = index;
        if (fd.name == "z") h.axis[2] = index;
        if ((fd.name == "rgb" || fd.name == "rgba") && fd.size == 4) h.color = index;
    }
    if (h.axis[0] < 0 || h.axis[1] < 0 || h.axis[2] < 0) return QEL_DATA_FILE_MALFORMED;
    return h.points == 0 ? QEL_DATA_EMPTY : QEL_DATA_OK;
}

// Stores point i; the colour is the bit pattern of a 4-byte value, 0x00RRGGBB.
void store(GeometryData& g, const Header& h, std::size_t i, double x, double y, double z,
           double packed) {
    g.xyz[3 * i] = static_cast<float>(x);
    g.xyz[3 * i + 1] = static_cast<float>(y);
    g.xyz[3 * i + 2] = static_cast<float>(z);
    if (h.color < 0) return;
    std::uint32_t bits = 0;
    if (h.fields[static_cast<std::size_t>(h.color)].type == 'F') {
        const float asFloat = static_cast<float>(packed);
        std::memcpy(&bits, &asFloat, 4);
    } else {
        // ASCII files may hold any number here; out of range is black.
        const bool fits = packed >= -2147483648.0 && packed < 4294967296.0;
        bits = fits ? static_cast<std::uint32_t>(static_cast<long long>(packed)) : 0;
    }
    g.colors[3 * i] = static_cast<std::uint8_t>(bits >> 16);
    g.colors[3 * i + 1] = static_cast<std::uint8_t>(bits >> 8);
    g.colors[3 * i + 2] = static_cast<std::uint8_t>(bits);
}

// One line a point, the first value of each field.
long readAscii(TextScanner& text, const Header& h, GeometryData& g) {
    const std::size_t n = static_cast<std::size_t>(h.points);
    std::vector<std::string_view> f;
    std::vector<double> values;
    std::string_view line;
    std::size_t i = 0;
    while (i < n && text.nextLine(line)) {
        TextScanner::split(line, f);
        if (f.empty()) continue;
        values.assign(h.fields.size(), 0.0);
        std::size_t token = 0;
        for (std::size_t k = 0; k < h.fields.size(); ++k)
            for (long long c = 0; c < h.fields[k].count; ++c, ++token) {
                double v = 0;
                if (token >= f.size() || !TextScanner::toDouble(f[token], v))
                    return QEL_DATA_FILE_MALFORMED;
                if (c == 0) values[k] = v;
            }
        store(g, h, i++, values[size_t(h.axis[0])], values[size_t(h.axis[1])],
              values[size_t(h.axis[2])], h.color >= 0 ? values[size_t(h.color)] : 0.0);
    }
    return i == n ? QEL_DATA_OK : QEL_DATA_FILE_MALFORMED;
}

// Records one after another (binary), or LZF-packed fields one after
// another (binary_compressed).
long readBinary(const std::uint8_t* src, std::size_t available, const Header& h, GeometryData& g) {
    const std::size_t n = static_cast<std::size_t>(h.points);
    if (h.recordSize > 0 && n > (std::size_t(1) << 40) / h.recordSize)
        return QEL_DATA_FILE_MALFORMED;
    const std::size_t total = n * h.recordSize;
    std::vector<std::uint8_t> unpacked;
    const bool fieldMajor = h.mode == "binary_compressed";
    if (!fieldMajor) {
        if (total > available) return QEL_DATA_FILE_MALFORMED;
    } else {
        ByteCursor c(src, available);
        std::uint32_t packedSize = 0, rawSize = 0;
        if (!c.read(packedSize) || !c.read(rawSize)) return QEL_DATA_FILE_MALFORMED;
        // LZF expands at most about 100-fold, which bounds the allocation
        // by the file's size.
        if (packedSize > c.remaining() || rawSize != total ||
            rawSize > std::size_t(packedSize) * 100 + 1024)
            return QEL_DATA_FILE_MALFORMED;
        unpacked.resize(total);
        if (LzfDecoder::decode(src + 8, packedSize, unpacked.data(), total) != total)
            return QEL_DATA_FILE_MALFORMED;
        src = unpacked.data();
    }
    auto value = [&](int field, std::size_t i) {
        const Field& fd = h.fields[static_cast<std::size_t>(field)];
        const std::uint8_t* at = fieldMajor ? src + fd.offset * n + i * fd.size * fd.count
                                            : src + i * h.recordSize + fd.offset;
        return decodeValue(at, fd);
    };
    for (std::size_t i = 0; i < n; ++i)
        store(g, h, i, value(h.axis[0], i), value(h.axis[1], i), value(h.axis[2], i),
              h.color >= 0 ? value(h.color, i) : 0);
    return QEL_DATA_OK;
}

}  // namespace

long PcdReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions&,
                     GeometryData& out) {
    TextScanner text(data, size);
    Header h;
    if (long status = readHeader(text, h)) return status;
    const std::size_t body = text.position();
    const std::size_t available = size - body;
    // Every mode needs at least a byte per point; checked before allocating.
    if (static_cast<unsigned long long>(h.points) > available) return QEL_DATA_FILE_MALFORMED;
    if (h.mode != "ascii" && h.mode != "binary" && h.mode != "binary_compressed")
        return QEL_DATA_FORMAT_UNSUPPORTED;
    const std::size_t n = static_cast<std::size_t>(h.points);
    GeometryData g;
    g.xyz.resize(n * 3);
    if (h.color >= 0) {
        g.colorChannels = 3;
        g.colors.resize(n * 3);
    }
    const long status =
        h.mode == "ascii" ? readAscii(text, h, g) : readBinary(data + body, available, h, g);
    if (status != QEL_DATA_OK) return status;
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
