#include "FileFormatTable.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

#include "CsvRangeReader.h"
#include "ImageHeaderCheck.h"
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

// Every suffix the import action reads, with the kind it reads it as and
// the dialog filters that list it (in the filters' order). The library's
// own formats (srt, ecd, mri, jxr, spt, stmt) are among them; gif is read
// but not listed.
using Kind = FileFormatTable::ImportKind;
enum Filter : unsigned { kUnlisted = 0, kRangeFilter = 1, kCloudFilter = 2, kMeshFilter = 4 };
struct ImportFormat {
    const char* suffix;
    Kind kind;
    unsigned filters;
};
const ImportFormat kImportFormats[] = {
    {"srt", Kind::RangeImage, kRangeFilter},
    {"png", Kind::RangeImage, kRangeFilter},
    {"jpg", Kind::RangeImage, kRangeFilter},
    {"bmp", Kind::RangeImage, kRangeFilter},
    {"gif", Kind::RangeImage, kUnlisted},
    {"ecd", Kind::RangeImage, kRangeFilter},
    {"csv", Kind::RangeImage, kRangeFilter},
    {"mri", Kind::RangeImage, kRangeFilter},
    {"tif", Kind::RangeImage, kRangeFilter},
    {"jxr", Kind::RangeImage, kRangeFilter},
    {"spt", Kind::PointCloud, kCloudFilter},
    {"pcd", Kind::PointCloud, kCloudFilter},
    {"txt", Kind::PointCloud, kCloudFilter},
    {"asc", Kind::PointCloud, kCloudFilter},
    {"stmt", Kind::Mesh, kMeshFilter},
    // Mesh files of vertices only are read as clouds.
    {"obj", Kind::Mesh, kCloudFilter | kMeshFilter},
    {"off", Kind::Mesh, kMeshFilter},
    {"ply", Kind::Mesh, kCloudFilter | kMeshFilter},
    {"xyz", Kind::PointCloud, kCloudFilter},
    {"xyzn", Kind::PointCloud, kCloudFilter},
    {"xyzrgb", Kind::PointCloud, kCloudFilter},
    {"stl", Kind::Mesh, kMeshFilter},
};

// "Name (*.a *.b)" for the suffixes a filter lists.
std::string filterOf(const char* name, unsigned filter) {
    std::string patterns;
    for (const ImportFormat& f : kImportFormats)
        if (f.filters & filter)
            patterns += std::string(patterns.empty() ? "" : " ") + "*." + f.suffix;
    return std::string(name) + " (" + patterns + ")";
}

bool startsWith(const std::uint8_t* head, std::size_t size, std::string_view prefix) {
    return size >= prefix.size() && std::equal(prefix.begin(), prefix.end(), head);
}

// An OFF keyword: "OFF" after any of the C and N prefixes, then a separator.
bool isOffKeyword(const std::uint8_t* head, std::size_t size) {
    std::size_t i = 0;
    while (i < size && (head[i] == 'C' || head[i] == 'N'))
        ++i;
    return startsWith(head + i, size - i, "OFF") && (size == i + 3 || std::isspace(head[i + 3]));
}

long readCsv(const std::uint8_t* data, std::size_t size, bool, QelRangeImage& out) {
    return CsvRangeReader::read(data, size, out);
}

}  // namespace

GeometryReader FileFormatTable::geometryReader(const std::string& suffix, Target target) {
    for (const GeometryFormat& f : kGeometryFormats)
        if (suffix == f.suffix && (target == Target::Mesh ? f.mesh : f.pointCloud)) return f.reader;
    return nullptr;
}

std::string FileFormatTable::formatOfContent(const std::uint8_t* head, std::size_t headSize,
                                             std::uint64_t fileSize) {
    if (StlReader::isBinaryBySize(head, headSize, fileSize)) return "stl";
    if (startsWith(head, headSize, "ply\n") || startsWith(head, headSize, "ply\r\n")) return "ply";
    if (startsWith(head, headSize, "# .PCD") || startsWith(head, headSize, "VERSION")) return "pcd";
    if (isOffKeyword(head, headSize)) return "off";
    if (startsWith(head, headSize, "solid")) return "stl";
    return std::string();
}

bool FileFormatTable::plausibleStart(const std::string& format, const std::uint8_t* head,
                                     std::size_t headSize, std::uint64_t fileSize) {
    if (format == "ply") return startsWith(head, headSize, "ply");
    if (format == "pcd") {
        // A text header, though binary data may follow it within the head.
        const std::uint8_t* end = std::find(head, head + headSize, '\n');
        return headSize > 0 && std::find(head, end, 0) == end;
    }
    if (format == "stl") {
        if (startsWith(head, headSize, "solid")) return true;
        std::uint32_t count = 0;
        if (headSize >= 84) std::memcpy(&count, head + 80, 4);
        return count > 0 || StlReader::isBinaryBySize(head, headSize, fileSize);
    }
    if (format == "image") return ImageHeaderCheck::plausible(head, headSize, fileSize);
    // Text formats: xyz and its kin, obj, off, csv.
    return std::find(head, head + headSize, 0) == head + headSize;
}

FileFormatTable::RangeReader FileFormatTable::rangeReader(const std::string& suffix) {
    if (suffix == "csv") return readCsv;
    return ImageRangeReader::read;
}

FileFormatTable::ImportKind FileFormatTable::importKind(const std::string& suffix) {
    for (const ImportFormat& f : kImportFormats)
        if (suffix == f.suffix) return f.kind;
    return ImportKind::None;
}

std::string FileFormatTable::importFilter() {
    return filterOf("RangeImage Files", kRangeFilter) + ";;" +
           filterOf("PointCloud File", kCloudFilter) + ";;" +
           filterOf("TriangleMesh Files", kMeshFilter);
}

}  // namespace qel
