#include "LzfDecoder.h"

namespace qel {

std::size_t LzfDecoder::decode(const std::uint8_t* in, std::size_t inSize, std::uint8_t* out,
                               std::size_t outSize) {
    std::size_t ip = 0, op = 0;
    while (ip < inSize) {
        const unsigned ctrl = in[ip++];
        if (ctrl < 32) {
            // A literal run of ctrl + 1 bytes.
            const std::size_t len = ctrl + 1;
            if (len > inSize - ip || len > outSize - op) return 0;
            for (std::size_t k = 0; k < len; ++k)
                out[op++] = in[ip++];
        } else {
            // A back reference: length in the top 3 bits (7 = extended),
            // distance in the low 5 bits and the next byte.
            std::size_t len = ctrl >> 5;
            if (len == 7) {
                if (ip >= inSize) return 0;
                len += in[ip++];
            }
            len += 2;
            if (ip >= inSize) return 0;
            const std::size_t distance = ((ctrl & 0x1f) << 8) + in[ip++] + 1;
            if (distance > op || len > outSize - op) return 0;
            std::size_t from = op - distance;
            // Byte by byte: the source may overlap what is being written.
            for (std::size_t k = 0; k < len; ++k)
                out[op++] = out[from++];
        }
    }
    return op;
}

}  // namespace qel
