#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qel {

// The whole content of a regular file; false when it cannot be opened or
// read, or is not a regular file.
bool readFileBytes(const std::string& path, std::vector<std::uint8_t>& out);

}  // namespace qel
