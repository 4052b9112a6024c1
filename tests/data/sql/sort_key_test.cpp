#include "rows/sort_key.h"

#include <basic/date.h>

#include "sql_fixture.h"

namespace quardele::sql {
namespace {

std::string KeyOf(const Variant& value, bool descending = false) {
    std::string key;
    AppendSortKey(key, value, descending);
    return key;
}

TEST(SortKeyTest, ValuesComeInTheirOrder) {
    const std::vector<Variant> ascending = {basic::Null(),
                                            -1e300,
                                            std::int32_t{-7},
                                            true,
                                            -0.5,
                                            std::int16_t{0},
                                            1e-10,
                                            1.5,
                                            std::int32_t{2},
                                            basic::DateOf(2026, 12, 31),
                                            1e300,
                                            Text(),
                                            u"a",
                                            u"a-b",
                                            u"b",
                                            u"é",
                                            u"f"};
    for (std::size_t i = 0; i + 1 < ascending.size(); ++i) {
        EXPECT_LT(KeyOf(ascending[i]), KeyOf(ascending[i + 1])) << i;
        EXPECT_GT(KeyOf(ascending[i], true), KeyOf(ascending[i + 1], true)) << i;
    }
}

TEST(SortKeyTest, EqualValuesHaveEqualKeysWhateverTheirType) {
    EXPECT_EQ(KeyOf(true), KeyOf(std::int32_t{-1}));
    EXPECT_EQ(KeyOf(0.0), KeyOf(-0.0));
    EXPECT_EQ(KeyOf(2.5), KeyOf(basic::Currency{25000}));
    EXPECT_EQ(KeyOf(u"ABC"), KeyOf(u"abc  "));
}

TEST(SortKeyTest, KeysOfSeveralValuesCompareValueByValue) {
    const auto pair = [](TextView first, TextView second, bool descending) {
        std::string key = KeyOf(first, descending);
        AppendSortKey(key, second);
        return key;
    };
    EXPECT_LT(pair(u"a", u"z", false), pair(u"ab", u"a", false));
    EXPECT_GT(pair(u"a", u"z", true), pair(u"ab", u"a", true));
    EXPECT_LT(pair(u"a", u"a", true), pair(u"A", u"b", true));
}

TEST(SortKeyTest, BinaryDataMayHoldZeros) {
    EXPECT_LT(KeyOf(basic::Binary{1}), KeyOf(basic::Binary{1, 0}));
    EXPECT_LT(KeyOf(basic::Binary{1, 0, 5}), KeyOf(basic::Binary{1, 1}));
    EXPECT_LT(KeyOf(basic::Binary{}), KeyOf(basic::Binary{0}));
}

}  // namespace
}  // namespace quardele::sql
