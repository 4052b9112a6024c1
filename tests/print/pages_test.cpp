// Which rows and columns stand on which page.
#include <numeric>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include <print/pages.h>

namespace quardele::print {

namespace {

TEST(Pages, RowsFillThePagesFromTheTop) {
    const auto pages = Paginate({100, 100}, 25, 10, {200, 109});
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0], (Page{{0, 10}, {0, 2}}));
    EXPECT_EQ(pages[1], (Page{{10, 10}, {0, 2}}));
    EXPECT_EQ(pages[2], (Page{{20, 5}, {0, 2}}));
}

TEST(Pages, RowsThatFillTheLastPageLeaveNoBlankOneBehind) {
    EXPECT_EQ(Paginate({100}, 20, 10, {200, 100}).size(), 2U);
}

TEST(Pages, ColumnsThatDoNotFitGoOnTheNextPageBesideTheSameRows) {
    const auto pages = Paginate({60, 40, 50, 70}, 4, 10, {100, 20});
    ASSERT_EQ(pages.size(), 6U);
    EXPECT_EQ(pages[0], (Page{{0, 2}, {0, 2}}));
    EXPECT_EQ(pages[1], (Page{{0, 2}, {2, 1}}));
    EXPECT_EQ(pages[2], (Page{{0, 2}, {3, 1}}));
    EXPECT_EQ(pages[3], (Page{{2, 2}, {0, 2}}));
}

TEST(Pages, AColumnWiderThanThePageHasAPageOfItsOwn) {
    EXPECT_EQ(ColumnGroups({10, 500, 10}, 100), (std::vector<Range>{{0, 1}, {1, 1}, {2, 1}}));
    EXPECT_EQ(FittedWidths({10, 500, 10}, 100), (std::vector<int>{10, 90, 10}));
    EXPECT_EQ(FittedWidths({500, 10}, 100), (std::vector<int>{100, 10}));
}

TEST(Pages, TheFirstColumnIsRepeatedBesideTheColumnsThatDoNotFit) {
    const auto pages = Paginate({30, 40, 50, 20, 60}, 1, 10, {100, 20});
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0], (Page{{0, 1}, {0, 2}, false}));
    EXPECT_EQ(pages[1], (Page{{0, 1}, {2, 2}, true}));
    EXPECT_EQ(pages[2], (Page{{0, 1}, {4, 1}, true}));
}

TEST(Pages, AFirstColumnThatLeavesTheOthersLittleRoomIsNotRepeated) {
    EXPECT_EQ(RepeatedWidth({50, 60}, 100), 50);
    EXPECT_EQ(RepeatedWidth({51, 60}, 100), 0);
    EXPECT_EQ(RepeatedWidth({50, 50}, 100), 0) << "all fit";
    EXPECT_EQ(RepeatedWidth({}, 100), 0);
}

TEST(Pages, ASheetWithoutRowsHasOnePagePerGroupOfColumns) {
    EXPECT_EQ(Paginate({60, 60}, 0, 10, {100, 100}), (std::vector<Page>{{{0, 0}, {0, 1}}, {{0, 0}, {1, 1}}}));
    EXPECT_EQ(Paginate({}, 0, 10, {100, 100}).size(), 1U);
}

TEST(Pages, APageTooLowForARowTakesOneAllTheSame) {
    EXPECT_EQ(Paginate({10}, 3, 50, {100, 20}).size(), 3U);
    EXPECT_EQ(Paginate({10}, 3, 50, {100, -20}).size(), 3U);
}

TEST(Pages, EveryCellStandsOnExactlyOnePage) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 200; ++round) {
        std::vector<int> widths(1 + random() % 20);
        for (int& width : widths) {
            width = 1 + static_cast<int>(random() % 120);
        }
        const int rows = static_cast<int>(random() % 200);
        const Room room{100, static_cast<int>(10 + random() % 300)};
        std::set<std::pair<int, int>> seen;
        for (const Page& page : Paginate(widths, rows, 10, room)) {
            ASSERT_LE(page.rows.count * 10, room.height);
            const auto first = widths.begin() + page.columns.first;
            const int repeated = page.firstColumnToo ? widths.front() : 0;
            ASSERT_TRUE(page.columns.count == 1 ||
                        std::accumulate(first, first + page.columns.count, repeated) <= room.width);
            for (int row = 0; row < page.rows.count; ++row) {
                for (int column = 0; column < page.columns.count; ++column) {
                    ASSERT_TRUE(seen.insert({page.rows.first + row, page.columns.first + column}).second);
                }
            }
        }
        ASSERT_EQ(seen.size(), widths.size() * static_cast<std::size_t>(rows));
    }
}

}  // namespace

}  // namespace quardele::print
