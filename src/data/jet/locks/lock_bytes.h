// The bytes that programs lock. They lie behind the end of their file, so that nobody's data are ever under a
// lock.
#pragma once

#include <cstdint>

namespace quardele::jet::lock_bytes {

// In the data file, behind the largest possible one: what our own processes agree on.

/// Held shared by everyone who has the file open, exclusively by an exclusive opener.
inline constexpr std::uint64_t kPresence = std::uint64_t{1} << 32;
/// Held exclusively by the one who writes, from before its first look at the pages to the end of its step.
inline constexpr std::uint64_t kWriter = kPresence + 1;
/// Held exclusively while pages are being written to the file, from before the journal becomes valid until it
/// is gone; shared for the moment in which a reader looks whether somebody does.
inline constexpr std::uint64_t kCommit = kPresence + 2;
/// Held by the one that is to have the writer's lock next, until it has it: exclusively like that lock, or
/// shared by one that only keeps writers away, as a check does that may not write.
inline constexpr std::uint64_t kNextWriter = kPresence + 3;
/// Rows: one byte for each slot of each page.
inline constexpr std::uint64_t kRows = std::uint64_t{1} << 40;
inline constexpr std::uint64_t kRowsPerPage = 256;

// In the lock file: the published protocol of the original engine.

/// One byte for each user, held exclusively while it has the data file open.
inline constexpr std::uint64_t kUsers = 0x10000001;
inline constexpr std::uint64_t kMostUsers = 255;
/// Pages that are being changed: a range for each page.
inline constexpr std::uint64_t kPageWrites = 0x20000000;
inline constexpr std::uint64_t kPerPage = 0x200;

}  // namespace quardele::jet::lock_bytes
