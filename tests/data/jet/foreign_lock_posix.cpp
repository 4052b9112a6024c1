#include <fcntl.h>

#include "foreign_lock.h"

namespace quardele::jet::test {

// The locks of old, which belong to the process: it must not close the file.
bool LockByte(const std::filesystem::path& file, std::uint64_t byte) {
    const int handle = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(byte);
    range.l_len = 1;
    return handle >= 0 && ::fcntl(handle, F_SETLK, &range) == 0;
}

}  // namespace quardele::jet::test
