// What random workloads have found, each in its smallest form.

#include <gtest/gtest.h>

#include "../data/jet/support.h"
#include "comparison.h"
#include "other_readers.h"

namespace quardele::jet::test {
namespace {

Column ColumnOf(const Text& name, ColumnType type) {
    Column column;
    column.name = name;
    column.type = type;
    return column;
}

class FoundByChance : public testing::Test {
 protected:
    FoundByChance() : file_(folder_.Path() / "hasard.mdb"), database_(Database::Create(file_)) {}

    std::shared_ptr<Table> Make(const std::vector<Column>& columns) {
        database_->CreateTable({.name = kTable, .columns = columns, .indexes = {}});
        return database_->OpenTable(kTable);
    }
    static RowId Add(Table& table, int column, const Variant& value) {
        const ColumnChange change{column, value};
        return table.Insert({&change, 1});
    }
    /// Closes the file and compares.
    void ExpectRows(const std::vector<Column>& columns, const std::vector<std::vector<Variant>>& rows) {
        database_.reset();
        ExpectAllReadersAgree(file_, {{kTable, {.columns = columns, .rows = rows}}});
        ExpectSound(file_, true);
    }

    const Text kTable = u"Essai";
    TempFolder folder_;
    std::filesystem::path file_;
    std::shared_ptr<Database> database_;
};

TEST_F(FoundByChance, TheFirstColumnOfVariableLengthIsAddedToRowsOfFixedLength) {
    std::vector<Column> columns = {ColumnOf(u"Entier", ColumnType::Long),
                                   ColumnOf(u"Vrai", ColumnType::Boolean)};
    auto table = Make(columns);
    std::vector<std::vector<Variant>> rows;
    for (std::int32_t i = 0; i < 1000; ++i) {
        Add(*table, 0, i * 65537);
        rows.push_back({i * 65537, false, basic::Null()});
    }
    table.reset();
    columns.push_back(ColumnOf(u"Texte", ColumnType::Memo));
    database_->AddColumn(kTable, columns.back());
    table = database_->OpenTable(kTable);
    RowScan scan = table->Scan();
    const ColumnChange change{2, u"trouvé"};
    table->Update(*scan.NextId(), {&change, 1});
    rows[0][2] = u"trouvé";
    table.reset();
    ExpectRows(columns, rows);
    SKIP_WITHOUT_OTHER_READERS();
}

TEST_F(FoundByChance, APageThatOneMemoColumnGivesBackServesAnother) {
    const Text text(1500, u'é');
    const std::vector<Column> columns = {ColumnOf(u"Un", ColumnType::Memo),
                                         ColumnOf(u"Deux", ColumnType::Memo)};
    auto table = Make(columns);
    {
        Step step = database_->Begin();
        table->Delete(Add(*table, 0, text));
        Add(*table, 1, text);
        Add(*table, 0, text);
        step.Commit();
    }
    table.reset();
    ExpectRows(columns, {{basic::Null(), text}, {text, basic::Null()}});
    SKIP_WITHOUT_OTHER_READERS();
}

TEST_F(FoundByChance, ATextMayBeginWithTheMarkOfCompressedOnes) {
    const Text text = u"\uFEFFÉté";
    const std::vector<Column> columns = {ColumnOf(u"Mémo", ColumnType::Memo)};
    auto table = Make(columns);
    Add(*table, 0, text);
    EXPECT_EQ(ErrorNumber([&] { Add(*table, 0, Text(u"\uFEFF\u0100")); }), basic::error::kTypeConversion);
    table.reset();
    ExpectRows(columns, {{text}});
    SKIP_WITHOUT_OTHER_READERS();
}

}  // namespace
}  // namespace quardele::jet::test
