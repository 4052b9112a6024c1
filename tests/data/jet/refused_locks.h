// A process whose byte locks fail, as on a file system that has none; for Linux.
#pragma once

namespace quardele::jet::test {

/// From here on each byte lock of this process, and of the programs that it turns into, fails with the error
/// of such a file system; false when the system cannot do that.
[[nodiscard]] bool RefuseLocks();

}  // namespace quardele::jet::test
