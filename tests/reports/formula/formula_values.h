// Formulas evaluated with values given by name.
#pragma once

#include <map>
#include <string>

#include <gtest/gtest.h>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <formula/formula.h>

namespace quardele::formula::test {

using basic::Text;
using basic::TextView;

/// Values of fields "T.F" and formulas "@name"; page 2 of 7, record 5; summaries are 42.
class NamedValues : public Values {
 public:
    NamedValues(const Formula& formula, std::map<Text, Variant> values)
        : formula_(formula), values_(std::move(values)) {}

    Variant ValueOf(std::size_t reference) const override {
        const Reference& asked = formula_.References()[reference];
        if (const auto* const field = std::get_if<FieldReference>(&asked)) {
            return values_.at(field->table + u"." + field->field);
        }
        if (const auto* const other = std::get_if<FormulaReference>(&asked)) {
            return values_.at(u"@" + other->name);
        }
        if (const auto* const special = std::get_if<Special>(&asked)) {
            return *special == Special::PageNumber ? 2.0 : *special == Special::TotalPageCount ? 7.0 : 5.0;
        }
        return 42.0;
    }

 private:
    const Formula& formula_;
    std::map<Text, Variant> values_;
};

inline Variant Evaluated(TextView text, std::map<Text, Variant> values = {}) {
    const Formula formula = Formula::Parse(text);
    return formula.Evaluate(NamedValues(formula, std::move(values)));
}

/// The value's text, "Null" for Null, "error 13" for errors.
inline std::string Shown(TextView text, std::map<Text, Variant> values = {}) {
    try {
        const Variant value = Evaluated(text, std::move(values));
        return value.IsNull() ? "Null" : basic::ToUtf8(basic::CStr(value));
    } catch (const basic::RuntimeError& error) {
        return "error " + std::to_string(error.Number());
    }
}

}  // namespace quardele::formula::test
