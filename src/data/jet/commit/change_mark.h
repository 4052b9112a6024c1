// The commit slots in the header page: what tells everybody that a file has changed.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "file/os_file.h"
#include "format.h"

namespace quardele::jet {

/// The 256 counters of the header, one for each user number of the lock file; 0 is the exclusive opener's.
/// Whoever writes to the file counts its own one up before it touches the first page, so that pages read
/// between two equal marks belong together.
class ChangeMark {
 public:
    static constexpr std::size_t kSlots = 256;
    static constexpr std::size_t kSize = 2 * kSlots;
    using Bytes = std::array<std::uint8_t, kSize>;

    /// No mark: usable for nothing.
    ChangeMark() = default;
    explicit ChangeMark(const Bytes& bytes);
    /// As the file has it now. Access 97 files have none that we know.
    [[nodiscard]] static ChangeMark Read(const OsFile& file, const Format& format);

    /// Whether the file has it still: the same as reading it and comparing, in less time.
    [[nodiscard]] bool IsIn(const OsFile& file) const;

    /// False when these bytes do not look like commit slots; they are then left alone.
    [[nodiscard]] bool IsUsable() const { return usable_; }
    [[nodiscard]] const Bytes& Stored() const { return bytes_; }
    /// The users whose slots hold 0 or 1 instead of a count, among slots that do count; 0 means that a write
    /// has begun. None when no slot counts: a program that keeps no slots leaves zeros there.
    [[nodiscard]] std::vector<int> UsersInTrouble() const;
    [[nodiscard]] std::vector<int> UsersInWriting() const;
    /// The mark after the next change of a user.
    [[nodiscard]] ChangeMark Advanced(int user) const;
    /// Writes one user's slot; not synced.
    void WriteSlot(OsFile& file, int user) const;

    friend bool operator==(const ChangeMark&, const ChangeMark&) = default;

 private:
    [[nodiscard]] std::uint16_t Slot(std::size_t number) const;
    [[nodiscard]] std::vector<int> UsersWith(std::uint16_t highest) const;

    Bytes bytes_{};
    bool usable_ = false;
    bool inTrouble_ = false;
};

}  // namespace quardele::jet
