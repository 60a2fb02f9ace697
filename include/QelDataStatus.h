#pragma once

namespace QELMV {

// Status values of the data layer's helpers. 0 is success; every other value
// is a failure whose reason the constant names.
enum QelDataStatus : long {
    QEL_DATA_OK = 0,
    QEL_DATA_INVALID_ARGUMENT = 11601001,
    QEL_DATA_FILE_NOT_READABLE = 11601002,
    QEL_DATA_FILE_MALFORMED = 11601003,
    QEL_DATA_FORMAT_UNSUPPORTED = 11601004,
    QEL_DATA_EMPTY = 11601005,
    QEL_DATA_NO_VALID_SAMPLE = 11601006,
    QEL_DATA_DEGENERATE = 11601007,
    QEL_DATA_NOT_SIMPLE = 11601008,
    QEL_DATA_NOT_INITIALIZED = 11601009,
    QEL_DATA_TOO_LARGE = 11601010,
};

}  // namespace QELMV
