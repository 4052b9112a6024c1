#include "dying.h"

#include <cstdlib>
#include <fstream>

#include "file/one_name.h"

namespace quardele::jet::test {

namespace {

constexpr std::size_t kSectorSize = 512;
constexpr std::size_t kPageSize = 4096;

void WriteHalf(const WriteEvent& event) {
    std::fstream stream(event.path, std::ios::binary | std::ios::in | std::ios::out);
    stream.seekp(static_cast<std::streamoff>(event.offset));
    const std::size_t half = event.bytes.size() / 2 / kSectorSize * kSectorSize;
    stream.write(reinterpret_cast<const char*>(event.bytes.data()), static_cast<std::streamsize>(half));
}

}  // namespace

WriteHook DieAt(int number, bool torn) {
    return [number, torn, count = 0](const WriteEvent& event) mutable {
        if (++count < number) {
            return;
        }
        if (torn && event.step == WritePoint::Write) {
            WriteHalf(event);
        }
        std::_Exit(kKilled);
    };
}

WriteHook DieAtPage(const std::filesystem::path& dataFile, int number) {
    return [file = OneName(dataFile), number, count = 0](const WriteEvent& event) mutable {
        const bool page =
            event.step == WritePoint::Write && event.path == file && event.bytes.size() == kPageSize;
        if (page && ++count == number) {
            std::_Exit(kKilled);
        }
    };
}

}  // namespace quardele::jet::test
