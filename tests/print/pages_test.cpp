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

TEST(Pages, RoomThatIsLeftGoesToTheColumnsThatLackTheLeast) {
    EXPECT_EQ(WidenedWidths({20, 20, 20}, {20, 60, 30}, 80), (std::vector<int>{20, 30, 30}));
    EXPECT_EQ(WidenedWidths({20, 20, 20}, {20, 60, 30}, 200), (std::vector<int>{20, 60, 30}));
    EXPECT_EQ(WidenedWidths({20, 20}, {10, 0}, 80), (std::vector<int>{20, 20})) << "nothing wanted";
    EXPECT_EQ(WidenedWidths({}, {}, 80), std::vector<int>());
}

TEST(Pages, EveryPageGivesTheRoomThatItHasLeft) {
    EXPECT_EQ(WidenedWidths({60, 30, 40}, {60, 80, 90}, 100), (std::vector<int>{60, 40, 90}));
    // The first column stands beside the third once more.
    EXPECT_EQ(WidenedWidths({30, 60, 50}, {30, 80, 90}, 100), (std::vector<int>{30, 70, 70}));
}

TEST(Pages, AColumnMovesToTheNextPageWhereThatHasRoomForIt) {
    EXPECT_EQ(WidenedWidths({40, 40, 20, 20}, {40, 60, 20, 20}, 100), (std::vector<int>{40, 60, 20, 20}));
    EXPECT_EQ(WidenedWidths({40, 40, 20, 60}, {40, 60, 20, 60}, 100), (std::vector<int>{40, 40, 20, 60}))
        << "it has none";
}

TEST(Pages, ARepeatedColumnTakesWhatAllItsPagesHaveLeft) {
    EXPECT_EQ(WidenedWidths({30, 60, 65}, {90, 80, 65}, 100), (std::vector<int>{35, 65, 65}));
    EXPECT_EQ(WidenedWidths({30, 20, 60, 60}, {90, 20, 60, 60}, 100), (std::vector<int>{40, 20, 60, 60}));
}

TEST(Pages, ARepeatedColumnThatTakesMoreIsRepeatedStill) {
    const std::vector<int> widths = WidenedWidths({30, 30, 45, 45}, {90, 30, 45, 45}, 100);
    EXPECT_EQ(widths, (std::vector<int>{50, 30, 45, 45}));
    EXPECT_EQ(RepeatedWidth(widths, 100), 50);
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

TEST(Pages, WideningMakesNoMorePages) {
    std::mt19937 random(20261121);
    const auto someWidths = [&](std::size_t count) {
        std::vector<int> widths(count);
        for (int& width : widths) {
            width = 1 + static_cast<int>(random() % 60);
        }
        return widths;
    };
    constexpr int kRoom = 100;
    for (int round = 0; round < 2000; ++round) {
        const std::vector<int> narrow = FittedWidths(someWidths(1 + random() % 12), kRoom);
        const std::vector<int> wanted = someWidths(narrow.size());
        const std::vector<int> wide = WidenedWidths(narrow, wanted, kRoom);
        for (std::size_t column = 0; column < narrow.size(); ++column) {
            ASSERT_GE(wide[column], narrow[column]);
            ASSERT_LE(wide[column], std::max(narrow[column], wanted[column]));
        }
        const auto groups = ColumnGroups(wide, kRoom);
        ASSERT_EQ(groups.size(), ColumnGroups(narrow, kRoom).size());
        for (const Range& group : groups) {
            const auto first = wide.begin() + group.first;
            const int repeated = group.first > 0 ? RepeatedWidth(wide, kRoom) : 0;
            ASSERT_LE(std::accumulate(first, first + group.count, repeated), kRoom);
        }
        ASSERT_EQ(RepeatedWidth(wide, kRoom) > 0, RepeatedWidth(narrow, kRoom) > 0);
    }
}

}  // namespace

}  // namespace quardele::print
