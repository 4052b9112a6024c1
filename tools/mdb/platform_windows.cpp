#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <basic/system_path.h>

#include "platform.h"

namespace quardele::mdb {

std::filesystem::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return ::_wfopen(quardele::basic::SystemPath(path).c_str(), L"rb");
}

PlainStreams::PlainStreams() : consoleBefore_(::GetConsoleOutputCP()) {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
    }
    ::SetConsoleOutputCP(CP_UTF8);
}

PlainStreams::~PlainStreams() {
    if (consoleBefore_ != 0) {
        std::fflush(nullptr);
        ::SetConsoleOutputCP(consoleBefore_);
    }
}

bool IsTerminal(std::FILE* stream) {
    return ::_isatty(::_fileno(stream)) != 0;
}

bool IsSystemFrench() {
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_FRENCH;
}

}  // namespace quardele::mdb
