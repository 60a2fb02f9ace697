#pragma once

#include <cstddef>
#include <cstdint>

class QelRangeImage;

namespace qel {

// A range image as text: one row of heights per line, separated by commas,
// semicolons, tabs or spaces. Every row must have the same number of
// values; an empty cell or a non-finite value is an invalid sample. The
// result holds 32-bit float samples.
class CsvRangeReader {
public:
    static long read(const std::uint8_t* data, std::size_t size, QelRangeImage& out);
};

}  // namespace qel
