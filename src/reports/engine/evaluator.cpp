#include "evaluator.h"

#include "collector.h"

namespace quardele::engine {

namespace {

bool IsSame(const Variant& left, const Variant& right) {
    if (left.IsText() && right.IsText()) {
        return basic::EqualNoCase(left.As<Text>(), right.As<Text>());
    }
    return left == right;
}

}  // namespace

class Evaluator::ValuesAt : public formula::Values {
 public:
    ValuesAt(const Evaluator& evaluator, const CompiledFormula& formula, const Position& position)
        : evaluator_(evaluator), formula_(formula), position_(position) {}

    Variant ValueOf(std::size_t reference) const override {
        const Place& place = formula_.places[reference];
        if (const auto* const field = std::get_if<FieldPlace>(&place)) {
            return position_.record ? evaluator_.records_.At(*position_.record, field->column)
                                    : Variant(basic::Null());
        }
        if (const auto* const formula = std::get_if<FormulaPlace>(&place)) {
            return evaluator_.ValueOfNamed(*formula, position_);
        }
        if (const auto* const summary = std::get_if<SummaryPlace>(&place)) {
            return evaluator_.SummaryAt(summary->summary, position_);
        }
        return SpecialAt(std::get<formula::Special>(place));
    }

 private:
    [[nodiscard]] Variant SpecialAt(formula::Special special) const {
        switch (special) {
            case formula::Special::PageNumber:
                return position_.page;
            case formula::Special::TotalPageCount:
                return position_.pages;
            case formula::Special::RecordNumber:
                break;
        }
        return position_.record ? Variant(static_cast<double>(*position_.record + 1))
                                : Variant(basic::Null());
    }

    const Evaluator& evaluator_;
    const CompiledFormula& formula_;
    const Position& position_;
};

Evaluator::Evaluator(const FormulaSet& formulas, const Records& records,
                     std::vector<std::size_t> groupColumns)
    : formulas_(formulas), records_(records), groupColumns_(std::move(groupColumns)) {
    const std::size_t groups = groupColumns_.size();
    for (std::size_t record = 0; record < records.count; ++record) {
        std::size_t group = 0;
        while (
            record > 0 && group < groups &&
            IsSame(records.At(record, groupColumns_[group]), records.At(record - 1, groupColumns_[group]))) {
            ++group;
        }
        changes_.push_back(group);
    }
    for (std::size_t group = 0; group < groups; ++group) {
        std::vector<std::size_t>& starts = starts_.emplace_back();
        for (std::size_t record = 0; record < records.count; ++record) {
            starts.push_back(changes_[record] <= group ? record : starts.back());
        }
    }
}

Variant Evaluator::Evaluate(const CompiledFormula& formula, const Position& position) const {
    return Concerning(formula.where,
                      [&] { return formula.formula.Evaluate(ValuesAt(*this, formula, position)); });
}

Variant Evaluator::ValueOfNamed(FormulaPlace place, const Position& position) const {
    RememberAt(position);
    if (!remembered_[place.formula]) {
        Variant value = Evaluate(formulas_.Formula(place), position);
        // A summary that the formula needed may have been elsewhere meanwhile.
        RememberAt(position);
        remembered_[place.formula] = std::move(value);
    }
    return *remembered_[place.formula];
}

void Evaluator::RememberAt(const Position& position) const {
    if (rememberedAt_ != position || remembered_.empty()) {
        remembered_.assign(formulas_.Count(), std::nullopt);
        rememberedAt_ = position;
    }
}

bool Evaluator::Holds(const CompiledFormula& formula, const Position& position) const {
    const Variant value = Evaluate(formula, position);
    return Concerning(formula.where, [&] { return formula::IsTrue(value); });
}

std::size_t Evaluator::FirstChange(std::size_t record) const {
    return changes_[record];
}

Variant Evaluator::SummaryAt(std::size_t summary, const Position& position) const {
    const Summary& asked = formulas_.Summaries()[summary];
    const std::size_t first = asked.group && position.record ? starts_[*asked.group][*position.record] : 0;
    const auto key = std::pair(summary, first);
    auto known = known_.find(key);
    if (known == known_.end()) {
        known = known_.emplace(key, Summarised(asked, first)).first;
    }
    return known->second;
}

Variant Evaluator::Summarised(const Summary& summary, std::size_t first) const {
    Collector collector(summary.kind);
    for (std::size_t record = first; record < records_.count; ++record) {
        if (summary.group && starts_[*summary.group][record] != first) {
            break;
        }
        if (const auto* const field = std::get_if<FieldPlace>(&summary.of)) {
            collector.Add(records_.At(record, field->column));
        } else {
            collector.Add(ValueOfNamed(std::get<FormulaPlace>(summary.of), {.record = record}));
        }
    }
    return collector.Result();
}

}  // namespace quardele::engine
