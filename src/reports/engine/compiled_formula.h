// Formulas of a report with what they ask for found.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <formula/formula.h>

#include "definition.h"

namespace quardele::engine {

using basic::Text;
using basic::TextView;
using basic::Variant;

/// Places in FormulaSet.
struct FieldPlace {
    std::size_t column = 0;
};
struct FormulaPlace {
    std::size_t formula = 0;
};
struct SummaryPlace {
    std::size_t summary = 0;
};
using Place = std::variant<FieldPlace, FormulaPlace, SummaryPlace, formula::Special>;

struct CompiledFormula {
    Text where;  ///< for descriptions of errors
    formula::Formula formula;
    std::vector<Place> places{};  ///< of its references
    int depth = 0;                ///< levels of its tree and of the formulas that it mentions
    bool onRecord = false;        ///< depends on the record it stands at
    bool onPage = false;          ///< depends on the page it stands on
    bool onTotal = false;         ///< depends on the number of pages
    bool summing = false;         ///< depends on all records
};

/// A sum, a count ... of a column or a formula.
struct Summary {
    formula::SummaryKind kind = formula::SummaryKind::Sum;
    std::variant<FieldPlace, FormulaPlace> of;
    std::optional<std::size_t> group;  ///< number of the group that it is over; all records without
};

/// A column that the records need.
struct Column {
    const Table* table = nullptr;
    Text field;
};

/// All formulas of a report and the columns that they need.
class FormulaSet {
 public:
    /// Reads all named formulas of the report. Throws RuntimeError: 3075, 3085 for what is no formula, 3360
    /// for formulas that are too long or that mention each other too deep, 3265 for unknown fields and
    /// formulas, 3001 for formulas that need each other; with the formula's name.
    explicit FormulaSet(const ReportDefinition& report);

    /// Reads a formula that has no name; `where` says in descriptions of errors where it stands.
    [[nodiscard]] CompiledFormula Compile(const QString& text, const QString& where);
    /// The column of a field; adds it. Throws 3265.
    std::size_t ColumnOf(TextView table, TextView field);

    [[nodiscard]] const std::vector<Column>& Columns() const { return columns_; }
    [[nodiscard]] const std::vector<Summary>& Summaries() const { return summaries_; }
    /// How many formulas have names; their places count from 0.
    [[nodiscard]] std::size_t Count() const { return formulas_.size(); }
    [[nodiscard]] const CompiledFormula& Formula(FormulaPlace place) const {
        return *formulas_[place.formula];
    }

 private:
    [[nodiscard]] Place PlaceOf(const formula::Reference& reference);
    [[nodiscard]] FormulaPlace PlaceOfFormula(TextView name);
    [[nodiscard]] SummaryPlace PlaceOfSummary(const formula::SummaryReference& reference);
    [[nodiscard]] std::size_t GroupOf(const formula::FieldReference& field) const;
    [[nodiscard]] bool IsField(const Table& table, TextView field);
    void NoteDependence(CompiledFormula& compiled) const;
    static void RequireDepth(int depth);

    const ReportDefinition& report_;
    std::vector<Column> columns_;
    std::vector<Summary> summaries_;
    std::vector<std::unique_ptr<CompiledFormula>> formulas_;
    std::vector<bool> reading_;
    int nested_ = 0;  ///< formulas that are being read, each for the one before
    std::map<const Table*, Collection<DatabaseField>> fields_;
};

/// An error whose description names the formula that it concerns.
class FormulaError : public basic::RuntimeError {
 public:
    FormulaError(const basic::RuntimeError& failure, TextView where)
        : RuntimeError(failure.Number(), failure.Description() + u" (" + Text(where) + u")") {}
};

/// Calls an action whose errors concern a formula: their descriptions name it. The error of a formula that
/// another one mentions keeps the name of the one that was mentioned.
template <class Action>
auto Concerning(TextView where, const Action& action) {
    try {
        return action();
    } catch (const FormulaError&) {
        throw;
    } catch (const basic::RuntimeError& failure) {
        throw FormulaError(failure, where);
    }
}

}  // namespace quardele::engine
