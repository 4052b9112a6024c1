// New rows, read back by us and by an independent reader.

#include <algorithm>

#include "index_check.h"
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

using basic::Null;

TEST(Insert, ANewRowIsReadByOthersBehindTheOldOnes) {
    SKIP_WITHOUT_MDB_EXPORT();
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TPAYS");
    auto expected = table.Dump();
    const std::size_t count = table->RowCount();
    const RowId row = Add(*table, {{u"TPAYS_CODE", u"ZZZ"}, {u"TPAYS_LIBELLE", u"Île d'Yeu"}});
    EXPECT_EQ(Get(*table, row, u"TPAYS_LIBELLE"), Variant(u"Île d'Yeu"));
    EXPECT_EQ(table->RowCount(), count + 1);
    EXPECT_EQ(FaultsOf(*table), "");
    expected.push_back({"ZZZ", "Île d'Yeu"});
    EXPECT_EQ(table.Dump(), expected);
}

TEST(Insert, ColumnsWithoutAValueAreNull) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TCLI");
    const RowId row = Add(*table, {{u"TCLI_CODCLI", u"ZZ1"}});
    for (std::size_t i = 1; i < table->Columns().size(); ++i) {
        EXPECT_TRUE(table->Fetch(row)->IsNull(static_cast<int>(i))) << i;
    }
}

TEST(Insert, ADuplicateOrNullKeyChangesNothing) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TPAYS");
    const auto before = ReadBytes(table.File());
    const Text code = Get(*table, AllRows(*table)[0], u"TPAYS_CODE").As<Text>();
    EXPECT_EQ(ErrorNumber([&] {
                  Add(*table, {{u"TPAYS_CODE", basic::LCase(code)}});
              }),
              basic::error::kDuplicateKey);
    EXPECT_EQ(ErrorNumber([&] { Add(*table, {{u"TPAYS_LIBELLE", u"x"}}); }), basic::error::kNullInPrimaryKey);
    EXPECT_EQ(ReadBytes(table.File()), before);
}

TEST(Insert, WithinAStepARefusedRowLeavesTheOthers) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TPAYS");
    const std::size_t count = table->RowCount();
    Step step = table.Data().Begin();
    Add(*table, {{u"TPAYS_CODE", u"ZZA"}});
    EXPECT_EQ(ErrorNumber([&] { Add(*table, {{u"TPAYS_CODE", u"zza"}}); }), basic::error::kDuplicateKey);
    Add(*table, {{u"TPAYS_CODE", u"ZZB"}});
    step.Commit();
    EXPECT_EQ(table->RowCount(), count + 2);
    EXPECT_EQ(FaultsOf(*table), "");
}

// Every row of every table goes, and comes back with all its values.
class RoundTrip : public testing::TestWithParam<const char*> {};

std::vector<CsvLine> Sorted(std::vector<CsvLine> lines) {
    std::sort(lines.begin() + 1, lines.end());
    return lines;
}

std::vector<std::vector<ColumnChange>> AllValues(const Table& table) {
    std::vector<std::vector<ColumnChange>> rows;
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        auto& values = rows.emplace_back();
        for (std::size_t i = 0; i < table.Columns().size(); ++i) {
            values.push_back({static_cast<int>(i), row->Value(static_cast<int>(i))});
        }
    }
    return rows;
}

TEST_P(RoundTrip, RowsGoAndComeBack) {
    SKIP_WITHOUT_CORPUS();
    SKIP_WITHOUT_MDB_EXPORT();
    const std::string name = GetParam();
    TempFolder folder;
    const auto file = folder.Copy(name.find('/') == std::string::npos ? CorpusFile(name) : SampleFile(name));
    const auto database = Database::Open(file);
    for (const CatalogEntry& entry : database->Catalog()) {
        if (entry.system || entry.linked) {
            continue;
        }
        SCOPED_TRACE(basic::ToUtf8(entry.name));
        const auto table = database->OpenTable(entry.name);
        const auto dump = [&] { return ParseCsv(MdbExport(file, basic::ToUtf8(entry.name))); };
        const auto before = dump();
        const auto rows = AllValues(*table);
        Step step = database->Begin();
        for (const RowId row : AllRows(*table)) {
            table->Delete(row);
        }
        EXPECT_EQ(AllRows(*table).size(), 0u);
        EXPECT_EQ(FaultsOf(*table), "");
        for (const auto& values : rows) {
            table->Insert(values);
        }
        step.Commit();
        EXPECT_EQ(FaultsOf(*table), "");
        EXPECT_EQ(Sorted(dump()), Sorted(before));
        EXPECT_EQ(table->RowCount(), rows.size());
    }
}

INSTANTIATE_TEST_SUITE_P(Files, RoundTrip,
                         testing::Values("DATA/talmeon.mdb", "adox_jet4.mdb", "common1V2000.mdb",
                                         "common2V2000.mdb", "compIndexV2000.mdb", "delColV2000.mdb",
                                         "delV2000.mdb", "fixedNumericV2000.mdb", "fixedTextV2000.mdb",
                                         "indexCodesV2000-r2009.mdb", "indexPropertiesV2000.mdb",
                                         "overflowV2000.mdb", "DateTestDatabase.mdb"));

}  // namespace
}  // namespace quardele::jet::test
