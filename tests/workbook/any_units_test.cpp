// Texts of units that nobody types: a workbook with them is read whole by all readers, and what a reader can
// tell of them it tells rightly.
#include <random>

#include <gtest/gtest.h>

#include "../data/jet/support.h"
#include "modelled_sheet.h"
#include "workbook_readers.h"

namespace quardele::workbook::test {

namespace {

using basic::Text;

constexpr std::size_t kRows = 60;

class AnyUnits : public testing::TestWithParam<std::tuple<const WorkbookReader*, Units>> {};

Text UnitsOf(Units kind, std::mt19937& random) {
    const auto between = [&](unsigned first, unsigned last) {
        return static_cast<char16_t>(first + random() % (last - first + 1));
    };
    switch (kind) {
        case Units::Null:
            return {u'\0'};
        case Units::LineBreaks:
            return {random() % 2 == 0 ? u'\n' : u'\r'};
        case Units::Tabs:
            return {u'\t'};
        case Units::Controls:
            return {between(0x0E, 0x1F)};
        case Units::HighControls:
            return {between(0x80, 0x9F)};
        case Units::Pairs:
            return {between(0xD800, 0xDBFF), between(0xDC00, 0xDFFF)};
        case Units::LoneHalves:
            return {random() % 2 == 0 ? between(0xD800, 0xDBFF) : between(0xDC00, 0xDFFF), u'x'};
        case Units::NoCharacters:
            return {random() % 2 == 0 ? u'\xFFFE' : u'\xFFFF'};
    }
    return {};
}

/// A text with some such units among letters; the second column counts the rows.
ModelledSheet SheetOf(Units kind, unsigned seed) {
    std::mt19937 random(seed);
    ModelledSheet sheet{{{.heading = u"A"}, {.heading = u"N"}}, {}};
    for (std::size_t row = 0; row < kRows; ++row) {
        Text text = u"a";
        for (std::size_t piece = 0; piece < 1 + random() % 4; ++piece) {
            text += UnitsOf(kind, random);
            text += u'é';
        }
        const std::string number = std::to_string(row);
        sheet.rows.push_back({text, Text(number.begin(), number.end())});
    }
    return sheet;
}

TEST_P(AnyUnits, AreReadWhereTheReaderKnowsThemAndHarmNothingWhereNot) {
    const auto& [reader, kind] = GetParam();
    if (!reader->IsHere()) {
        GTEST_SKIP() << reader->Name() << " is not installed";
    }
    if (reader->Tells(kind) == Told::NotAtAll) {
        GTEST_SKIP() << reader->Name() << " cannot read such texts";
    }
    const unsigned seed = 20261121;
    SCOPED_TRACE("seed " + std::to_string(seed));
    const ModelledSheet sheet = SheetOf(kind, seed);
    const jet::test::TempFolder folder;
    const auto file = folder.Path() / "liste.xls";
    const std::string bytes = sheet.File();
    jet::test::WriteBytes(file, {bytes.begin(), bytes.end()});
    const SheetInWords wanted = reader->AsItTells(sheet.InWords());
    const SheetInWords read = reader->Read(file, folder.Path());
    ASSERT_EQ(read.size(), wanted.size());
    for (std::size_t row = 0; row < wanted.size(); ++row) {
        ASSERT_EQ(read[row].size(), 2U) << "row " << row;
        ASSERT_EQ(read[row][1], wanted[row][1]) << "row " << row;
        if (reader->Tells(kind) == Told::Rightly) {
            ASSERT_EQ(read[row][0], wanted[row][0]) << "row " << row;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(By, AnyUnits,
                         testing::Combine(testing::ValuesIn(WorkbookReaders()),
                                          testing::Values(Units::Null, Units::LineBreaks, Units::Tabs,
                                                          Units::Controls, Units::HighControls, Units::Pairs,
                                                          Units::LoneHalves, Units::NoCharacters)));

}  // namespace

}  // namespace quardele::workbook::test
