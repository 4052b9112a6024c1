// Processes that are killed at any point of any kind of change, and the files that they leave.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support.h"

namespace quardele::jet::test {

/// From one point to the next one that is tried: 1, or what QUARDELE_KILL_STRIDE says.
[[nodiscard]] int KillStride();
/// The first point that is tried of the change behind a stage: with a stride, not the same one for all.
[[nodiscard]] int FirstKillPoint(std::size_t stage);

/// The mixed changes, one after the other.
class KillWorkload {
 public:
    /// The file before the first change, or after one.
    struct Stage {
        std::filesystem::path file;
        std::string contents;
    };
    /// Told of each death: the stage before the change, and the exit code of the process, 0 when it had made
    /// the change before the point came.
    using Look = std::function<void(std::size_t stage, int code)>;

    KillWorkload();

    /// One more than there are changes.
    [[nodiscard]] const std::vector<Stage>& Stages() const { return stages_; }
    [[nodiscard]] std::size_t Changes() const { return stages_.size() - 1; }

    /// Makes a file a copy of a stage and lets a process die at a point of the change that follows, in the
    /// middle of a write when it is to be torn. Gives its exit code.
    [[nodiscard]] int Die(const std::filesystem::path& file, std::size_t stage, int point, bool torn) const;
    /// The same at one point after the other of all changes, as long as no test has failed. Gives how many.
    int DieEverywhere(const std::filesystem::path& file, bool torn, const Look& look) const;

 private:
    TempFolder folder_;
    std::vector<Stage> stages_;
};

/// The faults that the check of the whole file finds, a line for each.
[[nodiscard]] std::string FaultsOfFile(const std::filesystem::path& file);

}  // namespace quardele::jet::test
