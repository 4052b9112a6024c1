// Changes of rows, read back by us and by an independent reader.

#include <basic/date.h>

#include "index_check.h"
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using basic::Null;

constexpr char16_t kLetter = u'é';

TEST(Update, AnAbandonedVisitIsReadByOthersAndNothingElseChanges) {
    SKIP_WITHOUT_MDB_EXPORT();
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    const auto before = table.Dump();
    const std::vector<RowId> rows = AllRows(*table);
    constexpr std::size_t kChanged = 1234;
    Set(*table, rows[kChanged], u"TVEH_DETAIL_datvis", basic::DateOf(2100, 1, 1));

    auto expected = before;
    expected[kChanged + 1][static_cast<std::size_t>(Ordinal(*table, u"TVEH_DETAIL_DATVIS"))] =
        "2100-01-01 00:00:00";
    EXPECT_EQ(table.Dump(), expected);
    EXPECT_EQ(FaultsOf(*table), "");
}

TEST(Update, ChangesAreSeenByOpenRowsCursorsAndAfterReopening) {
    Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    const RowId id = AllRows(*table)[7];
    const int date = Ordinal(*table, u"TVEH_DETAIL_DATVIS");
    const auto snapshot = table->Fetch(id);
    const Variant old = snapshot->Value(date);
    Set(*table, id, u"TVEH_DETAIL_DATVIS", basic::DateOf(2100, 1, 1));
    EXPECT_EQ(snapshot->Value(date), old);
    EXPECT_EQ(table->Fetch(id)->Value(date), Variant(basic::DateOf(2100, 1, 1)));
    table.Reopen();
    EXPECT_EQ(table->Fetch(id)->Value(date), Variant(basic::DateOf(2100, 1, 1)));
}

TEST(Update, AnIndexThatIsNotThereIsNotOpened) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH");
    const int count = static_cast<int>(table->Indexes().size());
    for (const int index : {-1, count}) {
        EXPECT_EQ(ErrorNumber([&] { (void)table->OpenIndex(index); }), basic::error::kIndexNotFound);
    }
}

TEST(Update, NoJournalStaysBehind) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    Set(*table, AllRows(*table)[0], u"TVEH_DETAIL_DATVIS", Null{});
    for (const auto& entry : fs::directory_iterator(table.File().parent_path())) {
        EXPECT_NE(entry.path().extension(), ".qjournal");
    }
}

TEST(Update, ANewKeyValueMovesTheEntryInEveryIndex) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    const std::vector<RowId> rows = AllRows(*table);
    for (std::size_t i = 0; i < rows.size(); i += 10) {
        Set(*table, rows[i], u"TVEH_DETAIL_Immat",
            basic::FromUtf8("ZÀ-" + std::to_string(i * 7919 % 100003)));
    }
    EXPECT_EQ(FaultsOf(*table), "");
    const int primary = table->FindIndex(u"PrimaryKey");
    IndexCursor cursor = table->OpenIndex(primary);
    const Variant sought(u"za-0");
    EXPECT_FALSE(cursor.Seek(SeekOperator::Equal, {&sought, 1}));
    const Variant accented(u"zà-0");
    EXPECT_TRUE(cursor.Seek(SeekOperator::Equal, {&accented, 1}));
    EXPECT_EQ(cursor.Current(), rows[0]);
}

TEST(Update, ADuplicateInAUniqueIndexChangesNothing) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH");
    const auto before = ReadBytes(table.File());
    const std::vector<RowId> rows = AllRows(*table);
    const Index& index = table->Indexes()[static_cast<std::size_t>(table->FindIndex(u"PrimaryKey"))];
    ASSERT_EQ(index.columns.size(), 1u);
    const int key = index.columns[0].column;
    // Equal to the database: case and trailing blanks do not count.
    const Text other = basic::LCase(table->Fetch(rows[1])->Value(key).As<Text>()) + u" ";
    const ColumnChange change{key, other};
    EXPECT_EQ(ErrorNumber([&] { table->Update(rows[0], {&change, 1}); }), basic::error::kDuplicateKey);
    const ColumnChange null{key, Null{}};
    EXPECT_EQ(ErrorNumber([&] { table->Update(rows[0], {&null, 1}); }), basic::error::kNullInPrimaryKey);
    EXPECT_EQ(ReadBytes(table.File()), before);
}

TEST(Update, ValuesThatDoNotFitTheColumnAreRefused) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TVEH_DETAIL");
    const auto before = ReadBytes(table.File());
    const RowId row = AllRows(*table)[0];
    const auto error = [&](const Text& column, Variant value) {
        return ErrorNumber([&] { Set(*table, row, column, std::move(value)); });
    };
    EXPECT_EQ(error(u"TVEH_DETAIL_Immat", Text(16, u'A')), basic::error::kTextTooLong);
    EXPECT_EQ(error(u"TVEH_DETAIL_DATVIS", u"pas une date"), basic::error::kTypeConversion);
    EXPECT_EQ(error(u"TVEH_DETAIL_PERIOD", 40000), basic::error::kTypeConversion);
    EXPECT_EQ(error(u"TVEH_DETAIL_PERIOD", basic::Binary{1}), basic::error::kTypeConversion);
    EXPECT_EQ(ReadBytes(table.File()), before);
    EXPECT_EQ(error(u"TVEH_DETAIL_DATVIS", u"31/12/2027"), 0);
    EXPECT_EQ(table->Fetch(row)->Value(Ordinal(*table, u"TVEH_DETAIL_DATVIS")),
              Variant(basic::DateOf(2027, 12, 31)));
}

TEST(Update, TextsGrowUntilTheRowMovesAndComeBack) {
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TCLI");
    const std::vector<RowId> rows = AllRows(*table);
    std::vector<int> texts;
    for (std::size_t i = 0; i < table->Columns().size(); ++i) {
        const Column& column = table->Columns()[i];
        const bool indexed =
            std::any_of(table->Indexes().begin(), table->Indexes().end(),
                        [&](const Index& index) { return index.columns[0].column == static_cast<int>(i); });
        if (column.type == ColumnType::Text && column.size > 20 && !indexed) {
            texts.push_back(static_cast<int>(i));
        }
    }
    ASSERT_GE(texts.size(), 3u);
    for (const bool grow : {true, false}) {
        for (std::size_t i = 0; i < rows.size(); i += 3) {
            std::vector<ColumnChange> changes;
            for (const int column : texts) {
                const auto size =
                    static_cast<std::size_t>(table->Columns()[static_cast<std::size_t>(column)].size);
                // Not of Latin-1, so that it is stored with two bytes per unit.
                changes.push_back({column, grow ? Variant(Text(size, u'Ω')) : Variant(u"court")});
            }
            table->Update(rows[i], changes);
        }
        EXPECT_EQ(AllRows(*table), rows);
        EXPECT_EQ(FaultsOf(*table), "");
        for (std::size_t i = 0; i < rows.size(); i += 3) {
            const Variant value = table->Fetch(rows[i])->Value(texts[0]);
            EXPECT_EQ(
                value.As<Text>().size(),
                grow ? static_cast<std::size_t>(table->Columns()[static_cast<std::size_t>(texts[0])].size)
                     : 5u);
        }
    }
}

TEST(Update, MemosOfEveryLengthKeepTheirTextAndGiveTheirPagesBack) {
    SKIP_WITHOUT_MDB_EXPORT();
    const Opened table(SampleFile("DATA/talmeon.mdb"), u"TCLI");
    const int note = Ordinal(*table, u"TCLI_REMARQUES");
    ASSERT_EQ(table->Columns()[static_cast<std::size_t>(note)].type, ColumnType::Memo);
    const std::vector<RowId> rows = AllRows(*table);
    std::uintmax_t largest = 0;
    for (int round = 0; round < 3; ++round) {
        for (const std::size_t length :
             {0u, 1u, 31u, 32u, 33u, 300u, 2037u, 2038u, 2039u, 4073u, 20000u, 70000u}) {
            Text text(length, kLetter);
            if (length > 0) {
                text.back() = u'!';
            }
            Set(*table, rows[5], u"TCLI_REMARQUES", text);
            ASSERT_EQ(table->Fetch(rows[5])->Value(note), Variant(text)) << length;
        }
        if (round == 0) {
            largest = fs::file_size(table.File());
        }
    }
    EXPECT_EQ(fs::file_size(table.File()), largest) << "freed pages are used again";
    const auto lines = table.Dump();
    const auto& cell = lines[6][static_cast<std::size_t>(note)];
    ASSERT_TRUE(cell.has_value());
    EXPECT_EQ(basic::FromUtf8(*cell).size(), 70000u);
    Set(*table, rows[5], u"TCLI_REMARQUES", Null{});
    EXPECT_TRUE(table->Fetch(rows[5])->IsNull(note));
}

TEST(Update, ADeletedRowCannotBeChanged) {
    SKIP_WITHOUT_CORPUS();
    const Opened table(CorpusFile("delV2000.mdb"), u"Table");
    const std::vector<RowId> rows = AllRows(*table);
    ASSERT_EQ(rows.size(), 2u);
    for (std::uint8_t slot = 0; slot < 3; ++slot) {
        const RowId id{rows[0].page, slot};
        const bool live = std::find(rows.begin(), rows.end(), id) != rows.end();
        const ColumnChange change{1, Null{}};
        const int error = ErrorNumber([&] { table->Update(id, {&change, 1}); });
        EXPECT_EQ(error == basic::error::kRecordDeleted, !live);
    }
}

TEST(Update, RowsOlderThanTheirColumnsGrowToTheTableSize) {
    SKIP_WITHOUT_CORPUS();
    const Opened table(CorpusFile("overflowV2000.mdb"), u"Table1");
    const std::vector<RowId> rows = AllRows(*table);
    for (const RowId row : rows) {
        Set(*table, row, u"data10", Text(50, kLetter));
    }
    EXPECT_EQ(AllRows(*table), rows);
    for (const RowId row : rows) {
        EXPECT_EQ(table->Fetch(row)->Value(Ordinal(*table, u"data10")), Variant(Text(50, kLetter)));
    }
    EXPECT_EQ(table->Fetch(rows[2])->Value(Ordinal(*table, u"data3")), Variant(u"row3col3"));
}

TEST(Update, Access97FilesAreReadOnly) {
    SKIP_WITHOUT_CORPUS();
    const Opened table(CorpusFile("nwind.mdb"), u"Shippers");
    EXPECT_EQ(ErrorNumber([&] { Set(*table, AllRows(*table)[0], u"Phone", u"1"); }), basic::error::kReadOnly);
}

// Every indexed column of the file with all kinds of keys: values change places, then go back.
TEST(Update, KeysOfEveryTypeAreReplacedInBothDirections) {
    SKIP_WITHOUT_CORPUS();
    TempFolder folder;
    const fs::path file = folder.Copy(CorpusFile("indexCodesV2000-r2009.mdb"));
    const auto database = Database::Open(file);
    int changed = 0;
    for (const CatalogEntry& entry : database->Catalog()) {
        if (entry.system) {
            continue;
        }
        SCOPED_TRACE(basic::ToUtf8(entry.name));
        const auto table = database->OpenTable(entry.name);
        const std::vector<RowId> rows = AllRows(*table);
        for (const Index& index : table->Indexes()) {
            if (index.unique) {
                continue;
            }
            for (const IndexColumn& part : index.columns) {
                for (std::size_t i = 0; i + 1 < rows.size(); i += 2) {
                    const Variant first = table->Fetch(rows[i])->Value(part.column);
                    const ColumnChange change{part.column, table->Fetch(rows[i + 1])->Value(part.column)};
                    table->Update(rows[i], {&change, 1});
                    const ColumnChange back{part.column, first};
                    table->Update(rows[i + 1], {&back, 1});
                    changed += 2;
                }
            }
        }
        EXPECT_EQ(FaultsOf(*table), "");
    }
    EXPECT_GT(changed, 500);
}

}  // namespace
}  // namespace quardele::jet::test
