// Formulas of reports of any text. What can be read can be evaluated, whatever the fields hold.
#include <array>
#include <stdexcept>
#include <string_view>

#include <formula/formula.h>

#include "harness.h"

namespace quardele::fuzz {

namespace {

/// Longer texts find nothing that shorter ones do not.
constexpr std::size_t kLongest = 2000;

/// Gives one value after the other, beginning with a chosen one.
class AnyValues : public formula::Values {
 public:
    explicit AnyValues(std::size_t first) : first_(first) {}

    basic::Variant ValueOf(std::size_t reference) const override {
        static const std::array<basic::Variant, 6> values = {
            basic::Variant(u"AB-123-CD"),  basic::Variant(-12.5), basic::Variant(basic::Date{46347.25}),
            basic::Variant(basic::Null()), basic::Variant(true),  basic::Variant(std::int32_t{2147483647})};
        return values[(first_ + reference) % values.size()];
    }

 private:
    std::size_t first_;
};

void CheckRequirements(const formula::Formula& formula) {
    for (const formula::Requirement& requirement : formula.Requirements()) {
        if (requirement.reference >= formula.References().size()) {
            throw std::logic_error("a condition on nothing");
        }
    }
}

}  // namespace

// UTF-8.
void Use(BytesView input) {
    const BytesView start = input.first(std::min(input.size(), kLongest));
    const basic::Text text = basic::FromUtf8(std::string(start.begin(), start.end()));
    Attempt([&] {
        const formula::Formula formula = formula::Formula::Parse(text);
        CheckRequirements(formula);
        for (std::size_t first = 0; first < 6; ++first) {
            Attempt([&] { static_cast<void>(formula::IsTrue(formula.Evaluate(AnyValues(first)))); });
        }
    });
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    for (const std::string_view text :
         {"{TVEH.TVEH_IMMAT}='AB-123-CD' and {TVEH.TVEH_KM} >= 10.5 or not IsNull({@LIBUSER3})",
          "if {T.F} > #2026-12-31 08:30# then 'a' & \"b''c\" else IIf({T.G} < 1, -2 * (3 + 4) / 5, Null1)",
          "Left(Trim({T.F}), 2) + Mid('abc', 2, 1) & ToText(1234.5, '#,##0.00') // fin\n& PageNumber",
          "Sum({T.F}, {T.G}) - Average({@A}) + RecordNumber / TotalPageCount",
          "DateAdd('m', 6, CDate('31/12/2026')) - Date(2026, 1, 31) <> Round(Abs(-2.345), 2)",
          "ReplicateString(Space(3), 4) <= Replace('a-b', '-', Chr(65)) and true or false"}) {
        seeds.emplace_back(text.begin(), text.end());
    }
    return seeds;
}

}  // namespace quardele::fuzz
