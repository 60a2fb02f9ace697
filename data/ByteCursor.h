#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace qel {

// Bounds-checked reads of little- or big-endian scalars from a byte buffer.
// A read past the end fails and leaves the value untouched.
class ByteCursor {
public:
    ByteCursor(const std::uint8_t* data, std::size_t size, bool bigEndian = false)
        : data_(data), size_(size), bigEndian_(bigEndian) {}

    std::size_t position() const { return pos_; }
    std::size_t remaining() const { return size_ - pos_; }
    bool skip(std::size_t n) {
        if (n > remaining()) return false;
        pos_ += n;
        return true;
    }

    template <typename T>
    bool read(T& value) {
        static_assert(std::is_arithmetic<T>::value, "scalars only");
        if (sizeof(T) > remaining()) return false;
        std::uint8_t bytes[sizeof(T)];
        std::memcpy(bytes, data_ + pos_, sizeof(T));
        if (bigEndian_)
            for (std::size_t i = 0; i < sizeof(T) / 2; ++i) {
                const std::uint8_t t = bytes[i];
                bytes[i] = bytes[sizeof(T) - 1 - i];
                bytes[sizeof(T) - 1 - i] = t;
            }
        std::memcpy(&value, bytes, sizeof(T));
        pos_ += sizeof(T);
        return true;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t pos_ = 0;
    bool bigEndian_;
};

}  // namespace qel
