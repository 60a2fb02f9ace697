#include "PcdReader.h"

#include <cstring>
#include <string>

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

}  // namespace

long PcdReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions&,
                     GeometryData& out) {
    TextScanner text(data, size);
    std::vector<Field> fields;
    std::vector<std::string_view> f;
    long long width = -1, height = 1, points = -1;
    std::string mode;
    std::string_view line;
    while (mode.empty() && text.nextLine(line)) {
        TextScanner::split(line, f);
        if (f.empty() || f[0].front() == '#') continue;
        const std::string_view key = f[0];
        auto numbers = [&](auto setter) {
            if (f.size() - 1 != fields.size()) return false;
            for (std::size_t k = 1; k < f.size(); ++k) {
                long long v = 0;
                if (!setter(fields[k - 1], f[k], v)) return false;
            }
            return true;
        };
        if (key == "FIELDS") {
            fields.clear();
            for (std::size_t k = 1; k < f.size(); ++k)
                fields.push_back(Field{std::string(f[k])});
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
            mode = std::string(f[1]);
        } else if (key != "VERSION" && key != "VIEWPOINT") {
            return QEL_DATA_FILE_MALFORMED;
        }
    }
    if (mode.empty() || fields.empty()) return QEL_DATA_FILE_MALFORMED;
    if (points < 0) {
        if (width < 0 || (height > 0 && width > (1LL << 40) / height))
            return QEL_DATA_FILE_MALFORMED;
        points = width * height;
    }

    // Record layout and the fields we read.
    std::size_t recordSize = 0;
    const Field* axis[3] = {nullptr, nullptr, nullptr};
    const Field* color = nullptr;
    for (Field& fd : fields) {
        if (!validField(fd)) return QEL_DATA_FILE_MALFORMED;
        fd.offset = recordSize;
        recordSize += static_cast<std::size_t>(fd.size * fd.count);
        if (fd.name == "x") axis[0] = &fd;
        if (fd.name == "y") axis[1] = &fd;
        if (fd.name == "z") axis[2] = &fd;
        if ((fd.name == "rgb" || fd.name == "rgba") && fd.size == 4) color = &fd;
    }
    if (!axis[0] || !axis[1] || !axis[2]) return QEL_DATA_FILE_MALFORMED;
    if (points == 0) return QEL_DATA_EMPTY;
    const std::size_t body = text.position();
    const std::size_t available = size - body;

    // Every mode needs at least a byte per point; checked before allocating.
    if (static_cast<unsigned long long>(points) > available) return QEL_DATA_FILE_MALFORMED;
    const std::size_t n = static_cast<std::size_t>(points);
    GeometryData g;
    g.xyz.resize(n * 3);
    if (color) {
        g.colorChannels = 3;
        g.colors.resize(n * 3);
    }
    auto store = [&](std::size_t i, double x, double y, double z, double packed) {
        g.xyz[3 * i] = static_cast<float>(x);
        g.xyz[3 * i + 1] = static_cast<float>(y);
        g.xyz[3 * i + 2] = static_cast<float>(z);
        if (!color) return;
        // The colour is the bit pattern of a 4-byte value: 0x00RRGGBB.
        std::uint32_t bits = 0;
        if (color->type == 'F') {
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
    };

    if (mode == "ascii") {
        std::vector<double> values;
        std::size_t i = 0;
        while (i < n && text.nextLine(line)) {
            TextScanner::split(line, f);
            if (f.empty()) continue;
            values.assign(fields.size(), 0.0);
            std::size_t token = 0;
            for (std::size_t k = 0; k < fields.size(); ++k)
                for (long long c = 0; c < fields[k].count; ++c, ++token) {
                    double v = 0;
                    if (token >= f.size() || !TextScanner::toDouble(f[token], v))
                        return QEL_DATA_FILE_MALFORMED;
                    if (c == 0) values[k] = v;
                }
            store(i++, values[axis[0] - fields.data()], values[axis[1] - fields.data()],
                  values[axis[2] - fields.data()], color ? values[color - fields.data()] : 0.0);
        }
        if (i != n) return QEL_DATA_FILE_MALFORMED;
    } else if (mode == "binary" || mode == "binary_compressed") {
        if (recordSize > 0 && n > (std::size_t(1) << 40) / recordSize)
            return QEL_DATA_FILE_MALFORMED;
        const std::size_t total = n * recordSize;
        const std::uint8_t* src = data + body;
        std::vector<std::uint8_t> unpacked;
        if (mode == "binary") {
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
        const bool fieldMajor = mode == "binary_compressed";
        auto at = [&](const Field& fd, std::size_t i) {
            if (fieldMajor) return src + fd.offset * n + i * fd.size * fd.count;
            return src + i * recordSize + fd.offset;
        };
        for (std::size_t i = 0; i < n; ++i)
            store(i, decodeValue(at(*axis[0], i), *axis[0]), decodeValue(at(*axis[1], i), *axis[1]),
                  decodeValue(at(*axis[2], i), *axis[2]),
                  color ? decodeValue(at(*color, i), *color) : 0);
    } else {
        return QEL_DATA_FORMAT_UNSUPPORTED;
    }
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
