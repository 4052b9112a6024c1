// A model of a disk on which the power fails: of all that was written since the last sync of a file, any
// sectors may be there and any others not, and so may the name of a file since the last sync of the folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <vector>

#include "file/write_hook.h"

namespace quardele::jet::test {

/// A data file and its journal on such a disk.
class ForgetfulDisk {
 public:
    /// As both lie on the real one now.
    explicit ForgetfulDisk(const std::filesystem::path& dataFile);

    /// Takes in one step that changes a file; of other files it knows nothing.
    void Take(const WriteEvent& event);
    /// A sync of the data file fails: the system says so once and takes what was not synced for written. It
    /// is shown to programs and never reaches the disk, unless it is written again.
    void FailSync() { data_.pending.clear(); }
    /// Writes both files as they are found after the power has failed now. The seed says what is lost.
    void LeaveAfterPowerLoss(unsigned seed, const std::filesystem::path& dataFile) const;

 private:
    struct Piece {
        bool isResize = false;
        std::uint64_t at = 0;  ///< or the new size
        std::vector<std::uint8_t> bytes;
    };
    struct File {
        std::vector<std::uint8_t> durable;
        std::vector<Piece> pending;
    };

    static void Apply(const Piece& piece, std::vector<std::uint8_t>& bytes);
    static void Write(File& file, const WriteEvent& event);
    static void Sync(File& file);
    [[nodiscard]] static std::vector<std::uint8_t> Found(const File& file, std::mt19937& chance);
    void TakeOf(File& file, const WriteEvent& event);

    std::filesystem::path dataPath_;
    File data_;
    File journal_;
    bool journalNamed_ = false;         ///< as programs see it
    bool journalNamedDurably_ = false;  ///< as the folder on the disk has it
};

}  // namespace quardele::jet::test
