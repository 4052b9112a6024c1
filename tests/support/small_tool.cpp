// A program that another one starts: writes its arguments, line by line, to "tool.seen" in the current
// folder, stays until there is a file "tool.go", writes "tool.done" and ends. Gives up after some seconds.
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

/// Nobody sees half of it.
void WriteWhole(const char* name, int count, char** lines) {
    const std::filesystem::path draft = std::filesystem::path(name).concat(".draft");
    {
        std::ofstream file(draft, std::ios::binary);
        for (int i = 0; i < count; ++i) {
            file << lines[i] << "\n";
        }
    }
    std::filesystem::rename(draft, name);
}

}  // namespace

int main(int argc, char** argv) {
    constexpr auto kPause = std::chrono::milliseconds(10);
    constexpr int kPauses = 3000;
    WriteWhole("tool.seen", argc - 1, argv + 1);
    for (int pause = 0; !std::filesystem::exists("tool.go"); ++pause) {
        if (pause == kPauses) {
            return 1;
        }
        std::this_thread::sleep_for(kPause);
    }
    WriteWhole("tool.done", 0, nullptr);
    return 0;
}
