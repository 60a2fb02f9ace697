// Short English texts for the status codes of both libraries.
#include <array>
#include <string>

#include "Qel3DGraphics.h"
#include "QelDataStatus.h"
#include "StatusCodes.h"

namespace QELMV {
namespace {

struct StatusText {
    long code;
    const char* text;
};

const StatusText kTexts[] = {
    {QelStatus::kOk, "success"},
    {QelStatus::kObjectUnusable, "the object built from the data is not usable"},
    {QelStatus::kRangeImageEmpty, "the range image has no samples"},
    {QelStatus::kPointCloudEmpty, "the point cloud has no points"},
    {QelStatus::kNoValidPoints, "the point cloud has no valid points"},
    {QelStatus::kShapeRefused, "the shape is not of a known kind or holds invalid parameters"},
    {QelStatus::kNotAPose, "the model matrix is not a rigid pose"},
    {QelStatus::kMeshNoVertices, "the mesh has no vertices"},
    {QelStatus::kMeshNoValidVertices, "the mesh has no valid vertices"},
    {QelStatus::kMeshNoTriangles, "the mesh has no triangles"},
    {QelStatus::kMeshNoValidTriangles, "the mesh has no valid triangles"},
    {QelStatus::kObjectNotFound, "no object with this id"},
    {QelStatus::kImageEmpty, "the 2D image has no pixels"},
    {QelStatus::kImageTypeRefused, "the 2D image type is not 0 to 3"},
    {QelStatus::kNoLevels, "no level of detail could be built from the range image"},
    {QelStatus::kColorRefused, "the colour array is empty or does not fit the object"},
    {QelStatus::kScreenshotFailed, "the screenshot could not be converted or saved"},
    {QelStatus::kColorChannels, "the colour array has fewer than 3 channels"},
    {QelStatus::kCountTooLarge, "too many elements"},
    {QelStatus::kExtentTooLarge, "the data reaches beyond +-2147483648 on an axis"},
    {QelStatus::kClipPlaneInvalid, "the clipping plane is invalid"},
    {QelStatus::kNoRenderObject, "the window holds no render object"},
    {QelStatus::kLassoTooShort, "the lasso has too few points"},
    {QelStatus::kStreamCopyFailed, "the band's samples could not be taken"},
    {QelStatus::kStreamBufferMissing, "the stream's colour buffer is null"},
    {QelStatus::kStreamFinished, "the stream is finished"},
    {QelStatus::kStreamNoColumn, "the column step leaves no column of the stream"},
    {QelStatus::kUnknownWindow, "unknown window handle"},
    {QelStatus::kWrongThread, "called from a thread other than the GUI thread"},
    {QelStatus::kNotAWindow, "the parent handle is not a window"},
    {QEL_DATA_INVALID_ARGUMENT, "invalid argument (no target, no path, or a bad value)"},
    {QEL_DATA_FILE_NOT_READABLE, "the file cannot be read or is not a regular file"},
    {QEL_DATA_FILE_MALFORMED, "the file is malformed"},
    {QEL_DATA_FORMAT_UNSUPPORTED, "the file format is not supported"},
    {QEL_DATA_EMPTY, "the file holds no data"},
    {QEL_DATA_NO_VALID_SAMPLE, "no valid sample"},
    {QEL_DATA_DEGENERATE, "the geometry is degenerate"},
    {QEL_DATA_NOT_SIMPLE, "the polygon is not simple"},
    {QEL_DATA_NOT_INITIALIZED, "not initialised"},
    {QEL_DATA_TOO_LARGE, "the data is too large"},
};

// "argument N is out of range" for N = 1..99, made once.
const char* argumentText(int position) {
    static const auto texts = [] {
        std::array<std::string, 100> t;
        for (int i = 1; i < 100; ++i)
            t[i] = "argument " + std::to_string(i) + " is out of range";
        return t;
    }();
    return texts[position].c_str();
}

}  // namespace

const char* QelGetStatusText(long code) {
    for (const StatusText& s : kTexts)
        if (s.code == code) return s.text;
    if (code > QelStatus::argument(0) && code < QelStatus::argument(100))
        return argumentText(static_cast<int>(code - QelStatus::argument(0)));
    if (code > 0 && code < 11000000) return "an object id (success)";
    return "unknown status code";
}

}  // namespace QELMV
