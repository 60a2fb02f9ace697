#include "FileBytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qel {

bool readFileBytes(const std::string& path, std::vector<std::uint8_t>& out) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st {};
    // Directories, pipes and devices are refused: reading them could block.
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return false;
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(st.st_size));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::read(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            ::close(fd);
            return false;
        }
        if (n == 0) break;  // the file shrank meanwhile
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
    bytes.resize(done);
    out.swap(bytes);
    return true;
}

}  // namespace qel
