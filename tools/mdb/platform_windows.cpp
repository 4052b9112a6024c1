#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <memory>

#include "platform.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

struct LocalFreer {
    void operator()(wchar_t** arguments) const { ::LocalFree(arguments); }
};

}  // namespace

// The narrow arguments are in the system's code page, where many names have no place.
std::vector<std::string> ProgramArguments(int, char**) {
    int count = 0;
    const std::unique_ptr<wchar_t*, LocalFreer> arguments(::CommandLineToArgvW(::GetCommandLineW(), &count));
    std::vector<std::string> result;
    for (int i = 1; i < count; ++i) {
        result.push_back(Utf8Of(arguments.get()[i]));
    }
    return result;
}

std::filesystem::path PathOf(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return ::_wfopen(path.c_str(), L"rb");
}

void UseBinaryStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        ::_setmode(::_fileno(stream), _O_BINARY);
    }
    ::SetConsoleOutputCP(CP_UTF8);
}

bool IsTerminal(std::FILE* stream) {
    return ::_isatty(::_fileno(stream)) != 0;
}

bool IsSystemFrench() {
    return PRIMARYLANGID(::GetUserDefaultUILanguage()) == LANG_FRENCH;
}

}  // namespace quardele::mdb
