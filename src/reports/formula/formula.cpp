#include <formula/formula.h>

#include <utility>

#include "parser.h"

namespace quardele::formula {

Formula::Formula(std::shared_ptr<const Node> root, std::vector<Reference> references)
    : root_(std::move(root)), references_(std::move(references)) {}

Formula Formula::Parse(TextView text) {
    ParsedFormula parsed = ParseFormula(text);
    return {std::move(parsed.root), std::move(parsed.references)};
}

Variant Formula::Evaluate(const Values& values) const {
    return root_->Evaluate(values);
}

int Formula::Depth() const {
    return root_->Depth();
}

std::vector<Requirement> Formula::Requirements() const {
    std::vector<Requirement> all;
    root_->Require(all);
    std::erase_if(all, [this](const Requirement& requirement) {
        return !std::holds_alternative<FieldReference>(references_[requirement.reference]);
    });
    return all;
}

}  // namespace quardele::formula
