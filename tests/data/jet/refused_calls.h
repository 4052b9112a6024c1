// A process to which the system refuses what a bad file system or a bad disk refuses; for Linux.
#pragma once

#include <cstdint>

namespace quardele::jet::test {

/// From here on each byte lock of this process, and of the programs that it turns into, fails with the error
/// of a file system that has none; false when the system cannot do that.
[[nodiscard]] bool RefuseLocks();
/// The same for each read at an offset that meets this byte of whatever file, with the error of a disk that
/// cannot read a sector. The byte lies within the first 4 GiB.
[[nodiscard]] bool RefuseToRead(std::uint32_t byte);

}  // namespace quardele::jet::test
