// The texts of a workbook: each different one is stored once and cells name it by its number.
#pragma once

#include <cstdint>
#include <deque>
#include <unordered_map>

#include <basic/text.h>

#include "records.h"

namespace quardele::workbook {

class SharedTexts {
 public:
    /// The number of a text, which counts as one more use of it. Texts longer than the format allows are cut
    /// and end in "…".
    std::uint32_t NumberOf(basic::TextView text);

    /// Puts the table of texts and the index into it. The stream must start where the workbook starts, since
    /// the index counts from there.
    void Put(Records& out) const;

 private:
    struct Place {
        std::uint32_t inStream;
        std::uint16_t inRecord;
    };
    [[nodiscard]] std::size_t TextsPerBucket() const;
    static Place PutText(Records& out, basic::TextView text);

    std::deque<basic::Text> texts_;
    std::unordered_map<basic::TextView, std::uint32_t> numbers_;
    std::uint32_t uses_ = 0;
};

}  // namespace quardele::workbook
