#pragma once

// Status codes of the exported functions and of the data layer. 0 is
// success; add, display and show operations return the new object id
// (>= 1) instead, always below kFirstCode.
namespace QelStatus {
constexpr long kOk = 0;
constexpr long kFirstCode = 11'000'000;
// Whether what an add, display or show returned is a refusal, not an id.
constexpr bool isFailure(long result) {
    return result >= kFirstCode;
}
// The shader programs' setters fail with this.
constexpr long kShaderFailed = -1;
constexpr long kObjectUnusable = 11000013;
constexpr long kRangeImageEmpty = 11100001;
constexpr long kPointCloudEmpty = 11100002;
constexpr long kNoValidPoints = 11100003;
constexpr long kShapeRefused = 11100004;
constexpr long kNotAPose = 11100009;
constexpr long kMeshNoVertices = 11100015;
constexpr long kMeshNoValidVertices = 11100016;
constexpr long kMeshNoTriangles = 11100017;
constexpr long kMeshNoValidTriangles = 11100018;
constexpr long kObjectNotFound = 11100022;
constexpr long kImageEmpty = 11100023;
constexpr long kImageTypeRefused = 11100025;
constexpr long kNoLevels = 11100027;
// 112000NN: argument number NN out of range.
constexpr long argument(int position) {
    return 11200000 + position;
}
constexpr long kColorRefused = 11501001;
constexpr long kScreenshotFailed = 11501002;
constexpr long kColorChannels = 11501004;
constexpr long kCountTooLarge = 11501005;
constexpr long kExtentTooLarge = 11501006;
constexpr long kClipPlaneInvalid = 11501007;
constexpr long kNoRenderObject = 11501008;
constexpr long kLassoTooShort = 11501009;
constexpr long kStreamCopyFailed = 11501003;
constexpr long kStreamBufferMissing = 11501014;
constexpr long kStreamFinished = 11501015;
constexpr long kStreamNoColumn = 11501016;
constexpr long kUnknownWindow = 11504001;
constexpr long kWrongThread = 11504002;
constexpr long kNotAWindow = 11504103;
// The data layer's helpers (hosts see them as QELMV::QelDataStatus).
constexpr long kDataInvalidArgument = 11601001;
constexpr long kDataFileNotReadable = 11601002;
constexpr long kDataFileMalformed = 11601003;
constexpr long kDataFormatUnsupported = 11601004;
constexpr long kDataEmpty = 11601005;
constexpr long kDataNoValidSample = 11601006;
constexpr long kDataDegenerate = 11601007;
constexpr long kDataNotSimple = 11601008;
constexpr long kDataNotInitialized = 11601009;
constexpr long kDataTooLarge = 11601010;
}  // namespace QelStatus
