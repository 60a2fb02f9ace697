#include "FileFormatTable.h"

#include "CsvRangeReader.h"
#include "ImageRangeReader.h"
#include "ObjReader.h"
#include "OffReader.h"
#include "PcdReader.h"
#include "PlyReader.h"
#include "StlReader.h"
#include "XyzReader.h"

namespace qel {
namespace {

struct GeometryFormat {
    const char* suffix;
    GeometryReader reader;
    bool pointCloud;
    bool mesh;
};

const GeometryFormat kGeometryFormats[] = {
    {"ply", PlyReader::read, true, true},     {"pcd", PcdReader::read, true, false},
    {"xyz", XyzReader::read, true, false},    {"txt", XyzReader::read, true, false},
    {"asc", XyzReader::read, true, false},    {"xyzn", XyzReader::read, true, false},
    {"xyzrgb", XyzReader::read, true, false}, {"obj", ObjReader::read, true, true},
    {"stl", StlReader::read, false, true},    {"off", OffReader::read, false, true},
};

long readCsv(const std::uint8_t* data, std::size_t size, bool, QelRangeImage& out) {
    return CsvRangeReader::read(data, size, out);
}

}  // namespace

GeometryReader FileFormatTable::geometryReader(const std::string& suffix, Target target) {
    for (const GeometryFormat& f : kGeometryFormats)
        if (suffix == f.suffix && (target == Target::Mesh ? f.mesh : f.pointCloud)) return f.reader;
    return nullptr;
}

FileFormatTable::RangeReader FileFormatTable::rangeReader(const std::string& suffix) {
    if (suffix == "csv") return readCsv;
    return ImageRangeReader::read;
}

}  // namespace qel
