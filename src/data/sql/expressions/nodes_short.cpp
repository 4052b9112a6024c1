// Calls that lists make for every row, done without a Variant for each argument: the texts and numbers go
// straight from the row to the function.
#include <algorithm>

#include <basic/date.h>

#include "expressions/node.h"
#include "plan/fold.h"

namespace quardele::sql {
namespace {

bool IsText(const NodePtr& node) {
    return ClassOf(node->Type()) == TypeClass::Texts;
}

bool IsNumber(const NodePtr& node) {
    return ClassOf(node->Type()) == TypeClass::Numbers;
}

bool IsConstantText(const NodePtr& node) {
    return node->Constant() != nullptr && node->Constant()->IsText();
}

/// A whole constant of at least 0.
std::optional<std::int32_t> CountOf(const NodePtr& node) {
    const Variant* constant = node->Constant();
    if (constant == nullptr || !constant->Is<std::int32_t>() || constant->As<std::int32_t>() < 0) {
        return std::nullopt;
    }
    return constant->As<std::int32_t>();
}

/// A text that is a part of another one.
class PartNode final : public Node {
 public:
    using Part = TextView (*)(TextView text, std::size_t count);

    PartNode(NodePtr text, Part part, std::size_t count)
        : Node(jet::ColumnType::Text), text_(std::move(text)), part_(part), count_(count) {}

    Variant Value(RowContext& row) const override {
        const auto text = Characters(row, buffer_);
        return text ? Variant(Text(*text)) : Variant(basic::Null());
    }
    std::optional<TextView> Characters(RowContext& row, Text& buffer) const override {
        const auto text = text_->Characters(row, buffer);
        return text ? std::optional(part_(*text, count_)) : std::nullopt;
    }
    bool IsNull(RowContext& row) const override { return text_->IsNull(row); }
    bool NeverFails() const override { return text_->NeverFails(); }

 private:
    NodePtr text_;
    Part part_;
    std::size_t count_;
    mutable Text buffer_;
};

TextView LeftPart(TextView text, std::size_t count) {
    return text.substr(0, count);
}
TextView WithoutLeadingBlanks(TextView text, std::size_t) {
    return text.substr(std::min(text.find_first_not_of(u' '), text.size()));
}
TextView WithoutTrailingBlanks(TextView text, std::size_t) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}
TextView WithoutBlanks(TextView text, std::size_t count) {
    return WithoutTrailingBlanks(WithoutLeadingBlanks(text, count), count);
}

/// The place of a constant text, found without regard to case.
class PlaceNode final : public Node {
 public:
    PlaceNode(NodePtr text, TextView what, std::size_t from)
        : Node(jet::ColumnType::Long), text_(std::move(text)), what_(what), from_(from) {}

    Variant Value(RowContext& row) const override {
        const auto place = Number(row);
        return place ? Variant(static_cast<std::int32_t>(*place)) : Variant(basic::Null());
    }
    std::optional<double> Number(RowContext& row) const override {
        const auto text = text_->Characters(row, buffer_);
        if (!text) {
            return std::nullopt;
        }
        const std::size_t found = text->empty() ? TextView::npos : what_.FindIn(*text, from_);
        return found == TextView::npos ? 0 : static_cast<double>(found + 1);
    }
    bool IsNull(RowContext& row) const override { return text_->IsNull(row); }
    bool NeverFails() const override { return text_->NeverFails(); }

 private:
    NodePtr text_;
    FoldedPattern what_;
    std::size_t from_;
    mutable Text buffer_;
};

class LaterDateNode final : public Node {
 public:
    LaterDateNode(basic::DateAdder adder, NodePtr number, NodePtr date)
        : Node(jet::ColumnType::Date), adder_(adder), number_(std::move(number)), date_(std::move(date)) {}

    Variant Value(RowContext& row) const override {
        const auto days = Number(row);
        return days ? Variant(basic::Date{*days}) : Variant(basic::Null());
    }
    std::optional<double> Number(RowContext& row) const override {
        const auto number = number_->Number(row);
        const auto date = number ? date_->Number(row) : std::nullopt;
        if (!date) {
            return std::nullopt;
        }
        return adder_.Add(*number, basic::Date{*date}).days;
    }

 private:
    basic::DateAdder adder_;
    NodePtr number_;
    NodePtr date_;
};

NodePtr MakePart(NodeList& arguments, PartNode::Part part, std::size_t count = 0) {
    if (!IsText(arguments.front())) {
        return nullptr;
    }
    return std::make_unique<const PartNode>(std::move(arguments.front()), part, count);
}

NodePtr MakeLeft(NodeList& arguments) {
    const auto count = CountOf(arguments[1]);
    return count ? MakePart(arguments, LeftPart, static_cast<std::size_t>(*count)) : nullptr;
}

/// InStr(text, what) and InStr(start, text, what).
NodePtr MakePlace(NodeList& arguments) {
    const std::size_t first = arguments.size() - 2;
    const auto start = first == 0 ? 1 : CountOf(arguments.front());
    const NodePtr& what = arguments.back();
    if (first > 1 || !start || *start == 0 || !IsText(arguments[first]) || !IsConstantText(what)) {
        return nullptr;
    }
    const auto from = static_cast<std::size_t>(*start) - 1;
    return std::make_unique<const PlaceNode>(std::move(arguments[first]), what->Constant()->As<Text>(), from);
}

NodePtr MakeLaterDate(NodeList& arguments) {
    const bool fits = IsConstantText(arguments[0]) && IsNumber(arguments[1]) &&
                      arguments[2]->Type() == jet::ColumnType::Date;
    const auto adder = fits ? basic::DateAdder::For(arguments[0]->Constant()->As<Text>()) : std::nullopt;
    if (!adder) {
        return nullptr;
    }
    return std::make_unique<const LaterDateNode>(*adder, std::move(arguments[1]), std::move(arguments[2]));
}

}  // namespace

NodePtr MakeShortCall(TextView function, NodeList& arguments) {
    const auto is = [function](TextView name) { return basic::EqualNoCase(function, name); };
    if (is(u"Trim")) {
        return MakePart(arguments, WithoutBlanks);
    }
    if (is(u"LTrim")) {
        return MakePart(arguments, WithoutLeadingBlanks);
    }
    if (is(u"RTrim")) {
        return MakePart(arguments, WithoutTrailingBlanks);
    }
    if (is(u"Left")) {
        return MakeLeft(arguments);
    }
    if (is(u"InStr")) {
        return MakePlace(arguments);
    }
    return is(u"DateAdd") ? MakeLaterDate(arguments) : nullptr;
}

}  // namespace quardele::sql
