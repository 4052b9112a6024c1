// A few pages of a file that exists in an input only.
#pragma once

#include <map>

#include "file/page.h"
#include "input_reader.h"

namespace quardele::fuzz {

/// The layout of the version that an input's first byte chooses.
[[nodiscard]] inline const jet::Format& ChosenFormat(InputReader& input) {
    return input.Byte() % 2 == 0 ? jet::kJet4 : jet::kJet3;
}
[[nodiscard]] inline std::uint8_t FormatChoice(const jet::Format& format) {
    return format.wideText ? 0 : 1;
}

/// The pages that follow in an input: number (2 bytes), length (2 bytes) and content of each, which zeros
/// complete. Pages between those that are given are zero.
class InputPages final : public jet::PageSource {
 public:
    InputPages(const jet::Format& format, InputReader& input);

    [[nodiscard]] std::uint32_t PageCount() const override { return pageCount_; }
    [[nodiscard]] std::uint64_t Generation() const override { return 0; }

 protected:
    [[nodiscard]] jet::PagePtr ReadInside(std::uint32_t number) const override;

 private:
    std::map<std::uint32_t, jet::PagePtr> pages_;
    std::uint32_t pageCount_ = 1;
};

/// Appends a page to an input as InputPages reads it.
void AppendPage(Bytes& input, const jet::Page& page);

}  // namespace quardele::fuzz
