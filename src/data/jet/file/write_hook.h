// A place for tests to stand between the engine and the disk: the hook is called before each step that
// changes a file, and may end the process or throw, as a crash or a full disk would.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>

namespace quardele::jet {

enum class WritePoint { Create, Write, Resize, Sync, Remove, Rename, SyncFolder };

struct WriteEvent {
    WritePoint step;
    const std::filesystem::path& path;
    std::uint64_t offset = 0;
    std::span<const std::uint8_t> bytes;
};

using WriteHook = std::function<void(const WriteEvent&)>;

/// The hook of this process, empty unless a test sets it.
[[nodiscard]] WriteHook& CurrentWriteHook();

inline void BeforeWriting(const WriteEvent& event) {
    if (const WriteHook& hook = CurrentWriteHook()) {
        hook(event);
    }
}

}  // namespace quardele::jet
