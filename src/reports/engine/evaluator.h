// Values of formulas at a record and a page.
#pragma once

#include <map>

#include "compiled_formula.h"
#include "records.h"

namespace quardele::engine {

/// Where a formula is asked. Without a record all fields are Null.
struct Position {
    std::optional<std::size_t> record;
    int page = 0;
    int pages = 0;

    friend bool operator==(const Position&, const Position&) = default;
};

class Evaluator {
 public:
    /// The groups' columns, the outer before the inner.
    Evaluator(const FormulaSet& formulas, const Records& records, std::vector<std::size_t> groupColumns = {});

    /// Throws what formulas throw, with the formula's place in the description.
    [[nodiscard]] Variant Evaluate(const CompiledFormula& formula, const Position& position) const;
    [[nodiscard]] bool Holds(const CompiledFormula& formula, const Position& position) const;
    /// The first group (from the outermost) that begins anew at a record; the number of groups when none
    /// does.
    [[nodiscard]] std::size_t FirstChange(std::size_t record) const;

 private:
    class ValuesAt;

    /// Of a formula with a name. It is computed once for each position that is asked for, however often other
    /// formulas mention it.
    [[nodiscard]] Variant ValueOfNamed(FormulaPlace place, const Position& position) const;
    void RememberAt(const Position& position) const;
    [[nodiscard]] Variant SummaryAt(std::size_t summary, const Position& position) const;
    /// Over the group that begins at a record.
    [[nodiscard]] Variant Summarised(const Summary& summary, std::size_t first) const;

    const FormulaSet& formulas_;
    const Records& records_;
    std::vector<std::size_t> groupColumns_;
    mutable Position rememberedAt_;
    /// By formula, at that position.
    mutable std::vector<std::optional<Variant>> remembered_;
    /// By summary and first record of its group.
    mutable std::map<std::pair<std::size_t, std::size_t>, Variant> known_;
    /// By record: the first group that begins there.
    std::vector<std::size_t> changes_;
    /// By group and record: where the record's group begins.
    std::vector<std::vector<std::size_t>> starts_;
};

}  // namespace quardele::engine
