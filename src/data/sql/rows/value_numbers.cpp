#include "rows/value_numbers.h"

namespace quardele::sql {
namespace {

/// From so many rows on it pays to look only if half of them have repeated others.
constexpr std::size_t kTrial = 1000;

void AppendUnits(std::string& bytes, TextView text) {
    const std::size_t length = text.size();
    bytes.append({static_cast<char>(1 + (length >> 16)), static_cast<char>(length >> 8 & 0xFF),
                  static_cast<char>(length & 0xFF)});
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
}

}  // namespace

std::uint32_t ValueNumbers::NumberOf(const NodeList& values, RowContext& row) {
    ++rows_;
    if (!repeats_) {
        return NumberByKey(values, row);
    }
    MakeExact(values, row);
    const std::uint32_t before = exacts_.Size();
    const std::uint32_t exact = exacts_.Insert(exact_);
    if (exact == before) {
        numberOfExact_.push_back(NumberByKey(values, row));
        repeats_ = rows_ < kTrial || exacts_.Size() * std::size_t{2} < rows_;
    }
    return numberOfExact_[exact];
}

/// Different bytes for different values; texts that are equal to the database may differ as well.
void ValueNumbers::MakeExact(const NodeList& values, RowContext& row) {
    exact_.clear();
    for (const NodePtr& value : values) {
        if (ClassOf(value->Type()) != TypeClass::Texts) {
            nodeKeys_.Append(exact_, *value, row);
        } else if (const auto text = value->Characters(row, text_)) {
            AppendUnits(exact_, *text);
        } else {
            exact_ += '\0';
        }
    }
}

std::uint32_t ValueNumbers::NumberByKey(const NodeList& values, RowContext& row) {
    key_.clear();
    for (const NodePtr& value : values) {
        nodeKeys_.Append(key_, *value, row);
    }
    return keys_.Insert(key_);
}

}  // namespace quardele::sql
