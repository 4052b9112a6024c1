#include "compiled_formula.h"

#include <algorithm>

#include <forms/strings.h>

namespace quardele::engine {

namespace error = basic::error;
using basic::EqualNoCase;
using forms::ToText;

namespace {

[[noreturn]] void FailUnknown(const QString& what) {
    throw basic::RuntimeError(error::kNoSuchField, ToText(what));
}

[[noreturn]] void FailUnknownField(TextView table, TextView field) {
    FailUnknown(QStringLiteral("L'état ne connaît pas le champ {%1.%2}.")
                    .arg(forms::ToQString(table), forms::ToQString(field)));
}

/// A name without the braces and the sign that it is a formula.
Text BareName(const FormulaField& field) {
    const QString& name = field.Name();
    return ToText(name.sliced(2, name.size() - 3));
}

}  // namespace

FormulaSet::FormulaSet(const ReportDefinition& report)
    : report_(report),
      formulas_(static_cast<std::size_t>(report.formulas.Count())),
      reading_(formulas_.size(), false) {
    for (const std::shared_ptr<FormulaField>& field : report.formulas) {
        static_cast<void>(PlaceOfFormula(BareName(*field)));
    }
}

CompiledFormula FormulaSet::Compile(const QString& text, const QString& where) {
    const Text place = ToText(where);
    return Concerning(place, [&] {
        CompiledFormula compiled{.where = place, .formula = formula::Formula::Parse(ToText(text))};
        for (const formula::Reference& reference : compiled.formula.References()) {
            compiled.places.push_back(PlaceOf(reference));
        }
        NoteDependence(compiled);
        return compiled;
    });
}

void FormulaSet::NoteDependence(CompiledFormula& compiled) const {
    int mentioned = 0;
    for (const Place& place : compiled.places) {
        if (const auto* const special = std::get_if<formula::Special>(&place)) {
            compiled.onPage = compiled.onPage || *special == formula::Special::PageNumber;
            compiled.onTotal = compiled.onTotal || *special == formula::Special::TotalPageCount;
            compiled.onRecord = compiled.onRecord || *special == formula::Special::RecordNumber;
        } else if (const auto* const formula = std::get_if<FormulaPlace>(&place)) {
            const CompiledFormula& other = Formula(*formula);
            compiled.onRecord = compiled.onRecord || other.onRecord;
            compiled.onPage = compiled.onPage || other.onPage;
            compiled.onTotal = compiled.onTotal || other.onTotal;
            compiled.summing = compiled.summing || other.summing;
            mentioned = std::max(mentioned, other.depth);
        } else {
            compiled.onRecord = true;
            compiled.summing = compiled.summing || std::holds_alternative<SummaryPlace>(place);
        }
    }
    compiled.depth = compiled.formula.Depth() + mentioned;
    RequireDepth(compiled.depth);
}

/// Deeper formulas would need more stack than there is.
void FormulaSet::RequireDepth(int depth) {
    constexpr int kDeepest = 1000;
    if (depth > kDeepest) {
        formula::FailTooComplex();
    }
}

Place FormulaSet::PlaceOf(const formula::Reference& reference) {
    if (const auto* const field = std::get_if<formula::FieldReference>(&reference)) {
        return FieldPlace{ColumnOf(field->table, field->field)};
    }
    if (const auto* const formula = std::get_if<formula::FormulaReference>(&reference)) {
        return PlaceOfFormula(formula->name);
    }
    if (const auto* const summary = std::get_if<formula::SummaryReference>(&reference)) {
        return PlaceOfSummary(*summary);
    }
    return std::get<formula::Special>(reference);
}

FormulaPlace FormulaSet::PlaceOfFormula(TextView name) {
    std::size_t index = 0;
    for (const std::shared_ptr<FormulaField>& field : report_.formulas) {
        if (EqualNoCase(BareName(*field), name)) {
            break;
        }
        ++index;
    }
    if (index == formulas_.size()) {
        FailUnknown(QStringLiteral("L'état ne connaît pas la formule {@%1}.").arg(forms::ToQString(name)));
    }
    if (reading_[index]) {
        throw basic::RuntimeError(
            error::kInvalidArgument,
            ToText(QStringLiteral("La formule {@%1} a besoin d'elle-même.").arg(forms::ToQString(name))));
    }
    if (formulas_[index] == nullptr) {
        RequireDepth(++nested_);
        reading_[index] = true;
        const FormulaField& field = report_.formulas.Item(static_cast<int>(index) + 1);
        formulas_[index] = std::make_unique<CompiledFormula>(
            Compile(field.Text(), QStringLiteral("formule %1").arg(field.Name())));
        reading_[index] = false;
        --nested_;
    }
    return {index};
}

SummaryPlace FormulaSet::PlaceOfSummary(const formula::SummaryReference& reference) {
    Summary summary{.kind = reference.kind, .of = {}, .group = {}};
    if (const auto* const field = std::get_if<formula::FieldReference>(&reference.of)) {
        summary.of = FieldPlace{ColumnOf(field->table, field->field)};
    } else {
        const FormulaPlace place = PlaceOfFormula(std::get<formula::FormulaReference>(reference.of).name);
        if (Formula(place).onPage || Formula(place).onTotal || Formula(place).summing) {
            throw basic::RuntimeError(
                error::kInvalidArgument,
                u"Un total ne peut porter ni sur un autre total ni sur un numéro de page.");
        }
        summary.of = place;
    }
    if (reference.group) {
        summary.group = GroupOf(*reference.group);
    }
    summaries_.push_back(summary);
    return {summaries_.size() - 1};
}

std::size_t FormulaSet::GroupOf(const formula::FieldReference& field) const {
    const auto found =
        std::find_if(report_.groups.begin(), report_.groups.end(), [&field](const Group& group) {
            return EqualNoCase(ToText(group.by.table), field.table) &&
                   EqualNoCase(ToText(group.by.field), field.field);
        });
    if (found == report_.groups.end()) {
        FailUnknown(QStringLiteral("L'état n'a pas de groupe sur le champ {%1.%2}.")
                        .arg(forms::ToQString(field.table), forms::ToQString(field.field)));
    }
    return static_cast<std::size_t>(found - report_.groups.begin());
}

std::size_t FormulaSet::ColumnOf(TextView table, TextView field) {
    for (const std::shared_ptr<Table>& known : report_.database.Tables()) {
        if (!EqualNoCase(ToText(known->Name()), table)) {
            continue;
        }
        const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const Column& column) {
            return column.table == known.get() && EqualNoCase(column.field, field);
        });
        if (found != columns_.end()) {
            return static_cast<std::size_t>(found - columns_.begin());
        }
        if (!IsField(*known, field)) {
            break;
        }
        columns_.push_back({known.get(), Text(field)});
        return columns_.size() - 1;
    }
    FailUnknownField(table, field);
}

bool FormulaSet::IsField(const Table& table, TextView field) {
    auto known = fields_.find(&table);
    if (known == fields_.end()) {
        known = fields_.emplace(&table, table.Fields()).first;
    }
    const Collection<DatabaseField>& fields = known->second;
    return std::any_of(fields.begin(), fields.end(), [field](const std::shared_ptr<DatabaseField>& other) {
        return EqualNoCase(ToText(other->Name()), field);
    });
}

}  // namespace quardele::engine
