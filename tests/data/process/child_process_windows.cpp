#include <windows.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "child_process.h"

namespace quardele::test {

namespace {

constexpr UINT kKilled = 0xC0DE;

[[nodiscard]] HANDLE AsHandle(std::intptr_t number) {
    return reinterpret_cast<HANDLE>(number);
}

void CloseAndForget(std::intptr_t& number) {
    if (number != -1) {
        ::CloseHandle(AsHandle(number));
        number = -1;
    }
}

/// A pipe of which the program inherits one end.
struct Pipe {
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    Pipe() {
        SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        if (::CreatePipe(&read, &write, &inherited, 0) == 0) {
            throw std::runtime_error("no pipe");
        }
    }
};

[[nodiscard]] std::wstring Wide(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).native();
}

// Backslashes count as such unless a quotation mark follows them.
[[nodiscard]] std::wstring Quoted(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

/// A file that a program inherits as its error stream; ours when there is no name.
[[nodiscard]] HANDLE ErrorStream(const std::filesystem::path& errors) {
    if (errors.empty()) {
        return ::GetStdHandle(STD_ERROR_HANDLE);
    }
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return ::CreateFileW(errors.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0,
                         nullptr);
}

[[nodiscard]] std::wstring CommandLine(const std::filesystem::path& program,
                                       const std::vector<std::string>& arguments) {
    std::wstring line = Quoted(std::filesystem::path(program).make_preferred().native());
    for (const std::string& argument : arguments) {
        line += L" " + Quoted(Wide(argument));
    }
    return line;
}

/// Starts a process; what the system says. Wine's server now and then fails of itself before the process is
/// there, on a busy machine; it is asked again then.
DWORD Started(std::wstring& line, STARTUPINFOW& start, PROCESS_INFORMATION& process) {
    constexpr int kAttempts = 5;
    DWORD failure = ERROR_INTERNAL_ERROR;
    for (int attempt = 0; attempt < kAttempts && failure == ERROR_INTERNAL_ERROR; ++attempt) {
        const bool started = ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                              nullptr, &start, &process) != 0;
        failure = started ? ERROR_SUCCESS : ::GetLastError();
    }
    return failure;
}

}  // namespace

Process::Process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                 const std::filesystem::path& errors) {
    const Pipe in;
    const Pipe out;
    ::SetHandleInformation(in.write, HANDLE_FLAG_INHERIT, 0);
    ::SetHandleInformation(out.read, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = in.read;
    start.hStdOutput = out.write;
    start.hStdError = ErrorStream(errors);
    PROCESS_INFORMATION process = {};
    std::wstring line = CommandLine(program, arguments);
    const DWORD failure = Started(line, start, process);
    ::CloseHandle(in.read);
    ::CloseHandle(out.write);
    if (!errors.empty()) {
        ::CloseHandle(start.hStdError);
    }
    input_ = reinterpret_cast<std::intptr_t>(in.write);
    output_ = reinterpret_cast<std::intptr_t>(out.read);
    if (failure != ERROR_SUCCESS) {
        CloseAndForget(input_);
        CloseAndForget(output_);
        throw std::runtime_error("cannot start " + program.string() + ", system error " +
                                 std::to_string(failure));
    }
    ::CloseHandle(process.hThread);
    process_ = reinterpret_cast<std::intptr_t>(process.hProcess);
}

Process::Process(Process&& other) noexcept
    : process_(std::exchange(other.process_, kNone)),
      input_(std::exchange(other.input_, kNone)),
      output_(std::exchange(other.output_, kNone)) {}

Process::~Process() {
    if (process_ != kNone) {
        Kill();
    }
}

bool Process::WaitForSign() {
    char sign = 0;
    DWORD count = 0;
    return ::ReadFile(AsHandle(output_), &sign, 1, &count, nullptr) != 0 && count == 1;
}

std::string Process::ReadOutput() {
    std::string text;
    std::array<char, 4096> buffer{};
    for (DWORD count = 0; ::ReadFile(AsHandle(output_), buffer.data(), static_cast<DWORD>(buffer.size()),
                                     &count, nullptr) != 0 &&
                          count > 0;) {
        text.append(buffer.data(), count);
    }
    return text;
}

void Process::Write(const std::string& input) {
    for (std::size_t done = 0; done < input.size();) {
        DWORD count = 0;
        if (::WriteFile(AsHandle(input_), input.data() + done, static_cast<DWORD>(input.size() - done),
                        &count, nullptr) == 0) {
            break;
        }
        done += count;
    }
    CloseInput();
}

void Process::CloseInput() {
    CloseAndForget(input_);
}

int Process::Join() {
    CloseAndForget(input_);
    ::WaitForSingleObject(AsHandle(process_), INFINITE);
    DWORD code = 0;
    ::GetExitCodeProcess(AsHandle(process_), &code);
    CloseAndForget(process_);
    CloseAndForget(output_);
    return code == kKilled ? -1 : static_cast<int>(code);
}

int Process::Wait() {
    return Join();
}

void Process::Kill() {
    ::TerminateProcess(AsHandle(process_), kKilled);
    static_cast<void>(Join());
}

void SetEnvironment(const std::string& name, const std::string& value) {
    ::SetEnvironmentVariableW(Wide(name).c_str(), Wide(value).c_str());
}

std::filesystem::path ThisProgram() {
    constexpr DWORD kLongest = 32768;
    std::wstring name(kLongest, L'\0');
    name.resize(::GetModuleFileNameW(nullptr, name.data(), kLongest));
    return name;
}

}  // namespace quardele::test
