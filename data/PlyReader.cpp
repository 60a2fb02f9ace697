#include "PlyReader.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "ByteCursor.h"
#include "QelDataStatus.h"
#include "TextScanner.h"

namespace qel {
namespace {

using QELMV::QEL_DATA_EMPTY;
using QELMV::QEL_DATA_FILE_MALFORMED;
using QELMV::QEL_DATA_FORMAT_UNSUPPORTED;
using QELMV::QEL_DATA_OK;

enum class Scalar { None, I8, U8, I16, U16, I32, U32, F32, F64 };

Scalar scalarFromName(std::string_view n) {
    if (n == "char" || n == "int8") return Scalar::I8;
    if (n == "uchar" || n == "uint8") return Scalar::U8;
    if (n == "short" || n == "int16") return Scalar::I16;
    if (n == "ushort" || n == "uint16") return Scalar::U16;
    if (n == "int" || n == "int32") return Scalar::I32;
    if (n == "uint" || n == "uint32") return Scalar::U32;
    if (n == "float" || n == "float32") return Scalar::F32;
    if (n == "double" || n == "float64") return Scalar::F64;
    return Scalar::None;
}

std::size_t scalarSize(Scalar s) {
    switch (s) {
        case Scalar::I8:
        case Scalar::U8:
            return 1;
        case Scalar::I16:
        case Scalar::U16:
            return 2;
        case Scalar::I32:
        case Scalar::U32:
        case Scalar::F32:
            return 4;
        case Scalar::F64:
            return 8;
        default:
            return 0;
    }
}

// Where a property's value goes.
enum class Role { Skip, X, Y, Z, Red, Green, Blue, Alpha, FaceIndices, StripIndices };

struct Property {
    Scalar type = Scalar::None;
    Scalar countType = Scalar::None;  // set for list properties
    Role role = Role::Skip;
};

struct Element {
    std::string name;
    long long count = 0;
    std::vector<Property> properties;
};

Role vertexRole(std::string_view n) {
    if (n == "x") return Role::X;
    if (n == "y") return Role::Y;
    if (n == "z") return Role::Z;
    if (n == "red" || n == "r" || n == "diffuse_red") return Role::Red;
    if (n == "green" || n == "g" || n == "diffuse_green") return Role::Green;
    if (n == "blue" || n == "b" || n == "diffuse_blue") return Role::Blue;
    if (n == "alpha" || n == "a" || n == "diffuse_alpha") return Role::Alpha;
    return Role::Skip;
}

// Reads one scalar of the given type as a double, binary or ASCII.
class ValueSource {
public:
    ValueSource(const std::uint8_t* data, std::size_t size, bool ascii, bool bigEndian)
        : ascii_(ascii), bytes_(data, size, bigEndian), text_(data, size) {}

    bool next(Scalar type, double& v) {
        if (ascii_) {
            std::string_view token;
            return text_.nextToken(token) && TextScanner::toDouble(token, v);
        }
        switch (type) {
            case Scalar::I8:
                return get<std::int8_t>(v);
            case Scalar::U8:
                return get<std::uint8_t>(v);
            case Scalar::I16:
                return get<std::int16_t>(v);
            case Scalar::U16:
                return get<std::uint16_t>(v);
            case Scalar::I32:
                return get<std::int32_t>(v);
            case Scalar::U32:
                return get<std::uint32_t>(v);
            case Scalar::F32:
                return get<float>(v);
            case Scalar::F64:
                return get<double>(v);
            default:
                return false;
        }
    }
    std::size_t remaining() const { return ascii_ ? text_.remaining() : bytes_.remaining(); }

private:
    template <typename T>
    bool get(double& v) {
        T t;
        if (!bytes_.read(t)) return false;
        v = static_cast<double>(t);
        return true;
    }
    bool ascii_;
    ByteCursor bytes_;
    TextScanner text_;
};

std::uint8_t colorByte(double v, Scalar type) {
    if (type == Scalar::F32 || type == Scalar::F64) v *= 255.0;
    if (!(v > 0.0)) return 0;  // NaN too
    return static_cast<std::uint8_t>(std::min(255.0, std::round(v)));
}

// A face's polygon as a fan of triangles.
void addFan(const std::vector<long long>& polygon, std::vector<int>& triangles) {
    for (std::size_t k = 2; k < polygon.size(); ++k)
        for (long long v : {polygon[0], polygon[k - 1], polygon[k]})
            triangles.push_back(static_cast<int>(v));
}

// Triangle strips, -1 ending one strip and starting the next. Every second
// triangle of a strip is flipped so all keep the strip's winding; triangles
// with a repeated corner (the strip's joints) are dropped.
void addStrips(const std::vector<long long>& indices, std::vector<int>& triangles) {
    std::size_t start = 0;
    for (std::size_t k = 0; k < indices.size(); ++k) {
        if (indices[k] < 0) {
            start = k + 1;
            continue;
        }
        if (k < start + 2) continue;
        long long a = indices[k - 2], b = indices[k - 1];
        const long long c = indices[k];
        if ((k - start) % 2 == 1) std::swap(a, b);
        if (a == b || b == c || a == c) continue;
        for (long long v : {a, b, c})
            triangles.push_back(static_cast<int>(v));
    }
}

struct Header {
    bool ascii = false;
    bool bigEndian = false;
    std::vector<Element> elements;
};

// One property line of element e: "property <type> <name>" or
// "property list <count type> <type> <name>".
long readProperty(const std::vector<std::string_view>& f, Element& e) {
    Property p;
    std::string_view name;
    if (f.size() == 5 && f[1] == "list") {
        p.countType = scalarFromName(f[2]);
        p.type = scalarFromName(f[3]);
        name = f[4];
        if (p.countType == Scalar::None || p.countType == Scalar::F32 || p.countType == Scalar::F64)
            return QEL_DATA_FILE_MALFORMED;
        const bool indices = name == "vertex_indices" || name == "vertex_index";
        if (e.name == "face" && indices) p.role = Role::FaceIndices;
        if (e.name == "tristrips" && indices) p.role = Role::StripIndices;
    } else if (f.size() == 3) {
        p.type = scalarFromName(f[1]);
        name = f[2];
        if (e.name == "vertex") p.role = vertexRole(name);
    } else {
        return QEL_DATA_FILE_MALFORMED;
    }
    if (p.type == Scalar::None) return QEL_DATA_FILE_MALFORMED;
    e.properties.push_back(p);
    return QEL_DATA_OK;
}

// The header, from "ply" to "end_header".
long readHeader(TextScanner& header, Header& h) {
    std::string_view line;
    if (!header.nextLine(line) || TextScanner::trim(line) != "ply") return QEL_DATA_FILE_MALFORMED;
    bool haveFormat = false;
    std::vector<std::string_view> f;
    while (header.nextLine(line)) {
        TextScanner::split(line, f);
        if (f.empty() || f[0] == "comment" || f[0] == "obj_info") continue;
        if (f[0] == "end_header") return haveFormat ? QEL_DATA_OK : QEL_DATA_FILE_MALFORMED;
        if (f[0] == "format" && f.size() >= 2) {
            haveFormat = true;
            if (f[1] == "ascii")
                h.ascii = true;
            else if (f[1] == "binary_big_endian")
                h.bigEndian = true;
            else if (f[1] != "binary_little_endian")
                return QEL_DATA_FORMAT_UNSUPPORTED;
        } else if (f[0] == "element" && f.size() == 3) {
            Element e;
            e.name = std::string(f[1]);
            if (!TextScanner::toLong(f[2], e.count) || e.count < 0) return QEL_DATA_FILE_MALFORMED;
            h.elements.push_back(std::move(e));
        } else if (f[0] == "property" && !h.elements.empty()) {
            if (long status = readProperty(f, h.elements.back())) return status;
        } else {
            return QEL_DATA_FILE_MALFORMED;
        }
    }
    return QEL_DATA_FILE_MALFORMED;  // no end_header
}

// One list: its count, then its values; indices of faces and strips are
// kept as triangles when wanted.
long readList(ValueSource& src, const Property& p, bool wanted, long long vertexCount,
              std::vector<long long>& polygon, GeometryData& g) {
    double v = 0.0;
    if (!src.next(p.countType, v) || !(v >= 0) || v > double(src.remaining()))
        return QEL_DATA_FILE_MALFORMED;
    const long long n = static_cast<long long>(v);
    wanted = wanted && p.role != Role::Skip;
    // Strips mark their restarts with -1; any other index outside the
    // vertex list is an error.
    const double lowest = p.role == Role::StripIndices ? -1.0 : 0.0;
    polygon.clear();
    for (long long k = 0; k < n; ++k) {
        if (!src.next(p.type, v)) return QEL_DATA_FILE_MALFORMED;
        if (!wanted) continue;
        if (!(v >= lowest) || v >= double(vertexCount) || v != std::floor(v))
            return QEL_DATA_FILE_MALFORMED;
        polygon.push_back(static_cast<long long>(v));
    }
    if (wanted && p.role == Role::FaceIndices) addFan(polygon, g.triangles);
    if (wanted && p.role == Role::StripIndices) addStrips(polygon, g.triangles);
    return QEL_DATA_OK;
}

// One value of vertex 'at' in the role its property has.
void storeVertexValue(GeometryData& g, std::size_t at, const Property& p, double v) {
    switch (p.role) {
        case Role::X:
        case Role::Y:
        case Role::Z:
            g.xyz[3 * at + static_cast<std::size_t>(p.role) - static_cast<std::size_t>(Role::X)] =
                static_cast<float>(v);
            break;
        case Role::Red:
        case Role::Green:
        case Role::Blue:
        case Role::Alpha:
            if (g.colorChannels > 0) {
                const int c = static_cast<int>(p.role) - static_cast<int>(Role::Red);
                if (c < g.colorChannels) g.colors[at * g.colorChannels + c] = colorByte(v, p.type);
            }
            break;
        default:
            break;
    }
}

// Every instance of one element. The first "vertex" element sets up the
// vertex arrays; faces and strips are read when the options want them.
long readElement(ValueSource& src, const Element& e, bool ascii, bool faces, long long& vertexCount,
                 GeometryData& g) {
    // Each instance takes at least a byte (binary: its fixed part), so a
    // count the remaining bytes cannot hold is a lie; checked before
    // anything is allocated.
    std::size_t minBytes = 0;
    for (const Property& p : e.properties)
        minBytes += scalarSize(p.countType != Scalar::None ? p.countType : p.type);
    if (ascii) minBytes = e.properties.empty() ? 0 : 1;
    if (minBytes > 0 && static_cast<unsigned long long>(e.count) > src.remaining() / minBytes)
        return QEL_DATA_FILE_MALFORMED;
    if (minBytes == 0 && e.count > 0) return QEL_DATA_OK;  // no properties: nothing to read

    const bool isVertex = e.name == "vertex" && vertexCount < 0;
    if (isVertex) {
        bool hasX = false, hasY = false, hasZ = false, hasAlpha = false;
        int colorRoles = 0;
        for (const Property& p : e.properties) {
            hasX |= p.role == Role::X;
            hasY |= p.role == Role::Y;
            hasZ |= p.role == Role::Z;
            if (p.role == Role::Red || p.role == Role::Green || p.role == Role::Blue) ++colorRoles;
            hasAlpha |= p.role == Role::Alpha;
        }
        if (!hasX || !hasY || !hasZ) return QEL_DATA_FILE_MALFORMED;
        vertexCount = e.count;
        g.xyz.resize(static_cast<std::size_t>(e.count) * 3);
        if (colorRoles == 3) {
            g.colorChannels = hasAlpha ? 4 : 3;
            g.colors.assign(static_cast<std::size_t>(e.count) * g.colorChannels, 255);
        }
    }
    const bool isFace = (e.name == "face" || e.name == "tristrips") && faces;
    std::vector<long long> polygon;
    for (long long i = 0; i < e.count; ++i) {
        for (const Property& p : e.properties) {
            if (p.countType != Scalar::None) {
                if (long status = readList(src, p, isFace, vertexCount, polygon, g)) return status;
                continue;
            }
            double v = 0.0;
            if (!src.next(p.type, v)) return QEL_DATA_FILE_MALFORMED;
            if (isVertex) storeVertexValue(g, static_cast<std::size_t>(i), p, v);
        }
    }
    return QEL_DATA_OK;
}

}  // namespace

long PlyReader::read(const std::uint8_t* data, std::size_t size, const ReadOptions& options,
                     GeometryData& out) {
    TextScanner header(data, size);
    Header h;
    if (long status = readHeader(header, h)) return status;
    const std::size_t bodyStart = header.position();
    ValueSource src(data + bodyStart, size - bodyStart, h.ascii, h.bigEndian);
    GeometryData g;
    long long vertexCount = -1;
    for (const Element& e : h.elements)
        if (long status = readElement(src, e, h.ascii, options.faces, vertexCount, g))
            return status;
    if (vertexCount <= 0) return QEL_DATA_EMPTY;
    out = std::move(g);
    return QEL_DATA_OK;
}

}  // namespace qel
