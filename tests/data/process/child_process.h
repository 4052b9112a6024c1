// Programs of their own for tests, on every system: to die at a chosen moment, to keep a lock, to write while
// others do.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace quardele::test {

/// A program that was started. Its standard input and output are pipes of ours; its errors go where ours go,
/// or into a file.
class Process {
 public:
    /// A name without a folder is looked for where the system looks. Arguments are UTF-8. Throws
    /// std::runtime_error when it cannot be started.
    Process(const std::filesystem::path& program, const std::vector<std::string>& arguments,
            const std::filesystem::path& errors = {});
    /// Kills it unless it has been waited for.
    ~Process();
    Process(Process&& other) noexcept;
    Process& operator=(Process&&) = delete;

    /// Waits for one byte of its output; false when it ends without one.
    [[nodiscard]] bool WaitForSign();
    /// All that it writes until it ends.
    [[nodiscard]] std::string ReadOutput();
    /// Gives it an input and ends it. The program must not write much before it has read all.
    void Write(const std::string& input);
    /// Ends its input.
    void CloseInput();
    /// Ends its input, waits for its end and gives its exit code; -1 when it was killed.
    int Wait();
    /// Ends it without any order.
    void Kill();

 private:
    static constexpr std::intptr_t kNone = -1;
    [[nodiscard]] int Join();

    std::intptr_t process_ = kNone;
    std::intptr_t input_ = kNone;
    std::intptr_t output_ = kNone;
};

/// Sets a variable of the environment of this process, which programs started later inherit.
void SetEnvironment(const std::string& name, const std::string& value);
/// The program that runs.
[[nodiscard]] std::filesystem::path ThisProgram();

}  // namespace quardele::test
