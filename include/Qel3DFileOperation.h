#pragma once

#include "QelDataExport.h"
#include "QelPointCloud.h"
#include "QelRangeImage.h"
#include "QelTriangleMesh.h"
#include "QelVar.h"

namespace QELMV {

// File loaders. The path is a QelVar holding a wide (UTF-32, written to the
// file system as UTF-8) or a narrow string. The format follows the suffix,
// case-insensitively:
//   point cloud:   ply, pcd (ascii, binary, binary_compressed), xyz, txt, asc,
//                  xyzn, xyzrgb (x y z, then r g b or nx ny nz), obj (vertices)
//   triangle mesh: stl (ascii, binary), obj, off, ply
//   range image:   png, tif/tiff, bmp, jpg/jpeg (8-bit, 16-bit and float
//                  samples kept), csv (one row of heights per line); a file
//                  of any other suffix is read when its content is one of
//                  those four image formats.
// Every loader returns 0 on success and a QelDataStatus otherwise; on failure
// the target is left unchanged.
class QEL_DATA_API Qel3DFileOperation {
public:
    Qel3DFileOperation() = default;

    // withColors: keep the colours of a colour image (heights come from its
    // luminance either way). Resolutions 1 and offsets 0.
    long Load(QelRangeImage* target, QelVar& path, bool withColors);
    // As above with colours kept, and the given X, Y and Z resolutions;
    // each must be finite and above 0 (else QEL_DATA_INVALID_ARGUMENT).
    long Load(QelRangeImage* target, QelVar& path, double resolutionX, double resolutionY,
              double resolutionZ);
    // withColors: read per-point colours when the file has them.
    // keepInvalid: points with non-finite coordinates stay in the cloud as
    // invalid points (indices match the file); otherwise they are dropped.
    long Load(QelPointCloud* target, QelVar& path, bool withColors, bool keepInvalid);
    // withColors: read per-vertex colours when the file has them.
    // mergeVertices: join vertices with identical coordinates (STL stores
    // every triangle's corners separately). Polygons become triangle fans.
    long Load(QelTriangleMesh* target, QelVar& path, bool withColors, bool mergeVertices);
};

}  // namespace QELMV
