#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <array>

#include <basic/system_path.h>
#include <basic/text.h>

#include "platform.h"
#include "standard_input.h"

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

// Reading bytes from a console, even with the code page of UTF-8, loses what is not ASCII. Ctrl-Z at the
// start of a line is the end.
std::optional<std::string> TypedText() {
    constexpr wchar_t kEnd = 0x1A;
    const HANDLE console = ::GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    if (::GetConsoleMode(console, &mode) == 0) {
        return std::nullopt;
    }
    basic::Text text;
    std::array<wchar_t, 4096> part{};
    for (;;) {
        DWORD count = 0;
        if (::ReadConsoleW(console, part.data(), static_cast<DWORD>(part.size()), &count, nullptr) == 0) {
            throw Failure(kCannotReadInput);
        }
        const bool atLineStart = text.empty() || text.back() == u'\n';
        if (count == 0 || (atLineStart && part[0] == kEnd)) {
            return basic::ToUtf8(text);
        }
        text.append(part.begin(), part.begin() + count);
    }
}

bool IsSystemFrench() {
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_FRENCH;
}

}  // namespace quardele::mdb
