#include "FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>

namespace qel {
namespace {

// Opens a regular file for reading, or returns -1. The open itself never
// blocks: a named pipe without a writer would otherwise hang it, so the file
// is opened non-blocking and refused when it is not regular.
int openRegular(const std::string& path, std::uint64_t& size) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) return -1;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return -1;
    }
    size = static_cast<std::uint64_t>(st.st_size);
    return fd;
}

// Reads up to out.size() bytes; shrinks out to what the file gave.
bool readInto(int fd, std::vector<std::uint8_t>& out) {
    std::size_t done = 0;
    while (done < out.size()) {
        const ssize_t n = ::read(fd, out.data() + done, out.size() - done);
        if (n < 0) return false;
        if (n == 0) break;  // the file shrank meanwhile
        done += static_cast<std::size_t>(n);
    }
    out.resize(done);
    return true;
}

bool readFile(const std::string& path, std::size_t limit, std::vector<std::uint8_t>& out,
              std::uint64_t& fileSize) {
    const int fd = openRegular(path, fileSize);
    if (fd < 0) return false;
    std::vector<std::uint8_t> bytes(
        static_cast<std::size_t>(std::min<std::uint64_t>(fileSize, limit)));
    const bool ok = readInto(fd, bytes);
    ::close(fd);
    if (ok) out.swap(bytes);
    return ok;
}

}  // namespace

bool readFileBytes(const std::string& path, std::vector<std::uint8_t>& out) {
    std::uint64_t size = 0;
    return readFile(path, SIZE_MAX, out, size);
}

bool readFileHead(const std::string& path, std::size_t count, std::vector<std::uint8_t>& out,
                  std::uint64_t& fileSize) {
    return readFile(path, count, out, fileSize);
}

}  // namespace qel
