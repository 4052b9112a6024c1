// A LibreOffice of the test's own: private profile, no windows unless asked for, nothing left behind.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <basic/text.h>

namespace quardele::tests {

class OfficeSession {
 public:
    enum class Windows { Hidden, Shown };

    /// Whether the plug-in was built and LibreOffice is installed; a test that needs them is skipped
    /// otherwise.
    [[nodiscard]] static bool IsAvailable();

    /// The folder of the LibreOffice that PATH leads to; empty when there is none.
    [[nodiscard]] static std::filesystem::path Installation();

    /// Makes a scratch folder with a new profile and directs the bridge to it.
    explicit OfficeSession(Windows windows = Windows::Hidden);
    /// Kills what still runs in the profile, and removes the folder.
    ~OfficeSession();
    OfficeSession(const OfficeSession&) = delete;
    OfficeSession& operator=(const OfficeSession&) = delete;

    /// The running processes of the profile.
    [[nodiscard]] std::vector<pid_t> Processes() const;
    /// Waits for the office to end by itself; whether it did.
    [[nodiscard]] bool Ends(std::chrono::seconds patience = std::chrono::seconds(20)) const;
    /// Ends the office as a crash would.
    void Kill() const;

    /// A file of the scratch folder, as a path of this machine and as a Windows path.
    [[nodiscard]] std::filesystem::path File(const std::string& name) const { return folder_ / name; }
    [[nodiscard]] basic::Text WindowsFile(const std::string& name) const;

 private:
    std::filesystem::path folder_;
};

/// A template of the tests, or of the demonstration, as a Windows path.
[[nodiscard]] basic::Text TestTemplate(const std::string& file);
[[nodiscard]] basic::Text DemoTemplate(const std::string& file);

}  // namespace quardele::tests
