#include "Qel3DFileOperation.h"

#include <climits>
#include <cmath>
#include <cstring>
#include <unordered_map>

#include "FileBytes.h"
#include "FileFormatTable.h"
#include "PathText.h"
#include "QelDataStatus.h"
#include "QelLog.h"
#include "RangeScale.h"

namespace QELMV {
namespace {

using qel::FileFormatTable;

// A file's first bytes and its size.
struct FileStart {
    std::vector<std::uint8_t> head;
    std::uint64_t size = 0;
    bool read(const std::string& file) {
        return qel::readFileHead(file, FileFormatTable::kHeadSize, head, size);
    }
};

// The suffix of the reader to use: the format the file's first bytes name
// when they name one this target can be read from, else the file's own.
std::string formatToRead(const std::string& file, const FileStart& start,
                         FileFormatTable::Target target) {
    const std::string suffix = qel::lowerSuffix(file);
    const std::string named =
        FileFormatTable::formatOfContent(start.head.data(), start.head.size(), start.size);
    if (named.empty() || named == suffix || !FileFormatTable::geometryReader(named, target))
        return suffix;
    qCDebug(qelLog) << file.c_str() << "is read as" << named.c_str() << "(its content), not as"
                    << suffix.c_str();
    return named;
}

// Reads the whole file, once its first bytes show it can be of the format:
// a file that obviously is not (a large file of zero bytes given as text)
// is refused without reading the rest.
long readWhole(const std::string& file, const FileStart& start, const std::string& format,
               std::vector<std::uint8_t>& bytes) {
    if (!FileFormatTable::plausibleStart(format, start.head.data(), start.head.size(), start.size))
        return QEL_DATA_FILE_MALFORMED;
    return qel::readFileBytes(file, bytes) ? QEL_DATA_OK : QEL_DATA_FILE_NOT_READABLE;
}

long readGeometry(QelVar& path, FileFormatTable::Target target, qel::GeometryData& g) {
    const std::string file = qel::pathFromVar(path);
    if (file.empty()) return QEL_DATA_INVALID_ARGUMENT;
    FileStart start;
    if (!start.read(file))
        return FileFormatTable::geometryReader(qel::lowerSuffix(file), target)
                   ? QEL_DATA_FILE_NOT_READABLE
                   : QEL_DATA_FORMAT_UNSUPPORTED;
    qel::ReadOptions options;
    options.suffix = formatToRead(file, start, target);
    options.faces = target == FileFormatTable::Target::Mesh;
    const qel::GeometryReader reader = FileFormatTable::geometryReader(options.suffix, target);
    if (!reader) return QEL_DATA_FORMAT_UNSUPPORTED;
    std::vector<std::uint8_t> bytes;
    if (long status = readWhole(file, start, options.suffix, bytes)) return status;
    const long status = reader(bytes.data(), bytes.size(), options, g);
    if (status != QEL_DATA_OK) return status;
    if (g.vertexCount() > static_cast<std::size_t>(INT_MAX)) return QEL_DATA_TOO_LARGE;
    if (g.triangles.size() > static_cast<std::size_t>(INT_MAX)) return QEL_DATA_TOO_LARGE;
    return QEL_DATA_OK;
}

QelVector3d vertexAt(const qel::GeometryData& g, std::size_t i) {
    // QelVector3d::IsValid rejects non-finite values, so they stay as read;
    // only the canonical marker is written for them.
    const QelVector3d v(g.xyz[3 * i], g.xyz[3 * i + 1], g.xyz[3 * i + 2]);
    return v.IsValid() ? v : QelVector3d();
}

QelColorArray colorsOf(const qel::GeometryData& g, const std::vector<std::size_t>* keep) {
    QelColorArray colors;
    if (g.colorChannels == 0) return colors;
    const std::size_t n = keep ? keep->size() : g.vertexCount();
    colors.Create(static_cast<int>(n), g.colorChannels);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t from = keep ? (*keep)[i] : i;
        std::memcpy(colors.Data() + i * g.colorChannels, g.colors.data() + from * g.colorChannels,
                    static_cast<std::size_t>(g.colorChannels));
    }
    return colors;
}

// Joins vertices whose three coordinates are bit-identical (after folding
// -0 into 0); the first one's colour wins.
void joinIdenticalVertices(qel::GeometryData& g) {
    struct Key {
        std::uint32_t b[3];
        bool operator==(const Key& o) const {
            return b[0] == o.b[0] && b[1] == o.b[1] && b[2] == o.b[2];
        }
    };
    struct KeyHash {
        std::size_t operator()(const Key& k) const {
            return (std::size_t(k.b[0]) * 73856093u) ^ (std::size_t(k.b[1]) * 19349663u) ^
                   (std::size_t(k.b[2]) * 83492791u);
        }
    };
    const std::size_t n = g.vertexCount();
    std::unordered_map<Key, int, KeyHash> index;
    index.reserve(n);
    std::vector<int> remap(n);
    qel::GeometryData merged;
    merged.colorChannels = g.colorChannels;
    for (std::size_t i = 0; i < n; ++i) {
        Key k{};
        for (int c = 0; c < 3; ++c) {
            const float v = g.xyz[3 * i + c] == 0.0f ? 0.0f : g.xyz[3 * i + c];
            std::memcpy(&k.b[c], &v, 4);
        }
        const auto found = index.emplace(k, static_cast<int>(merged.vertexCount()));
        if (found.second) {
            merged.xyz.insert(merged.xyz.end(), g.xyz.begin() + 3 * i, g.xyz.begin() + 3 * i + 3);
            const auto c0 = g.colors.begin() + static_cast<std::ptrdiff_t>(i * g.colorChannels);
            merged.colors.insert(merged.colors.end(), c0, c0 + g.colorChannels);
        }
        remap[i] = found.first->second;
    }
    for (int& t : g.triangles)
        t = remap[static_cast<std::size_t>(t)];
    merged.triangles.swap(g.triangles);
    g = std::move(merged);
}

}  // namespace

long Qel3DFileOperation::Load(QelRangeImage* target, QelVar& path, bool withColors) {
    if (!target) return QEL_DATA_INVALID_ARGUMENT;
    const std::string file = qel::pathFromVar(path);
    if (file.empty()) return QEL_DATA_INVALID_ARGUMENT;
    const std::string suffix = qel::lowerSuffix(file);
    std::vector<std::uint8_t> bytes;
    FileStart start;
    if (!start.read(file)) return QEL_DATA_FILE_NOT_READABLE;
    if (long status = readWhole(file, start, suffix == "csv" ? "csv" : "image", bytes))
        return status;
    QelRangeImage image;
    const long status =
        FileFormatTable::rangeReader(suffix)(bytes.data(), bytes.size(), withColors, image);
    if (status != QEL_DATA_OK) return status;
    *target = std::move(image);
    return QEL_DATA_OK;
}

long Qel3DFileOperation::Load(QelRangeImage* target, QelVar& path, double resolutionX,
                              double resolutionY, double resolutionZ) {
    if (!target) return QEL_DATA_INVALID_ARGUMENT;
    for (double r : {resolutionX, resolutionY, resolutionZ})
        if (!(r > 0) || !std::isfinite(r)) return QEL_DATA_INVALID_ARGUMENT;
    QelRangeImage image;
    const long status = Load(&image, path, true);
    if (status != QEL_DATA_OK) return status;
    // A finite resolution can still carry heights beyond single precision.
    if (!qel::RangeScale::fitsSinglePrecision(image, resolutionX, resolutionY, resolutionZ,
                                              image.OffsetX(), image.OffsetY(), image.OffsetZ()))
        return QEL_DATA_INVALID_ARGUMENT;
    image.SetInfo(resolutionX, resolutionY, resolutionZ, image.OffsetX(), image.OffsetY(),
                  image.OffsetZ());
    *target = std::move(image);
    return QEL_DATA_OK;
}

long Qel3DFileOperation::Load(QelPointCloud* target, QelVar& path, bool withColors,
                              bool keepInvalid) {
    if (!target) return QEL_DATA_INVALID_ARGUMENT;
    qel::GeometryData g;
    const long status = readGeometry(path, FileFormatTable::Target::PointCloud, g);
    if (status != QEL_DATA_OK) return status;

    std::vector<std::size_t> keep;
    keep.reserve(g.vertexCount());
    for (std::size_t i = 0; i < g.vertexCount(); ++i)
        if (keepInvalid || vertexAt(g, i).IsValid()) keep.push_back(i);
    if (keep.empty()) return QEL_DATA_EMPTY;

    QelVector3dArray points(static_cast<int>(keep.size()));
    for (std::size_t i = 0; i < keep.size(); ++i)
        points[static_cast<int>(i)] = vertexAt(g, keep[i]);
    QelPointCloud cloud;
    cloud.SetPoints(points);
    if (withColors && g.colorChannels > 0) cloud.SetColors(colorsOf(g, &keep));
    *target = std::move(cloud);
    return QEL_DATA_OK;
}

long Qel3DFileOperation::Load(QelTriangleMesh* target, QelVar& path, bool withColors,
                              bool mergeVertices) {
    if (!target) return QEL_DATA_INVALID_ARGUMENT;
    qel::GeometryData g;
    const long status = readGeometry(path, FileFormatTable::Target::Mesh, g);
    if (status != QEL_DATA_OK) return status;
    if (g.triangles.empty()) return QEL_DATA_EMPTY;
    if (mergeVertices) joinIdenticalVertices(g);

    const std::size_t n = g.vertexCount();
    QelVector3dArray vertices(static_cast<int>(n));
    for (std::size_t i = 0; i < n; ++i)
        vertices[static_cast<int>(i)] = vertexAt(g, i);
    Qel3DIntArray indices;
    indices.SetSize(static_cast<int>(g.triangles.size()));
    std::copy(g.triangles.begin(), g.triangles.end(), indices.Data());

    QelTriangleMesh mesh;
    mesh.SetVertices(vertices);
    mesh.SetTriangles(indices);
    if (withColors && g.colorChannels > 0) mesh.SetVertexColors(colorsOf(g, nullptr));
    *target = std::move(mesh);
    return QEL_DATA_OK;
}

}  // namespace QELMV
