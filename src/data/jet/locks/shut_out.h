// Everybody else kept out of a data file's lock file, for who must be alone.
#pragma once

#include <filesystem>
#include <vector>

#include "file/os_file.h"

namespace quardele::jet {

/// Holds places of users in a lock file without being one of them: nobody has them, and nobody gets them.
class ShutOut {
 public:
    enum class Result {
        Alone,
        Occupied,     ///< somebody has a place
        Unavailable,  ///< the lock file cannot be opened, or its file system has no byte locks
    };

    ShutOut() = default;
    ~ShutOut() { End(); }
    ShutOut(const ShutOut&) = delete;
    ShutOut& operator=(const ShutOut&) = delete;

    /// Takes all places; makes the lock file if there is none. Alone without holding any where that cannot be
    /// done. Waits for places as long as for any lock. Makes sure that places to leave free (ascending user
    /// numbers) are nobody's, and does not keep them.
    [[nodiscard]] Result TakeAll(const std::filesystem::path& dataFile, std::vector<int> free = {});
    /// Takes all places but those of some users, in any order; they are in, so that the lock file is there.
    /// True without an effect while it holds places already.
    [[nodiscard]] bool TakeOthers(const std::filesystem::path& dataFile, std::vector<int> users);
    [[nodiscard]] bool Holds() const { return holds_; }
    /// Gives the places back. Who had all of them leaves no lock file behind, unless somebody is in it.
    void End();

 private:
    [[nodiscard]] Result TryTakeAll(const std::filesystem::path& path);
    [[nodiscard]] bool OpenOrCreate(const std::filesystem::path& path);
    [[nodiscard]] bool TakeAllBut(const std::vector<int>& users);
    [[nodiscard]] bool TakeRange(int first, int last);
    [[nodiscard]] bool TakeFreeOnes();

    OsFile file_;
    bool holds_ = false;
    bool all_ = false;
    std::vector<int> free_;  ///< of all, those that are not kept
};

}  // namespace quardele::jet
