// The office's process.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace quardele::word::writer {

/// A process in a session of its own that outlives the program: the operator's letters stay open. It inherits
/// no open file, so that it holds neither the program's output nor its databases.
class OfficeProcess {
 public:
    /// Starts it; the office will listen on a pipe of that name. Throws RuntimeError 429.
    OfficeProcess(const std::filesystem::path& installation, const std::filesystem::path& profile,
                  const std::string& pipe, bool showsWindows);

    /// To be called while waiting for the pipe. A new profile makes the office end at once and ask to be
    /// started again; an office that already uses the profile takes the order over, and the process ends.
    /// Throws RuntimeError 429 when it ended otherwise.
    void Watch();
    /// Ends the process if it still runs.
    void Kill();
    /// Says that the office ends, or has ended: the next start waits for that, because an office that ends
    /// takes orders for its profile and never carries them out.
    void NoteEnding();

 private:
    void Start();
    void Restart();

    std::vector<std::string> command_;
    pid_t pid_ = -1;
    int starts_ = 0;
    std::chrono::steady_clock::time_point handedOver_;
};

}  // namespace quardele::word::writer
