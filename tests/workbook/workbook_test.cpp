// What five programs that others wrote read in the workbooks that we write.
#include <random>

#include <gtest/gtest.h>

#include <basic/date.h>
#include <basic/runtime_error.h>

#include "../data/jet/support.h"
#include "modelled_sheet.h"
#include "workbook_readers.h"

namespace quardele::workbook::test {

namespace {

using basic::DateOf;
using basic::Text;

Cell T(basic::TextView text) {
    return Text(text);
}

class ReadBack : public testing::TestWithParam<const WorkbookReader*> {
 protected:
    void SetUp() override {
        if (!GetParam()->IsHere()) {
            GTEST_SKIP() << GetParam()->Name() << " is not installed";
        }
    }
    void ExpectSameCells(const ModelledSheet& sheet) const {
        const jet::test::TempFolder folder;
        const auto file = folder.Path() / "liste.xls";
        const std::string bytes = sheet.File();
        jet::test::WriteBytes(file, {bytes.begin(), bytes.end()});
        const SheetInWords wanted = GetParam()->AsItTells(sheet.InWords());
        const SheetInWords read = GetParam()->Read(file, folder.Path());
        ASSERT_EQ(read.size(), wanted.size());
        for (std::size_t row = 0; row < wanted.size(); ++row) {
            ASSERT_EQ(read[row], wanted[row]) << "row " << row;
        }
    }
};

TEST_P(ReadBack, TextsStayTextsWhateverTheyLookLike) {
    ExpectSameCells({{{.heading = u"Immatriculation"}, {.heading = u"Code postal"}, {.heading = u"Note"}},
                     {{T(u"1E5"), T(u"01000"), T(u"=A1+1")},
                      {T(u"12/03"), T(u"2A004"), T(u"'citation'")},
                      {T(u"VRAI"), T(u"1,5"), T(u"\"guillemets\", virgule; point-virgule")},
                      {T(u"+33"), T(u"-"), T(u"#N/A")}}});
}

TEST_P(ReadBack, NumbersStayExact) {
    ExpectSameCells({{{.heading = u"Km"}, {.heading = u"Prix"}},
                     {{0.0, 0.5},
                      {120000.0, 1.01},
                      {-1.0, -99.99},
                      {536870911.0, 536870912.0},
                      {-536870912.0, 1e15},
                      {0.125, 12345.6789},
                      {5368709.11, 5368709.12}}});
}

TEST_P(ReadBack, DatesAreDates) {
    if (!GetParam()->KnowsMoments()) {
        GTEST_SKIP() << GetParam()->Name() << " shows dates as numbers";
    }
    ExpectSameCells({{{.heading = u"Dernière visite"}},
                     {{DateOf(2020, 12, 31)},
                      {DateOf(2100, 1, 1)},
                      {DateOf(1900, 3, 1)},
                      {DateOf(1999, 12, 31, 23, 59, 59)},
                      {DateOf(2000, 2, 29, 6, 0, 0)}}});
}

TEST_P(ReadBack, LettersOfAllAlphabetsAndEmptyCells) {
    ExpectSameCells({{{.heading = u"Libellé"}, {.heading = u"Vide"}, {.heading = u"Suite"}},
                     {{T(u"Contrôle technique à l'échéance"), Cell(), T(u"œuf, 5 €")},
                      {Cell(), Cell(), Cell()},
                      {T(u"ÿþ"), T(u""), T(u"ÀÉÈÙÇ «»")}}});
    if (GetParam()->KnowsAllLetters()) {
        ExpectSameCells({{{.heading = u"Libellé"}, {.heading = u"Vide"}, {.heading = u"Suite"}},
                         {{T(u"Ελληνικά"), T(u""), T(u"Кириллица")}, {T(u"日本語"), Cell(), T(u"Ā")}}});
    }
}

/// Texts of all lengths around the places where the table of texts goes on in another record, in one byte and
/// two bytes per letter.
TEST_P(ReadBack, LongTablesOfTextsGoOnInFurtherRecords) {
    ModelledSheet sheet{{{.heading = u"A"}, {.heading = u"B"}}, {}};
    std::mt19937 random(20261121);
    for (int row = 0; row < 1200; ++row) {
        Text narrow(1 + random() % 60, u'é');
        Text wide(1 + random() % 60, u'€');
        const std::string number = std::to_string(row);
        narrow.append(number.begin(), number.end());
        wide.append(number.begin(), number.end());
        sheet.rows.push_back({narrow, wide});
    }
    ExpectSameCells(sheet);
}

TEST_P(ReadBack, TextsLongerThanARecord) {
    ExpectSameCells({{{.heading = u"Note"}}, {{Text(8220, u'a')}, {Text(9000, u'é')}, {Text(4500, u'€')}}});
    if (GetParam()->KnowsLongTexts()) {
        ExpectSameCells(
            {{{.heading = u"Note"}}, {{Text(20000, u'é')}, {Text(20000, u'€')}, {Text(32767, u'x')}}});
    }
}

TEST_P(ReadBack, TextsByChance) {
    ModelledSheet sheet{{{.heading = u"A"}, {.heading = u"B"}, {.heading = u"C"}}, {}};
    std::mt19937 random(4242);
    const unsigned kinds = GetParam()->KnowsAllLetters() ? 5 : 2;
    const auto letter = [&random, kinds]() -> char16_t {
        switch (random() % kinds) {
            case 0:
                return static_cast<char16_t>(0xC0 + random() % 0x40);
            case 2:
                return static_cast<char16_t>(0x100 + random() % 0x100);
            case 3:
                return static_cast<char16_t>(0x4E00 + random() % 0x1000);
            default:
                return static_cast<char16_t>('!' + random() % 90);
        }
    };
    for (int row = 0; row < 500; ++row) {
        std::vector<Cell> cells;
        for (int column = 0; column < 3; ++column) {
            Text text(random() % 40, u' ');
            for (char16_t& unit : text) {
                unit = letter();
            }
            cells.emplace_back(text);
        }
        sheet.rows.push_back(std::move(cells));
    }
    ExpectSameCells(sheet);
}

/// More sectors than the header of the file can list.
TEST_P(ReadBack, FilesOfManyMegabytes) {
    ModelledSheet sheet{{{.heading = u"Note"}}, {}};
    for (int row = 0; row < 1100; ++row) {
        Text text(3500, static_cast<char16_t>(0xE0 + row % 32));
        text += static_cast<char16_t>(u'€');
        text += static_cast<char16_t>(u'A' + row / 32);
        sheet.rows.push_back({text});
    }
    ASSERT_GT(sheet.File().size(), 109U * 128 * 512);
    ExpectSameCells(sheet);
}

TEST_P(ReadBack, AFullSheet) {
    ModelledSheet sheet{{{.heading = u"N"}}, {}};
    for (std::size_t row = 1; row < Workbook::kMaxRows; ++row) {
        sheet.rows.push_back({static_cast<double>(row)});
    }
    ExpectSameCells(sheet);
}

TEST_P(ReadBack, HeadingsAlone) {
    ExpectSameCells({{{.heading = u"Immatriculation", .width = 20}, {.heading = u"Client"}}, {}});
}

std::string ReaderName(const testing::TestParamInfo<const WorkbookReader*>& info) {
    std::string name;
    for (const char letter : info.param->Name()) {
        name += std::isalnum(static_cast<unsigned char>(letter)) != 0 ? std::string(1, letter) : "";
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(By, ReadBack, testing::ValuesIn(WorkbookReaders()), ReaderName);

TEST(Workbook, RefusesARowTooMany) {
    Workbook workbook(u"Feuille1", {{.heading = u"N"}});
    const std::vector<Cell> row{1.0};
    for (std::size_t i = 1; i < Workbook::kMaxRows; ++i) {
        workbook.AddRow(row);
    }
    EXPECT_EQ(jet::test::ErrorNumber([&] { workbook.AddRow(row); }), basic::error::kOverflow);
    EXPECT_EQ(workbook.RowCount(), Workbook::kMaxRows - 1);
}

TEST(Workbook, RefusesARowWiderThanTheHeadings) {
    Workbook workbook(u"Feuille1", {{.heading = u"N"}});
    const std::vector<Cell> row{1.0, 2.0};
    EXPECT_EQ(jet::test::ErrorNumber([&] { workbook.AddRow(row); }), basic::error::kInvalidCall);
    EXPECT_EQ(workbook.RowCount(), 0U);
}

TEST(Workbook, RefusesNamesThatExcelRefuses) {
    for (const char16_t* name : {u"", u"a/b", u"[a]", u"a:b", u"abcdefghijklmnopqrstuvwxyz012345"}) {
        EXPECT_EQ(jet::test::ErrorNumber([&] { const Workbook workbook(name, {}); }),
                  basic::error::kInvalidCall);
    }
}

TEST(Workbook, RefusesMoreColumnsThanExcelHas) {
    EXPECT_EQ(jet::test::ErrorNumber([] { const Workbook workbook(u"F", std::vector<Column>(257)); }),
              basic::error::kInvalidCall);
}

TEST(Workbook, TheSameCellsMakeTheSameFile) {
    const ModelledSheet sheet{{{.heading = u"A", .width = 12.5}}, {{T(u"x")}, {1.5}, {DateOf(2026, 1, 2)}}};
    EXPECT_EQ(sheet.File(), sheet.File());
}

TEST(Workbook, CutsTextsThatExcelCannotHoldWithASignOfIt) {
    if (!WorkbookReaders().front()->IsHere()) {
        GTEST_SKIP() << "xlrd is not installed";
    }
    const jet::test::TempFolder folder;
    const ModelledSheet sheet{{{.heading = u"A"}}, {{Text(40000, u'x')}}};
    const std::string bytes = sheet.File();
    jet::test::WriteBytes(folder.Path() / "liste.xls", {bytes.begin(), bytes.end()});
    const SheetInWords read = WorkbookReaders().front()->Read(folder.Path() / "liste.xls", folder.Path());
    EXPECT_EQ(read.at(1).at(0), "s:" + std::string(32766, 'x') + "…");
}

TEST(Workbook, CutsNoPairOfUnitsApart) {
    if (!WorkbookReaders().front()->IsHere()) {
        GTEST_SKIP() << "xlrd is not installed";
    }
    const jet::test::TempFolder folder;
    const Text car = u"\U0001F697";
    const ModelledSheet sheet{{{.heading = u"A"}},
                              {{Text(32765, u'x') + car + Text(9, u'y')}, {Text(32764, u'x') + car + u"yz"}}};
    const std::string bytes = sheet.File();
    jet::test::WriteBytes(folder.Path() / "liste.xls", {bytes.begin(), bytes.end()});
    const SheetInWords read = WorkbookReaders().front()->Read(folder.Path() / "liste.xls", folder.Path());
    EXPECT_EQ(read.at(1).at(0), "s:" + std::string(32765, 'x') + "…");
    EXPECT_EQ(read.at(2).at(0), "s:" + std::string(32764, 'x') + "\U0001F697…");
}

/// A text of units by chance, halves of pairs without the other half among them, and what readers must see of
/// it: U+FFFD in their place.
struct RoughText {
    Text written;
    Text read;

    void Add(basic::TextView units, basic::TextView seen) {
        written += units;
        read += seen;
    }
};

RoughText RoughTextByChance(std::mt19937& random) {
    RoughText text;
    const std::size_t letters = random() % 50 == 0 ? random() % 9000 : random() % 30;
    bool afterOpening = false;
    for (std::size_t i = 0; i < letters; ++i) {
        const auto unit = [&random](unsigned first, unsigned count) {
            return Text(1, static_cast<char16_t>(first + random() % count));
        };
        const auto kind = random() % 6;
        if (kind == 0) {
            text.Add(unit(0xD800, 0x400), u"\xFFFD");
        } else if (kind == 1 && !afterOpening) {
            text.Add(unit(0xDC00, 0x400), u"\xFFFD");
        } else if (kind == 2) {
            const Text pair = unit(0xD83D, 1) + unit(0xDE00, 0x40);
            text.Add(pair, pair);
        } else {
            const Text plain = kind == 3 ? unit(0x4E00, 0x1000) : unit(u'!', 90);
            text.Add(plain, plain);
        }
        afterOpening = kind == 0;
    }
    return text;
}

/// Many of them reach over the ends of records, where a pair must stay whole.
TEST(Workbook, HalvesOfPairsBreakNoFile) {
    if (!WorkbookReaders().front()->IsHere()) {
        GTEST_SKIP() << "xlrd is not installed";
    }
    const jet::test::TempFolder folder;
    for (const unsigned seed : {1U, 2U, 3U, 4U, 5U}) {
        std::mt19937 random(seed);
        ModelledSheet written{{{.heading = u"A"}, {.heading = u"B"}}, {}};
        ModelledSheet wanted = written;
        for (int row = 0; row < 800; ++row) {
            const RoughText first = RoughTextByChance(random);
            const RoughText second = RoughTextByChance(random);
            written.rows.push_back({first.written, second.written});
            wanted.rows.push_back({first.read, second.read});
        }
        const std::string bytes = written.File();
        jet::test::WriteBytes(folder.Path() / "liste.xls", {bytes.begin(), bytes.end()});
        SheetInWords words = wanted.InWords();
        while (words.back().empty()) {
            words.pop_back();
        }
        ASSERT_EQ(WorkbookReaders().front()->Read(folder.Path() / "liste.xls", folder.Path()), words)
            << "seed " << seed;
    }
}

TEST(Workbook, ExcelKnowsOddDatesInItsOwnWay) {
    if (!WorkbookReaders().front()->IsHere()) {
        GTEST_SKIP() << "xlrd is not installed";
    }
    const jet::test::TempFolder folder;
    const ModelledSheet sheet{
        {{.heading = u"A"}},
        {{DateOf(1899, 12, 31)}, {DateOf(1776, 7, 4, 12, 30, 0)}, {std::numeric_limits<double>::infinity()}}};
    const std::string bytes = sheet.File();
    jet::test::WriteBytes(folder.Path() / "liste.xls", {bytes.begin(), bytes.end()});
    const SheetInWords read = WorkbookReaders().front()->Read(folder.Path() / "liste.xls", folder.Path());
    EXPECT_EQ(read.at(1).at(0), "s:31/12/1899");
    EXPECT_EQ(read.at(2).at(0), "s:04/07/1776 12:30:00");
    EXPECT_EQ(read.at(3).at(0), "?:36");
}

}  // namespace

}  // namespace quardele::workbook::test
