#include "office_session.h"

#include <signal.h>
#include <stdlib.h>

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include <basic/paths.h>

namespace quardele::tests {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// The command line of a process that still runs; empty for one that has ended.
std::string CommandLine(const fs::path& process) {
    std::ostringstream line;
    line << std::ifstream(process / "cmdline", std::ios::binary).rdbuf();
    return line.str();
}

pid_t PidOf(const fs::path& process) {
    const std::string name = process.filename().string();
    pid_t pid = 0;
    std::from_chars(name.data(), name.data() + name.size(), pid);
    return pid;
}

fs::path NewFolder() {
    std::string name = (fs::temp_directory_path() / "quardele-word-XXXXXX").string();
    return mkdtemp(name.data());
}

}  // namespace

bool OfficeSession::IsAvailable() {
    const bool bridge = fs::exists(fs::path(BINARY_DIR) / "lib" / "libquardele_writer_bridge.so");
    return bridge && !Installation().empty();
}

// The command is a link into the installation's folder "program".
fs::path OfficeSession::Installation() {
    const char* searched = std::getenv("PATH");
    std::istringstream folders(searched == nullptr ? "" : searched);
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::error_code missing;
        if (const fs::path target = fs::canonical(fs::path(folder) / "soffice", missing); !missing) {
            return target.parent_path().parent_path();
        }
    }
    return {};
}

OfficeSession::OfficeSession(Windows windows) : folder_(NewFolder()) {
    setenv("QUARDELE_WRITER_PROFILE", (folder_ / "profile").c_str(), 1);
    setenv("QUARDELE_WRITER_HEADLESS", windows == Windows::Hidden ? "1" : "0", 1);
}

OfficeSession::~OfficeSession() {
    Kill();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::vector<pid_t> OfficeSession::Processes() const {
    const std::string profile = (folder_ / "profile").string();
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const pid_t pid = PidOf(entry.path());
        const std::string command = pid == 0 ? std::string() : CommandLine(entry.path());
        if (command.find("soffice.bin") != std::string::npos && command.find(profile) != std::string::npos) {
            found.push_back(pid);
        }
    }
    return found;
}

bool OfficeSession::Ends(std::chrono::seconds patience) const {
    const auto end = Clock::now() + patience;
    while (!Processes().empty()) {
        if (Clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

void OfficeSession::Kill() const {
    for (const pid_t pid : Processes()) {
        kill(pid, SIGKILL);
    }
    if (!Ends()) {
        std::abort();
    }
}

basic::Text OfficeSession::WindowsFile(const std::string& name) const {
    return basic::WindowsPath(File(name));
}

basic::Text TestTemplate(const std::string& file) {
    return basic::WindowsPath(fs::path(TEST_TEMPLATES) / file);
}

basic::Text DemoTemplate(const std::string& file) {
    return basic::WindowsPath(fs::path(DEMO_TEMPLATES) / file);
}

}  // namespace quardele::tests
