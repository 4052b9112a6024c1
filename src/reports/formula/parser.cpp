#include "parser.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "formula_error.h"
#include "lexer.h"

namespace quardele::formula {
namespace {

/// The longest text that is read as a formula, in UTF-16 units.
constexpr std::size_t kLongest = 65536;
/// Formulas inside each other: brackets, arguments, branches.
constexpr int kDeepestNesting = 100;
/// Levels of a tree; long chains of operators are deep trees too.
constexpr int kDeepestTree = 1000;

struct SummaryName {
    TextView name;
    SummaryKind kind;
};
constexpr std::array<SummaryName, 5> kSummaries = {{{u"Sum", SummaryKind::Sum},
                                                    {u"Count", SummaryKind::Count},
                                                    {u"Average", SummaryKind::Average},
                                                    {u"Minimum", SummaryKind::Minimum},
                                                    {u"Maximum", SummaryKind::Maximum}}};

struct SpecialName {
    TextView name;
    Special special;
};
constexpr std::array<SpecialName, 3> kSpecials = {{{u"PageNumber", Special::PageNumber},
                                                   {u"TotalPageCount", Special::TotalPageCount},
                                                   {u"RecordNumber", Special::RecordNumber}}};

struct ComparisonSign {
    TextView sign;
    Comparison comparison;
};
constexpr std::array<ComparisonSign, 6> kComparisons = {{{u"=", Comparison::Equal},
                                                         {u"<>", Comparison::NotEqual},
                                                         {u"<", Comparison::Less},
                                                         {u"<=", Comparison::LessOrEqual},
                                                         {u">", Comparison::Greater},
                                                         {u">=", Comparison::GreaterOrEqual}}};

constexpr std::array<TextView, 8> kReserved = {u"if", u"then", u"else", u"and",
                                               u"or", u"not",  u"true", u"false"};

template <class Table>
auto FindNamed(const Table& table, TextView name) {
    return std::find_if(table.begin(), table.end(),
                        [name](const auto& entry) { return basic::EqualNoCase(entry.name, name); });
}

class Parser {
 public:
    explicit Parser(TextView text) : text_(text), tokens_(Tokenize(text)) {}

    ParsedFormula Run() {
        NodePtr root = Peek().kind == TokenKind::End ? ConstantNode(basic::Null()) : Expression();
        if (Peek().kind != TokenKind::End) {
            Fail(u"Il y a du texte en trop");
        }
        return {std::move(root), std::move(references_)};
    }

 private:
    /// Counts the formulas that are being read inside each other.
    class Nesting {
     public:
        explicit Nesting(int& depth) : depth_(depth) {
            if (++depth_ > kDeepestNesting) {
                FailTooComplex();
            }
        }
        ~Nesting() { --depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

     private:
        int& depth_;
    };

    // Tokens.

    [[nodiscard]] const Token& Peek() const { return tokens_[next_]; }
    const Token& Take() {
        const Token& token = tokens_[next_];
        next_ = std::min(next_ + 1, tokens_.size() - 1);
        return token;
    }
    bool TakeSymbol(TextView symbol) {
        const bool found = Peek().IsSymbol(symbol);
        next_ += found ? 1 : 0;
        return found;
    }
    bool TakeWord(TextView word) {
        const bool found = Peek().IsWord(word);
        next_ += found ? 1 : 0;
        return found;
    }
    void ExpectSymbol(TextView symbol) {
        if (!TakeSymbol(symbol)) {
            Fail(u"« " + Text(symbol) + u" » attendu");
        }
    }
    [[noreturn]] void Fail(TextView reason) const { FailSyntax(reason, text_, Peek().position); }

    static NodePtr Checked(NodePtr node) {
        if (node->Depth() > kDeepestTree) {
            FailTooComplex();
        }
        return node;
    }

    // Expressions, from what binds least to what binds most.

    NodePtr Expression() {
        const Nesting nesting(depth_);
        return TakeWord(u"if") ? If() : Either();
    }

    NodePtr If() {
        NodePtr condition = Expression();
        if (!TakeWord(u"then")) {
            Fail(u"« then » attendu");
        }
        NodePtr whenTrue = Expression();
        NodePtr otherwise = TakeWord(u"else") ? Expression() : ConstantNode(basic::Null());
        return Checked(IfNode(std::move(condition), std::move(whenTrue), std::move(otherwise)));
    }

    NodePtr Either() {
        NodePtr left = Both();
        while (TakeWord(u"or")) {
            NodePtr right = Both();
            left = Checked(OrNode(std::move(left), std::move(right)));
        }
        return left;
    }

    NodePtr Both() {
        NodePtr left = Denied();
        while (TakeWord(u"and")) {
            NodePtr right = Denied();
            left = Checked(AndNode(std::move(left), std::move(right)));
        }
        return left;
    }

    NodePtr Denied() {
        if (!TakeWord(u"not")) {
            return Compared();
        }
        const Nesting nesting(depth_);
        return Checked(NotNode(Denied()));
    }

    NodePtr Compared() {
        NodePtr left = Joined();
        const auto* const sign =
            std::find_if(kComparisons.begin(), kComparisons.end(),
                         [this](const ComparisonSign& entry) { return Peek().IsSymbol(entry.sign); });
        if (sign == kComparisons.end()) {
            return left;
        }
        Take();
        NodePtr right = Joined();
        return Checked(ComparisonNode(sign->comparison, std::move(left), std::move(right)));
    }

    NodePtr Joined() {
        NodePtr left = Summed();
        while (TakeSymbol(u"&")) {
            NodePtr right = Summed();
            left = Checked(OperatorNode(Join, std::move(left), std::move(right)));
        }
        return left;
    }

    NodePtr Summed() {
        NodePtr left = Multiplied();
        while (Peek().IsSymbol(u"+") || Peek().IsSymbol(u"-")) {
            const BinaryOperator apply = Take().text == u"+" ? Add : Subtract;
            NodePtr right = Multiplied();
            left = Checked(OperatorNode(apply, std::move(left), std::move(right)));
        }
        return left;
    }

    NodePtr Multiplied() {
        NodePtr left = Signed();
        while (Peek().IsSymbol(u"*") || Peek().IsSymbol(u"/")) {
            const BinaryOperator apply = Take().text == u"*" ? Multiply : Divide;
            NodePtr right = Signed();
            left = Checked(OperatorNode(apply, std::move(left), std::move(right)));
        }
        return left;
    }

    NodePtr Signed() {
        const Nesting nesting(depth_);
        if (TakeSymbol(u"-")) {
            return Checked(NegationNode(Signed()));
        }
        return TakeSymbol(u"+") ? Signed() : Operand();
    }

    NodePtr Operand() {
        switch (Peek().kind) {
            case TokenKind::Literal:
                return ConstantNode(Take().value);
            case TokenKind::Braced:
                return Asked(Braced());
            case TokenKind::Word:
                return Named();
            case TokenKind::Symbol:
            case TokenKind::End:
                break;
        }
        if (!TakeSymbol(u"(")) {
            Fail(u"Une valeur est attendue");
        }
        NodePtr inner = Expression();
        ExpectSymbol(u")");
        return inner;
    }

    // Words.

    NodePtr Named() {
        if (TakeWord(u"true")) {
            return ConstantNode(true);
        }
        if (TakeWord(u"false")) {
            return ConstantNode(false);
        }
        if (std::any_of(kReserved.begin(), kReserved.end(),
                        [this](TextView word) { return Peek().IsWord(word); })) {
            Fail(u"Une valeur est attendue");
        }
        const Text name = Take().text;
        if (const auto* const special = FindNamed(kSpecials, name); special != kSpecials.end()) {
            return Asked(special->special);
        }
        if (const auto* const summary = FindNamed(kSummaries, name); summary != kSummaries.end()) {
            return Summary(summary->kind);
        }
        return basic::EqualNoCase(name, u"IIf") ? ShortIf() : Called(name);
    }

    NodePtr ShortIf() {
        ExpectSymbol(u"(");
        NodePtr condition = Expression();
        ExpectSymbol(u",");
        NodePtr whenTrue = Expression();
        ExpectSymbol(u",");
        NodePtr otherwise = Expression();
        ExpectSymbol(u")");
        return Checked(IfNode(std::move(condition), std::move(whenTrue), std::move(otherwise)));
    }

    NodePtr Summary(SummaryKind kind) {
        ExpectSymbol(u"(");
        SummaryReference summary{.kind = kind, .of = {}, .group = {}};
        const Reference of = Braced();
        if (const auto* const field = std::get_if<FieldReference>(&of)) {
            summary.of = *field;
        } else {
            summary.of = std::get<FormulaReference>(of);
        }
        if (TakeSymbol(u",")) {
            const Reference group = Braced();
            if (!std::holds_alternative<FieldReference>(group)) {
                Fail(u"Le nom d'un champ est attendu");
            }
            summary.group = std::get<FieldReference>(group);
        }
        ExpectSymbol(u")");
        return Asked(std::move(summary));
    }

    NodePtr Called(const Text& name) {
        const Function* const function = FindFunction(name);
        if (function == nullptr) {
            FailUnknownFunction(name);
        }
        std::vector<NodePtr> arguments;
        if (TakeSymbol(u"(") && !TakeSymbol(u")")) {
            do {
                arguments.push_back(Expression());
            } while (TakeSymbol(u","));
            ExpectSymbol(u")");
        }
        if (arguments.size() < function->least || arguments.size() > function->most) {
            Fail(u"« " + Text(function->name) + u" » a trop ou trop peu d'arguments");
        }
        return Checked(CallNode(*function, std::move(arguments)));
    }

    // References.

    Reference Braced() {
        if (Peek().kind != TokenKind::Braced) {
            Fail(u"Le nom d'un champ est attendu");
        }
        const TextView name = Peek().text;
        const std::size_t point = name.find(u'.');
        if (name.size() > 1 && name.front() == u'@') {
            return FormulaReference{Text(Take().text.substr(1))};
        }
        if (point == 0 || point == TextView::npos || point + 1 == name.size()) {
            Fail(u"Un champ s'écrit {TABLE.CHAMP}, une formule {@NOM}");
        }
        FieldReference field{Text(name.substr(0, point)), Text(name.substr(point + 1))};
        Take();
        return field;
    }

    NodePtr Asked(Reference reference) {
        references_.push_back(std::move(reference));
        return ReferenceNode(references_.size() - 1);
    }

    TextView text_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int depth_ = 0;
    std::vector<Reference> references_;
};

}  // namespace

ParsedFormula ParseFormula(TextView text) {
    if (text.size() > kLongest) {
        FailTooComplex();
    }
    return Parser(text).Run();
}

}  // namespace quardele::formula
