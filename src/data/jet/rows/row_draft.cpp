#include "rows/row_draft.h"

#include <basic/runtime_error.h>

#include "rows/long_value.h"

namespace quardele::jet {

RowDraft::RowDraft(const TableDef& table) : RowDraft(table, RowFields(table.stored.size()), {}) {}

RowDraft::RowDraft(const TableDef& table, RowFields fields, ByteString fixedArea)
    : table_(table),
      fields_(std::move(fields)),
      given_(fields_.size(), false),
      fixedArea_(std::move(fixedArea)) {}

void RowDraft::Give(std::size_t ordinal, std::optional<ByteString> value) {
    fields_[ordinal] = std::move(value);
    given_[ordinal] = true;
}

bool RowDraft::IsLongAndGiven(std::size_t ordinal) const {
    return given_[ordinal] && fields_[ordinal] && table_.stored[ordinal].IsLong();
}

std::size_t RowDraft::Length() const {
    std::size_t length = FrameLength(table_, fixedArea_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (table_.stored[i].fixed || table_.stored[i].type == ColumnType::Boolean || !fields_[i]) {
            continue;
        }
        const std::size_t size = fields_[i]->size();
        if (IsLongAndGiven(i)) {
            length += long_value::kDescriptor + (size <= longestInline_ ? size : 0);
        } else {
            length += size;
        }
    }
    return length;
}

void RowDraft::Fit() {
    if (Length() <= kLargestRow) {
        return;
    }
    longestInline_ = 0;
    if (Length() > kLargestRow) {
        TakeInlineValuesOut();
    }
    if (Length() > kLargestRow) {
        throw basic::RuntimeError(basic::error::kRecordTooLarge);
    }
}

// Those that were short enough when the row was stored before.
void RowDraft::TakeInlineValuesOut() {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (!table_.stored[i].IsLong() || given_[i] || !fields_[i] || fields_[i]->empty()) {
            continue;
        }
        const ByteView field(*fields_[i], table_.page);
        const LongValueDescriptor value = LongValueDescriptor::Load(field);
        if (value.form == long_value::kInline) {
            const auto data = field.Sub(long_value::kDescriptor, value.length).Span();
            Give(i, ByteString(data.begin(), data.end()));
        }
    }
}

ByteString RowDraft::Store(LongValueWriter& longValues) {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (IsLongAndGiven(i)) {
            fields_[i] = fields_[i]->size() <= longestInline_
                             ? InlineLongValue(*fields_[i])
                             : longValues.StoreOutside(table_.stored[i], *fields_[i]);
            given_[i] = false;
        }
    }
    return BuildRow(table_, fields_, std::move(fixedArea_));
}

}  // namespace quardele::jet
