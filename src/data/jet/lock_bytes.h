// The bytes of the data file that processes lock among themselves. They lie behind the largest possible file,
// so that nobody's data are ever under a lock.
#pragma once

#include <cstdint>

namespace quardele::jet::lock_bytes {

/// Held shared by everyone who has the file open, exclusively by an exclusive opener.
inline constexpr std::uint64_t kPresence = std::uint64_t{1} << 32;
/// Held exclusively by the one who writes, from before its first look at the pages to the end of its step.
inline constexpr std::uint64_t kWriter = kPresence + 1;

}  // namespace quardele::jet::lock_bytes
