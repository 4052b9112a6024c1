// Rules of fields, orders and links that a workshop's files lack, on files that other programs made.
#include <filesystem>

#include "../jet/support.h"
#include "dao_test.h"

namespace quardele::dao {
namespace {

namespace fs = std::filesystem;

class CorpusTest : public DaoTest {
 protected:
    void SetUp() override { SKIP_WITHOUT_CORPUS(); }

    void Install(const std::string& name) const {
        const fs::path file = Installed().File("DATA/" + name);
        fs::copy_file(jet::test::CorpusFile(name), file);
        fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    }
    [[nodiscard]] std::shared_ptr<Database> OpenInstalled(const std::string& name) const {
        Install(name);
        return OpenAnew("DATA/" + name);
    }
    [[nodiscard]] std::vector<Text> IndexNames(const std::string& name, TextView table) const {
        std::vector<Text> names;
        const auto opened = jet::Database::Open(Installed().File("DATA/" + name))->OpenTable(table);
        for (const jet::Index& index : opened->Indexes()) {
            names.push_back(index.name);
        }
        return names;
    }
};

TEST_F(CorpusTest, NullInARequiredFieldRaises3314OnUpdateAndKeepsTheBuffer) {
    const auto rows = OpenInstalled("fixedTextV2000.mdb")->OpenRecordset(u"users", RecordsetType::Dynaset);
    ASSERT_TRUE(rows->FieldNamed(u"c_user_name").required);
    const Variant before = rows->Value(u"c_user_name");
    rows->Edit();
    rows->SetValue(u"c_user_name", Null{});
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kNullRequired);
    EXPECT_EQ(rows->EditMode(), EditMode::Edit);
    EXPECT_TRUE(rows->Value(u"c_user_name").IsNull());
    rows->CancelUpdate();
    EXPECT_EQ(rows->Value(u"c_user_name"), before);
}

TEST_F(CorpusTest, EmptyTextWhereItIsNotAllowedRaises3315AndKeepsTheBuffer) {
    const auto rows = OpenInstalled("common1V2000.mdb")->OpenRecordset(u"Table1", RecordsetType::Table);
    ASSERT_FALSE(rows->FieldNamed(u"A").allowZeroLength);
    const Variant before = rows->Value(u"A");
    rows->Edit();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"A", u""); }), error::kEmptyText);
    EXPECT_EQ(rows->Value(u"A"), before);
}

TEST_F(CorpusTest, AutoNumberOfAFileOfAnotherProgramGoesOnCountingAndRaises3164) {
    const auto rows = OpenInstalled("common1V2000.mdb")->OpenRecordset(u"Table3", RecordsetType::Table);
    std::int32_t largest = 0;
    for (const Variant& number : Rest(*rows, u"a")) {
        largest = std::max(largest, number.As<std::int32_t>());
    }
    rows->AddNew();
    EXPECT_GT(rows->Value(u"a").As<std::int32_t>(), largest);
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"a", std::int32_t{7}); }), error::kFieldNotUpdatable);
}

TEST_F(CorpusTest, NewRecordStartsWithTheDefaultsOfNumbers) {
    const auto rows = OpenInstalled("common1V2000.mdb")->OpenRecordset(u"Table1", RecordsetType::Dynaset);
    rows->AddNew();
    EXPECT_EQ(rows->Value(u"C"), Variant(std::uint8_t{0}));
    EXPECT_EQ(rows->Value(u"D"), Variant(std::int16_t{0}));
    EXPECT_EQ(rows->Value(u"H"), Variant(basic::Currency{0}));
    EXPECT_TRUE(rows->Value(u"A").IsNull());
}

TEST_F(CorpusTest, EveryIndexWalksAllRowsBothWays) {
    const auto database = OpenInstalled("indexCodesV2000-r2009.mdb");
    for (const TextView table : {u"Table2", u"Table2_desc", u"Table5_desc", u"Table9", u"Table12_asc_desc",
                                 u"Table12_desc_desc", u"Table13"}) {
        const auto rows = database->OpenRecordset(table, RecordsetType::Table);
        for (const Text& index : IndexNames("indexCodesV2000-r2009.mdb", table)) {
            rows->SetIndex(index);
            std::vector<Bookmark> forward;
            for (; !rows->Eof(); rows->MoveNext()) {
                forward.push_back(rows->CurrentBookmark());
            }
            std::vector<Bookmark> backward;
            for (rows->MoveLast(); !rows->Bof(); rows->MovePrevious()) {
                backward.insert(backward.begin(), rows->CurrentBookmark());
            }
            EXPECT_EQ(forward, backward) << basic::ToUtf8(table) << " " << basic::ToUtf8(index);
            EXPECT_EQ(forward.size(), rows->RecordCount());
        }
    }
}

TEST_F(CorpusTest, MovesFindARowAgainThatABookmarkBroughtBack) {
    const auto rows = OpenInstalled("compIndexV2000.mdb")->OpenRecordset(u"Table1", RecordsetType::Table);
    rows->SetIndex(IndexNames("compIndexV2000.mdb", u"Table1").front());
    std::vector<Bookmark> order;
    for (; !rows->Eof(); rows->MoveNext()) {
        order.push_back(rows->CurrentBookmark());
    }
    ASSERT_EQ(order.size(), 512U);
    for (std::size_t i = 0; i + 1 < order.size(); i += 37) {
        rows->SetBookmark(order[i]);
        rows->MoveNext();
        EXPECT_EQ(rows->CurrentBookmark(), order[i + 1]);
    }
}

TEST_F(CorpusTest, LinkedTableOpensAsADynasetAndNotAsATable) {
    Install("linkee2.mdb");
    const auto database = OpenInstalled("linked.mdb");
    EXPECT_THAT(database->TableNames(), testing::Contains(Text(u"table2")));
    const auto rows = database->OpenRecordset(u"table2");
    EXPECT_EQ(rows->Type(), RecordsetType::Dynaset);
    EXPECT_EQ(rows->RowCount(), 1U);
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset(u"table2", RecordsetType::Table); }),
              error::kInvalidOperation);
    EXPECT_EQ(database->TableDefNamed(u"TABLE2").Name(), u"table2");
}

TEST_F(CorpusTest, ChangesOfALinkedTableAreSeenAfterIdleAndItsRowsAreLocked) {
    Install("linkee2.mdb");
    const auto linked = OpenInstalled("linked.mdb")->OpenRecordset(u"table2");
    EXPECT_EQ(linked->Value(u"filed2"), Variant(u"ciao brutto"));
    const auto direct = OpenAnew("DATA/linkee2.mdb")->OpenRecordset(u"table2");
    const auto write = [&direct](TextView text) {
        direct->Edit();
        direct->SetValue(u"filed2", Text(text));
        direct->Update();
    };
    write(u"ciao bello");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(linked->Value(u"filed2"), Variant(u"ciao bello"));
    linked->Edit();
    linked->SetValue(u"filed2", u"il mio");
    EXPECT_EQ(ErrorOf([&] { write(u"il suo"); }), error::kLockedHere);
    linked->Update();
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(direct->Value(u"filed2"), Variant(u"il mio"));
}

TEST_F(CorpusTest, ALinkedTableShowsWhatAnotherWorkstationWritesToItsFile) {
    Install("linkee2.mdb");
    const auto rows = OpenInstalled("linked.mdb")->OpenRecordset(u"table2");
    for (int i = 0; i < 3; ++i) {
        rows->FindFirst(u"filed2='ciao bello'");
        EXPECT_TRUE(rows->NoMatch());
    }
    ExecuteElsewhere("UPDATE table2 SET filed2 = 'ciao bello'", "DATA/linkee2.mdb");
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kRecordChanged);
    EXPECT_EQ(rows->Value(u"filed2"), Variant(u"ciao bello"));
    rows->FindFirst(u"filed2='ciao bello'");
    EXPECT_FALSE(rows->NoMatch());
    ExecuteElsewhere("UPDATE table2 SET filed2 = 'ciao'", "DATA/linkee2.mdb");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"filed2"), Variant(u"ciao"));
}

TEST_F(CorpusTest, RecordsOfALinkedTableComeAndGoInItsFile) {
    Install("linkee2.mdb");
    const auto rows = OpenInstalled("linked.mdb")->OpenRecordset(u"table2");
    const auto count = [&] { return OpenAnew("DATA/linkee2.mdb")->OpenRecordset(u"table2")->RecordCount(); };
    EXPECT_TRUE(rows->Updatable());
    rows->AddNew();
    rows->SetValue(u"filed2", u"nuovo");
    rows->Update();
    EXPECT_EQ(count(), 2U);
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"filed2"), Variant(u"nuovo"));
    rows->Delete();
    EXPECT_EQ(count(), 1U);
}

TEST_F(CorpusTest, LinkWhoseFileIsMissingRaises3011AndNamesIt) {
    const auto database = OpenInstalled("linked.mdb");
    EXPECT_THAT(basic::ToUtf8(DescriptionOfErrorOf([&] { (void)database->OpenRecordset(u"table2"); })),
                testing::HasSubstr("linkee2.mdb"));
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset(u"table2"); }), error::kLinkedTableMissing);
    EXPECT_EQ(ErrorOf([&] { (void)database->OpenRecordset(u"SELECT * FROM table2"); }),
              error::kLinkedTableMissing);
}

TEST_F(CorpusTest, FileWithAPasswordRaises3031) {
    Install("password.mdb");
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew("DATA/password.mdb"); }), error::kBadPassword);
}

TEST_F(CorpusTest, Access97FileOpensReadOnly) {
    const auto database = OpenInstalled("common1V1997.mdb");
    EXPECT_FALSE(database->Updatable());
    const auto rows = database->OpenRecordset(u"Table1");
    EXPECT_EQ(rows->RecordCount(), 2U);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
}

}  // namespace
}  // namespace quardele::dao
