// Numbers for what several expressions come to in a row.
#pragma once

#include <string>
#include <vector>

#include "expressions/node.h"
#include "rows/key_table.h"
#include "rows/node_key.h"

namespace quardele::sql {

/// Rows whose values are equal to the database get the same number; a new one gets the next.
class ValueNumbers {
 public:
    [[nodiscard]] std::uint32_t NumberOf(const NodeList& values, RowContext& row);
    [[nodiscard]] std::uint32_t Size() const { return keys_.Size(); }
    /// The values as bytes in whose order the values are.
    [[nodiscard]] std::string_view KeyOf(std::uint32_t number) const { return keys_.KeyOf(number); }
    /// A number for no values at all.
    void AddNone() { keys_.Insert({}); }

 private:
    [[nodiscard]] std::uint32_t NumberByKey(const NodeList& values, RowContext& row);
    void MakeExact(const NodeList& values, RowContext& row);

    KeyTable keys_;
    NodeKeys nodeKeys_;
    std::string key_;
    // Most rows repeat the values of others to the letter: these need no key, which is costly for texts.
    KeyTable exacts_;
    std::vector<std::uint32_t> numberOfExact_;
    std::string exact_;
    Text text_;
    std::size_t rows_ = 0;
    bool repeats_ = true;  ///< as far as it looks
};

}  // namespace quardele::sql
