// All cells of a row at once say what its columns say one by one.

#include <jet/row_cells.h>

#include "support.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using Kind = Cell::Kind;

/// What a cell says, in the way of Row::Value; of Memo and Other, what the row says.
Variant ValueOf(const Cell& cell, const Row& row, int column, ColumnType type) {
    switch (cell.kind) {
        case Kind::Null:
            return basic::Null{};
        case Kind::Truth:
            return cell.whole != 0;
        case Kind::Whole:
            return type == ColumnType::Byte      ? Variant(static_cast<std::uint8_t>(cell.whole))
                   : type == ColumnType::Integer ? Variant(static_cast<std::int16_t>(cell.whole))
                                                 : Variant(cell.whole);
        case Kind::Number:
            return cell.number;
        case Kind::Date:
            return basic::Date{cell.number};
        case Kind::Utf8:
            return basic::FromUtf8(std::string(cell.text));
        case Kind::Memo: {
            std::string text;
            EXPECT_TRUE(row.AppendUtf8At(column, text));
            return basic::FromUtf8(text);
        }
        case Kind::Other:
            return row.Value(column);
    }
    return {};
}

/// Returns the number of cells that are none of Other.
int CompareRows(const Table& table) {
    RowCells reader(table);
    RowScan scan = table.Scan();
    int own = 0;
    while (const auto row = scan.Next()) {
        const auto cells = reader.Of(*row);
        EXPECT_EQ(cells.size(), table.Columns().size());
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const auto column = static_cast<int>(i);
            const Variant value = ValueOf(cells[i], *row, column, table.Columns()[i].type);
            EXPECT_TRUE(value.Stored() == row->Value(column).Stored())
                << basic::ToUtf8(table.Name()) << ", column " << i << ", page " << row->Id().page;
            own += cells[i].kind == Kind::Other ? 0 : 1;
        }
    }
    return own;
}

int CompareFile(const fs::path& file) {
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    int own = 0;
    for (const CatalogEntry& entry : database->Catalog()) {
        own += entry.linked ? 0 : CompareRows(*database->OpenTable(entry.name));
    }
    return own;
}

TEST(RowCells, SayOfRealFilesWhatTheirValuesSay) {
    SKIP_WITHOUT_CORPUS();
    int own = 0;
    for (const fs::path& file : CorpusFiles()) {
        if (file.filename() != "password.mdb") {
            own += CompareFile(file);
        }
    }
    EXPECT_GT(own, 50'000);
}

TEST(RowCells, SayOfAnInstallationWhatItsValuesSay) {
    for (const fs::path& file : SampleFiles()) {
        EXPECT_GT(CompareFile(file), 0) << file;
    }
}

class MadeRowCells : public testing::Test {
 protected:
    MadeRowCells() : database_(Database::Create(folder_.Path() / "made.mdb")) {
        std::vector<Column> columns;
        for (const ColumnType type : {ColumnType::Text, ColumnType::Text, ColumnType::Long, ColumnType::Date,
                                      ColumnType::Boolean, ColumnType::Memo, ColumnType::Currency}) {
            Column column;
            column.name = u"c" + basic::FromUtf8(std::to_string(columns.size()));
            column.type = type;
            column.size = type == ColumnType::Text ? 100 : 0;
            columns.push_back(column);
        }
        database_->CreateTable({.name = u"T", .columns = columns, .indexes = {}});
        table_ = database_->OpenTable(u"T");
    }
    void Add(const std::vector<ColumnChange>& values) { static_cast<void>(table_->Insert(values)); }

    TempFolder folder_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> table_;
};

TEST_F(MadeRowCells, ARowHasACellOfItsKindForEachColumn) {
    Add({{0, Variant(u"Clio")},
         {2, Variant(std::int32_t{-7})},
         {3, Variant(basic::Date{43890.5})},
         {4, Variant(true)},
         {5, Variant(u"note")},
         {6, Variant(basic::Currency{125000})}});
    RowCells reader(*table_);
    const auto row = table_->Scan().Next();
    ASSERT_TRUE(row.has_value());
    const auto cells = reader.Of(*row);
    const std::vector<Kind> expected = {Kind::Utf8,  Kind::Null, Kind::Whole, Kind::Date,
                                        Kind::Truth, Kind::Memo, Kind::Other};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(cells[i].kind, expected[i]) << i;
    }
    EXPECT_EQ(cells[0].text, "Clio");
    EXPECT_EQ(cells[2].whole, -7);
    EXPECT_EQ(cells[3].number, 43890.5);
    EXPECT_EQ(cells[4].whole, 1);
}

// Stored in one byte for each letter, in two, in both, with letters that UTF-8 writes otherwise.
TEST_F(MadeRowCells, TextsAreInUtf8HoweverTheyAreStored) {
    const std::vector<Text> texts = {
        u"",          u"a", u"ab",   u"abc",    u"abcdefgh",  u"é",       u"Citroën",   u"été",
        u"12345678é", u"€", u"abc€", u"日本語", u"a\u0001bc", u"😀 voilà", u"\uFEFFabc", u"\u00FF\u0100"};
    for (const Text& first : texts) {
        for (const Text& second : texts) {
            Add({{0, Variant(first)}, {1, Variant(second)}});
        }
    }
    EXPECT_GT(CompareRows(*table_), 0);
    RowCells reader(*table_);
    RowScan scan = table_->Scan();
    for (const Text& first : texts) {
        for (const Text& second : texts) {
            const auto row = scan.Next();
            ASSERT_TRUE(row.has_value());
            const auto cells = reader.Of(*row);
            EXPECT_EQ(cells[0].text, basic::ToUtf8(first));
            EXPECT_EQ(cells[1].text, basic::ToUtf8(second));
        }
    }
}

}  // namespace
}  // namespace quardele::jet::test
