#pragma once

#include <cstddef>
#include <cstdint>

namespace qel {

// LZF decompression with every read and write checked against its buffer.
class LzfDecoder {
public:
    // Decodes in[0, inSize) into out[0, outSize); returns the number of bytes
    // written, or 0 when the stream is corrupt or does not fit.
    static std::size_t decode(const std::uint8_t* in, std::size_t inSize, std::uint8_t* out,
                              std::size_t outSize);
};

}  // namespace qel
