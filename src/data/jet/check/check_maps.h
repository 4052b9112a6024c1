// The usage maps of a file: each page in one map, free ones in the global one.
#pragma once

#include "check/check_context.h"

namespace quardele::jet {

/// The pages of a map in ascending order; those outside the file and maps of impossible shape are findings.
/// The pages that hold the map are claimed.
[[nodiscard]] std::vector<std::uint32_t> CheckMap(CheckContext& context, RowPointer map,
                                                  const CheckPlace& place);

/// The map of pages that can be used again. Takes page 1.
class FreePages {
 public:
    explicit FreePages(CheckContext& context);

    /// Finds pages that are claimed and free; call it when all owners have claimed theirs. Returns those that
    /// are neither.
    [[nodiscard]] std::vector<std::uint32_t> CompareWithClaims(CheckContext& context) const;

 private:
    enum class State : std::uint8_t { Free, InUse, Forgotten };

    void ReadBits(std::uint64_t firstPage, const ByteView& bits);
    void ForgetBefore(std::uint64_t firstPage);

    std::vector<State> states_;  ///< pages behind the map's reach count as free
};

}  // namespace quardele::jet
