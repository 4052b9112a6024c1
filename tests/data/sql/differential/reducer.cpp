#include "reducer.h"

namespace quardele::sql::differential {

namespace {

using Selects = std::vector<Select>;
using Expressions = std::vector<Expression>;

/// The expression with one part less somewhere: a part in the place of the whole, or of a part of it.
Expressions SmallerThan(const Expression& expression) {
    Expressions smaller;
    for (std::size_t i = 0; i < expression.parts.size(); ++i) {
        const Expression& part = expression.parts[i];
        if (part.kind == expression.kind) {
            smaller.push_back(part);
        }
        for (Expression& other : SmallerThan(part)) {
            smaller.push_back(expression);
            smaller.back().parts[i] = std::move(other);
        }
    }
    return smaller;
}

void ShrinkCondition(const Select& select, std::optional<Expression> Select::*condition, Selects& smaller) {
    if (!(select.*condition)) {
        return;
    }
    smaller.push_back(select);
    (smaller.back().*condition).reset();
    for (Expression& other : SmallerThan(*(select.*condition))) {
        smaller.push_back(select);
        smaller.back().*condition = std::move(other);
    }
}

void ShrinkItems(const Select& select, Selects& smaller) {
    for (std::size_t item = 0; item < select.items.size(); ++item) {
        for (Expression& other : SmallerThan(select.items[item])) {
            smaller.push_back(select);
            smaller.back().items[item] = std::move(other);
        }
    }
    // Orders and unions count on all items.
    if (select.order.empty() && select.united == nullptr && select.items.size() > 1) {
        for (std::size_t item = 0; item < select.items.size(); ++item) {
            smaller.push_back(select);
            smaller.back().items.erase(smaller.back().items.begin() + static_cast<std::ptrdiff_t>(item));
        }
    }
}

void DropOrder(Select& select) {
    select.order.clear();
    select.ownOrder = false;
    select.top = 0;
}

void ShrinkClauses(const Select& select, Selects& smaller) {
    if (select.united != nullptr) {
        smaller.push_back(select);
        smaller.back().united.reset();
        smaller.push_back(*select.united);
    }
    if (!select.order.empty()) {
        smaller.push_back(select);
        smaller.back().order.pop_back();
        if (select.ownOrder || smaller.back().order.empty()) {
            DropOrder(smaller.back());
        }
    }
    if (select.top > 0) {
        smaller.push_back(select);
        smaller.back().top = 0;
    }
    if (select.from.size() > 1) {
        smaller.push_back(select);
        smaller.back().from.pop_back();
    }
    if (!select.from.front().join.empty()) {
        for (const From& part : select.from.front().parts) {
            smaller.push_back(select);
            smaller.back().from.front() = part;
        }
    }
    if (select.distinct) {
        smaller.push_back(select);
        smaller.back().distinct = false;
        if (select.ownOrder) {
            DropOrder(smaller.back());
        }
    }
}

Selects SmallerThan(const Select& select) {
    Selects smaller;
    ShrinkClauses(select, smaller);
    ShrinkCondition(select, &Select::where, smaller);
    ShrinkCondition(select, &Select::having, smaller);
    ShrinkItems(select, smaller);
    return smaller;
}

}  // namespace

Select Reduced(Select select, const std::function<bool(const Select&)>& fails) {
    bool again = true;
    while (again) {
        again = false;
        for (Select& smaller : SmallerThan(select)) {
            if (fails(smaller)) {
                select = std::move(smaller);
                again = true;
                break;
            }
        }
    }
    return select;
}

}  // namespace quardele::sql::differential
