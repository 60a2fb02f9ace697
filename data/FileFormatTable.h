#pragma once

#include <string>

#include "GeometryData.h"
#include "QelDataExport.h"

class QelRangeImage;

namespace qel {

// The one place that maps a file suffix to its reader.
class QEL_DATA_API FileFormatTable {
public:
    enum class Target { PointCloud, Mesh };
    using RangeReader = long (*)(const std::uint8_t* data, std::size_t size, bool withColors,
                                 QelRangeImage& out);

    // The reader of a lower-case suffix for a target, or null.
    static GeometryReader geometryReader(const std::string& suffix, Target target);
    // The reader of a range image suffix; unknown suffixes are tried as
    // images by their content.
    static RangeReader rangeReader(const std::string& suffix);
    // The suffix of the geometry format that a file's first bytes name
    // ("ply", "pcd", "off", "stl"), or empty when they name none. fileSize
    // is the whole file's, for the binary STL size rule.
    static std::string formatOfContent(const std::uint8_t* head, std::size_t headSize,
                                       std::uint64_t fileSize);
    // Whether a file of this format (a geometry suffix, "csv", or "image"
    // for the four image formats) can begin with these bytes: text formats
    // hold no NUL byte, PLY begins with "ply", images with their signature,
    // ... A file that cannot is refused before the rest of it is read.
    static bool plausibleStart(const std::string& format, const std::uint8_t* head,
                               std::size_t headSize, std::uint64_t fileSize);
    // What the window's import action reads a file of this lower-case
    // suffix as: a mesh (tried as a point cloud when it holds no mesh), a
    // point cloud or a range image.
    enum class ImportKind { None, Mesh, PointCloud, RangeImage };
    static ImportKind importKind(const std::string& suffix);
    // The import dialog's filter: range images, point clouds (with the mesh
    // formats that may hold only points), meshes.
    static std::string importFilter();
    // How many first bytes formatOfContent and plausibleStart need.
    static constexpr std::size_t kHeadSize = 128;
};

}  // namespace qel
