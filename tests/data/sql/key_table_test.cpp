#include "rows/key_table.h"

#include <gtest/gtest.h>

namespace quardele::sql {
namespace {

TEST(KeyTableTest, KeysAreNumberedInTheOrderOfTheirArrival) {
    KeyTable table;
    for (std::uint32_t i = 0; i < 5000; ++i) {
        EXPECT_EQ(table.Insert(std::to_string(i)), i);
    }
    for (std::uint32_t i = 0; i < 5000; ++i) {
        EXPECT_EQ(table.Insert(std::to_string(i)), i);
        EXPECT_EQ(table.Find(std::to_string(i)), i);
        EXPECT_EQ(table.KeyOf(i), std::to_string(i));
    }
    EXPECT_EQ(table.Size(), 5000U);
    EXPECT_FALSE(table.Find("x"));
}

TEST(KeyTableTest, TheEmptyKeyIsAKey) {
    KeyTable table;
    EXPECT_FALSE(table.Find(""));
    EXPECT_EQ(table.Insert(""), 0U);
    EXPECT_EQ(table.Find(""), 0U);
}

TEST(KeyedRowsTest, RowsOfAKeyComeInTheOrderInWhichTheyWereAdded) {
    KeyedRows rows;
    for (std::uint32_t row = 0; row < 100; ++row) {
        rows.Add(row % 3 == 0 ? "three" : "other", row);
    }
    std::uint32_t expected = 0;
    for (std::uint32_t entry = rows.First("three"); entry != KeyedRows::kEnd; entry = rows.Next(entry)) {
        EXPECT_EQ(rows.Row(entry), expected);
        expected += 3;
    }
    EXPECT_EQ(expected, 102U);
    EXPECT_EQ(rows.First("none"), KeyedRows::kEnd);
}

}  // namespace
}  // namespace quardele::sql
