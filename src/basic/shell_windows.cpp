// Starting programs on Windows, which takes the command line as it stands.
#include <basic/shell.h>

#include <string>

#include <windows.h>

#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

[[noreturn]] void FailToStart(DWORD reason) {
    const bool missing = reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND;
    throw RuntimeError(missing ? error::kFileNotFound : error::kInvalidCall);
}

}  // namespace

void Shell(TextView commandLine) {
    std::wstring line(commandLine.begin(), commandLine.end());  // Windows writes into it
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                       &started) == 0) {
        FailToStart(GetLastError());
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
}

}  // namespace quardele::basic
