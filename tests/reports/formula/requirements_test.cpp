// What a selection formula asks of every record.
#include "formula_values.h"

namespace quardele::formula {
namespace {

std::string Requirements(TextView text) {
    const Formula formula = Formula::Parse(text);
    std::string result;
    for (const Requirement& requirement : formula.Requirements()) {
        const auto& field = std::get<FieldReference>(formula.References()[requirement.reference]);
        result += basic::ToUtf8(field.table + u"." + field.field) + ' ' +
                  std::to_string(static_cast<int>(requirement.comparison)) + ' ' +
                  basic::ToUtf8(basic::CStr(requirement.value)) + ';';
    }
    return result;
}

TEST(Requirements, AnEqualityIsOne) {
    EXPECT_EQ(Requirements(u"{TVEH.TVEH_IMMAT}='AB-123-CD'"), "TVEH.TVEH_IMMAT 0 AB-123-CD;");
    EXPECT_EQ(Requirements(u"('x' = {T.F})"), "T.F 0 x;");
}

TEST(Requirements, ComparisonsTurnWithTheirSides) {
    EXPECT_EQ(Requirements(u"{T.F} < 3 and 4 <= {T.G}"), "T.F 2 3;T.G 5 4;");
}

TEST(Requirements, OnlyWhatIsJoinedByAndAtTheTopIsCertain) {
    EXPECT_EQ(Requirements(u"{T.F} = 1 and ({T.G} = 2 or {T.H} = 3)"), "T.F 0 1;");
    EXPECT_EQ(Requirements(u"not ({T.F} = 1)"), "");
    EXPECT_EQ(Requirements(u"if true then {T.F} = 1"), "");
    EXPECT_EQ(Requirements(u"UCase({T.F}) = 'A'"), "");
    EXPECT_EQ(Requirements(u"{T.F} = {T.G} and {@A} = 1 and PageNumber = 2"), "");
}

}  // namespace
}  // namespace quardele::formula
