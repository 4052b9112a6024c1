#include "rows/union_producer.h"

#include <basic/conversion.h>
#include <basic/decimal_arithmetic.h>

#include "expressions/arithmetic.h"
#include "rows/executor.h"
#include "rows/key_table.h"
#include "rows/sort_key.h"

namespace quardele::sql {
namespace {

/// Gives a value the type of its column. Null stays, and so does what that type does not hold; dates and
/// numbers stay what they are beside each other.
void ConvertTo(StaticType type, Variant& value) {
    if (!type || value.IsNull() || value.IsEmpty() || TypeOf(value) == type) {
        return;
    }
    if (ClassOf(type) == TypeClass::Texts) {
        value = value.Is<basic::Binary>() ? value : Variant(basic::CStr(value));
    } else if (!basic::NumberOf(value)) {
        return;
    } else if (type == jet::ColumnType::Long) {
        const auto whole = WholeOf(value);
        value = whole ? Variant(static_cast<std::int32_t>(*whole)) : value;
    } else if (type == jet::ColumnType::Numeric) {
        const auto decimal = basic::ExactDecimal(value);
        value = decimal ? Variant(*decimal) : value;
    } else if (type == jet::ColumnType::Currency) {
        value = basic::CCur(value);
    } else if (type == jet::ColumnType::Double) {
        value = basic::CDbl(value);
    }
}

/// Calls `take` with the values of each row until it returns false.
template <class Take>
bool ForEachRow(const SelectPlan& plan, const RunEnvironment& environment, Take take) {
    const ResultRows rows = Execute(plan, environment);
    const std::size_t width = plan.itemNodes.size();
    std::vector<Variant> values(width);
    RowContext context(plan.tables, environment);
    for (std::size_t row = 0; row < rows.size; ++row) {
        for (std::size_t source = 0; source < rows.keys.size(); ++source) {
            context.SetKey(source, rows.keys[source][row]);
        }
        for (std::size_t i = 0; i < width; ++i) {
            values[i] = plan.IsKeyed() ? plan.itemNodes[i]->Value(context) : rows.values[row * width + i];
        }
        if (!take(values)) {
            return false;
        }
    }
    return true;
}

}  // namespace

UnionProducer::UnionProducer(std::vector<SelectPlan> parts, std::vector<bool> all,
                             std::vector<StaticType> types)
    : parts_(std::move(parts)), types_(std::move(types)) {
    for (std::size_t i = 0; i < all.size(); ++i) {
        distinctParts_ = all[i] ? distinctParts_ : i + 2;
    }
    // Behind the last part whoever takes the rows drops those that came before.
    distinctParts_ = distinctParts_ == parts_.size() ? 0 : distinctParts_;
}

double UnionProducer::Estimate() const {
    double rows = 0;
    for (const SelectPlan& part : parts_) {
        rows += part.plan.rows->Estimate();
    }
    return rows;
}

bool UnionProducer::Produce(RowContext& row, const Emit& emit) const {
    KeyTable seen;
    std::string key;
    for (std::size_t part = 0; part < parts_.size(); ++part) {
        const bool goOn = ForEachRow(parts_[part], row.Environment(), [&](std::vector<Variant>& values) {
            for (std::size_t i = 0; i < values.size(); ++i) {
                ConvertTo(types_[i], values[i]);
            }
            if (part < distinctParts_) {
                key.clear();
                for (const Variant& value : values) {
                    AppendSortKey(key, value);
                }
                if (!seen.Add(key)) {
                    return true;
                }
            }
            row.SetResults(values);
            return emit();
        });
        if (!goOn) {
            return false;
        }
    }
    return true;
}

}  // namespace quardele::sql
