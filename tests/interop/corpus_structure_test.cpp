// Files made by the original programs, whose structure we change: what was there reads as before for all
// readers, and so does the file once it is compacted.

#include <gtest/gtest.h>

#include <jet/compaction.h>

#include "../data/jet/support.h"
#include "comparison.h"
#include "other_readers.h"

namespace quardele::jet::test {
namespace {

const Text kAdded = u"Ajouté_texte";
const Text kTicked = u"Ajouté_coché";

Column ColumnOf(const Text& name, ColumnType type) {
    Column column;
    column.name = name;
    column.type = type;
    return column;
}

/// Appends two columns and makes an index over one of them; the rows have nothing in them.
void Extend(Database& database, const Text& name, ColumnType second, TableContents& expected) {
    database.AddColumn(name, ColumnOf(kAdded, ColumnType::Text));
    database.AddColumn(name, ColumnOf(kTicked, second));
    database.CreateIndex(name, {.name = u"ParAjout", .columns = {{kAdded, false}, {kTicked}}});
    expected.columns = database.OpenTable(name)->Columns();
    for (auto& row : expected.rows) {
        row.emplace_back(basic::Null());
        row.push_back(second == ColumnType::Boolean ? Variant(false) : Variant(basic::Null()));
    }
}

/// Gives every third row a value in the new column.
void FillAdded(Database& database, const Text& name, TableContents& expected) {
    const auto table = database.OpenTable(name);
    const int column = table->FindColumn(kAdded);
    std::vector<RowId> ids;
    RowScan scan = table->Scan();
    while (const auto id = scan.NextId()) {
        ids.push_back(*id);
    }
    for (std::size_t i = 0; i < ids.size(); i += 3) {
        const ColumnChange change{column, Text(u"été ") + basic::FromUtf8(std::to_string(i))};
        table->Update(ids[i], {&change, 1});
        expected.rows[i][static_cast<std::size_t>(column)] = change.value;
    }
}

void CreateTables(Database& database, Contents& expected) {
    for (const Text& name : {Text(u"Nouvelle table"), Text(u"Passagère")}) {
        database.CreateTable(
            {.name = name,
             .columns = {ColumnOf(u"Numéro", ColumnType::Long), ColumnOf(u"Note", ColumnType::Memo)},
             .indexes = {{.name = u"PrimaryKey", .columns = {{u"Numéro"}}, .primary = true}}});
        const auto table = database.OpenTable(name);
        auto& contents = expected[name];
        contents.columns = table->Columns();
        for (std::int32_t i = 0; i < 50; ++i) {
            const std::vector<ColumnChange> values = {{0, i},
                                                      {1, Text(static_cast<std::size_t>(i) * 150, u'é')}};
            table->Insert(values);
            contents.rows.push_back({values[0].value, values[1].value});
        }
    }
    database.DropTable(u"Passagère");
    expected.erase(u"Passagère");
}

struct File {
    const char* name;
    const char16_t* droppable = u"";  ///< a table of the file that goes
    /// Of the second column. Where its number lies behind the last bit that a row has (rows of seven columns
    /// and a column of number 8), the other readers take what follows the row for the bit of a fixed column.
    ColumnType second = ColumnType::Boolean;
};

class CorpusStructure : public testing::TestWithParam<File> {};

TEST_P(CorpusStructure, OldRowsReadTheSameEverywhere) {
    SKIP_WITHOUT_CORPUS();
    const TempFolder folder;
    const auto file = folder.Copy(CorpusFile(GetParam().name));
    Contents expected = ReadContents(file);
    {
        const auto database = Database::Open(file);
        for (auto& [name, contents] : expected) {
            Extend(*database, name, GetParam().second, contents);
            FillAdded(*database, name, contents);
        }
        CreateTables(*database, expected);
        if (const Text dropped = GetParam().droppable; !dropped.empty()) {
            database->DropTable(dropped);
            EXPECT_EQ(expected.erase(dropped), 1U);
        }
    }
    ExpectAllReadersAgree(file, expected);
    ExpectSound(file, false);
    const auto compacted = folder.Path() / "compact.mdb";
    Compact(file, compacted, {});
    ExpectAllReadersAgree(compacted, expected);
    ExpectSound(compacted, true);
    SKIP_WITHOUT_OTHER_READERS();
}

INSTANTIATE_TEST_SUITE_P(
    Files, CorpusStructure,
    testing::Values(File{"common1V2000.mdb", u"Table1"}, File{"common2V2000.mdb"}, File{"compIndexV2000.mdb"},
                    File{"delColV2000.mdb", u"Table1"}, File{"delV2000.mdb"}, File{"fixedNumericV2000.mdb"},
                    File{"fixedTextV2000.mdb"}, File{"indexCodesV2000-r2009.mdb", u"", ColumnType::Text},
                    File{"indexPropertiesV2000.mdb"}, File{"indexV2000.mdb"}, File{"overflowV2000.mdb"},
                    File{"unicodeCompV2003.mdb"}, File{"DateTestDatabase.mdb"}));

}  // namespace
}  // namespace quardele::jet::test
