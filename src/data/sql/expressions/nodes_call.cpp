// Function calls.
#include <array>

#include <basic/conversion.h>

#include "expressions/functions.h"
#include "expressions/node.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

StaticType ResultType(const Function& function, const NodeList& arguments) {
    switch (function.result) {
        case Function::Result::FirstNumber:
            return ClassOf(arguments.front()->Type()) == TypeClass::Numbers ? arguments.front()->Type()
                                                                            : function.type;
        case Function::Result::Common: {
            StaticType type = arguments.front()->Type();
            for (const NodePtr& argument : arguments) {
                type = CommonType(type, argument->Type());
            }
            return type;
        }
        default:
            return function.type;
    }
}

class CallNode final : public Node {
 public:
    CallNode(const Function& function, NodeList arguments)
        : Node(ResultType(function, arguments)), function_(function), arguments_(std::move(arguments)) {}

    Variant Value(RowContext& row) const override {
        std::array<Variant, kMostArguments> scratch;
        std::array<const Variant*, kMostArguments> values{};
        for (std::size_t i = 0; i < arguments_.size(); ++i) {
            values[i] = &arguments_[i]->Peek(row, scratch[i]);
            if (values[i]->IsNull() && function_.nulls == Function::Nulls::Spread) {
                return basic::Null();
            }
        }
        return function_.call(Arguments(values.data(), arguments_.size()));
    }

 private:
    const Function& function_;
    NodeList arguments_;
};

/// IIf and Switch: pairs of a condition and a value, and a value for when no condition is true. Only the
/// value that is chosen is worked out.
class ChoiceNode final : public Node {
 public:
    ChoiceNode(StaticType type, NodeList conditions, NodeList values, NodePtr otherwise)
        : Node(type),
          conditions_(std::move(conditions)),
          values_(std::move(values)),
          otherwise_(std::move(otherwise)) {}

    Variant Value(RowContext& row) const override { return Chosen(row).Value(row); }
    const Variant& Peek(RowContext& row, Variant& scratch) const override {
        return Chosen(row).Peek(row, scratch);
    }

 private:
    [[nodiscard]] const Node& Chosen(RowContext& row) const {
        for (std::size_t i = 0; i < conditions_.size(); ++i) {
            if (conditions_[i]->Test(row) == Truth::True) {
                return *values_[i];
            }
        }
        return *otherwise_;
    }

    NodeList conditions_;
    NodeList values_;
    NodePtr otherwise_;
};

/// Choose(position, value, value ...): Null outside the list.
class ChooseNode final : public Node {
 public:
    ChooseNode(StaticType type, NodePtr position, NodeList values)
        : Node(type), position_(std::move(position)), values_(std::move(values)) {}

    Variant Value(RowContext& row) const override {
        Variant scratch;
        const Variant& position = position_->Peek(row, scratch);
        if (position.IsNull()) {
            throw basic::RuntimeError(error::kInvalidNull);
        }
        const double number = basic::CDbl(position);
        if (!(number >= 1) || number >= static_cast<double>(values_.size()) + 1) {
            return basic::Null();
        }
        return values_[static_cast<std::size_t>(number) - 1]->Value(row);
    }

 private:
    NodePtr position_;
    NodeList values_;
};

bool IsNullConstant(const NodePtr& node) {
    return node->Constant() != nullptr && node->Constant()->IsNull();
}

/// The type of a value that comes from any of the nodes; a Null constant goes with every type.
StaticType CommonTypeOf(const NodeList& values) {
    StaticType type;
    bool first = true;
    for (const NodePtr& value : values) {
        if (!IsNullConstant(value)) {
            type = first ? value->Type() : CommonType(type, value->Type());
            first = false;
        }
    }
    return type;
}

[[noreturn]] void FailArgumentCount(TextView function) {
    throw basic::RuntimeError(error::kSyntaxError,
                              u"Nombre d'arguments incorrect pour la fonction « " + Text(function) + u" ».");
}

NodePtr MakeIIf(NodeList arguments) {
    if (arguments.size() < 2 || arguments.size() > 3) {
        FailArgumentCount(u"IIf");
    }
    const bool constant = AllConstant(arguments);
    NodeList conditions;
    conditions.push_back(std::move(arguments[0]));
    NodeList values;
    values.push_back(std::move(arguments[1]));
    values.push_back(arguments.size() == 3 ? std::move(arguments[2]) : MakeConstant(basic::Null(), {}));
    const StaticType type = CommonTypeOf(values);
    NodePtr otherwise = std::move(values.back());
    values.pop_back();
    return WorkedOut(std::make_unique<const ChoiceNode>(type, std::move(conditions), std::move(values),
                                                        std::move(otherwise)),
                     constant);
}

NodePtr MakeSwitch(NodeList arguments) {
    if (arguments.empty() || arguments.size() % 2 != 0) {
        FailArgumentCount(u"Switch");
    }
    const bool constant = AllConstant(arguments);
    NodeList conditions;
    NodeList values;
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        conditions.push_back(std::move(arguments[i]));
        values.push_back(std::move(arguments[i + 1]));
    }
    const StaticType type = CommonTypeOf(values);
    return WorkedOut(std::make_unique<const ChoiceNode>(type, std::move(conditions), std::move(values),
                                                        MakeConstant(basic::Null(), {})),
                     constant);
}

NodePtr MakeChoose(NodeList arguments) {
    if (arguments.size() < 2) {
        FailArgumentCount(u"Choose");
    }
    const bool constant = AllConstant(arguments);
    NodePtr position = std::move(arguments.front());
    arguments.erase(arguments.begin());
    const StaticType type = CommonTypeOf(arguments);
    return WorkedOut(std::make_unique<const ChooseNode>(type, std::move(position), std::move(arguments)),
                     constant);
}

}  // namespace

NodePtr MakeCall(TextView name, NodeList arguments) {
    if (basic::EqualNoCase(name, u"IIf")) {
        return MakeIIf(std::move(arguments));
    }
    if (basic::EqualNoCase(name, u"Switch")) {
        return MakeSwitch(std::move(arguments));
    }
    if (basic::EqualNoCase(name, u"Choose")) {
        return MakeChoose(std::move(arguments));
    }
    const Function* function = FindFunction(name);
    if (function == nullptr) {
        FailNaming(error::kUndefinedFunction, name);
    }
    if (arguments.size() < function->least || arguments.size() > function->most) {
        FailArgumentCount(function->name);
    }
    const bool constant = function->pure && AllConstant(arguments);
    if (!constant) {
        if (NodePtr node = MakeShortCall(function->name, arguments)) {
            return node;
        }
    }
    return WorkedOut(std::make_unique<const CallNode>(*function, std::move(arguments)), constant);
}

}  // namespace quardele::sql
