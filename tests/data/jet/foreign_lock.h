// Byte locks as programs take them that know nothing of this engine.
#pragma once

#include <cstdint>
#include <filesystem>

namespace quardele::jet::test {

/// Locks one byte of a file, which is made if there is none, exclusively and until the process ends, with
/// nothing but the calls that every program of the system has. False when somebody else has the byte.
[[nodiscard]] bool LockByte(const std::filesystem::path& file, std::uint64_t byte);

}  // namespace quardele::jet::test
