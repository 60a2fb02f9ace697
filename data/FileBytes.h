#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qel {

// The whole content of a regular file; false when it cannot be opened or
// read, or is not a regular file.
bool readFileBytes(const std::string& path, std::vector<std::uint8_t>& out);

// The first at most `count` bytes of a regular file and the file's size;
// false as above.
bool readFileHead(const std::string& path, std::size_t count, std::vector<std::uint8_t>& out,
                  std::uint64_t& fileSize);

}  // namespace qel
