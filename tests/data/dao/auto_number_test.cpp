// AutoNumber columns of new records.
#include <sql/statement.h>

#include "dao_test.h"
#include "open_file.h"

namespace quardele::dao {
namespace {

class AutoNumberTest : public DaoTest {
 protected:
    AutoNumberTest() {
        Run(u"CREATE TABLE TNUM (NUM COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, NOM TEXT(20))");
        Run(u"INSERT INTO TNUM (NOM) VALUES ('un')");
        Run(u"INSERT INTO TNUM (NOM) VALUES ('deux')");
    }
    void Run(TextView statement) const {
        const auto file = OpenFile::Open(Installed().File(kData), jet::OpenMode::Shared);
        sql::Execute(*file->Database(), statement);
    }
    [[nodiscard]] Variant NumberOf(TextView name) {
        return OpenDynaset(u"SELECT NUM FROM TNUM WHERE NOM='" + Text(name) + u"'")->Value(u"NUM");
    }
};

TEST_F(AutoNumberTest, CanBeReadAfterAddNewAndIsTheOneOfTheNewRecord) {
    for (const auto& rows : {OpenTable(u"TNUM"), OpenDynaset(u"TNUM")}) {
        rows->AddNew();
        const Variant number = rows->Value(u"NUM");
        ASSERT_TRUE(number.Is<std::int32_t>());
        rows->SetValue(u"NOM", u"neuf");
        rows->Update();
        rows->SetBookmark(rows->LastModified());
        EXPECT_EQ(rows->Value(u"NUM"), number);
        EXPECT_EQ(NumberOf(u"neuf"), number);
        rows->Delete();
    }
}

TEST_F(AutoNumberTest, CountsOnBehindTheLastOne) {
    const auto rows = OpenTable(u"TNUM");
    rows->AddNew();
    EXPECT_EQ(rows->Value(u"NUM"), Variant(std::int32_t{3}));
}

TEST_F(AutoNumberTest, OfARecordThatIsGivenUpIsSpent) {
    const auto rows = OpenTable(u"TNUM");
    rows->AddNew();
    rows->CancelUpdate();
    rows->AddNew();
    EXPECT_EQ(rows->Value(u"NUM"), Variant(std::int32_t{4}));
    rows->MoveFirst();
    Run(u"INSERT INTO TNUM (NOM) VALUES ('cinq')");
    EXPECT_EQ(NumberOf(u"cinq"), Variant(std::int32_t{5}));
}

TEST_F(AutoNumberTest, TwoRecordsInTheMakingHaveTwoNumbers) {
    const auto mine = OpenTable(u"TNUM");
    const auto his = OpenDynaset(u"TNUM");
    mine->AddNew();
    his->AddNew();
    EXPECT_NE(mine->Value(u"NUM"), his->Value(u"NUM"));
    ExecuteElsewhere("INSERT INTO TNUM (NOM) VALUES ('ailleurs')");
    mine->SetValue(u"NOM", u"ici");
    mine->Update();
    his->SetValue(u"NOM", u"ici aussi");
    his->Update();
    EXPECT_EQ(NumberOf(u"ici"), Variant(std::int32_t{3}));
    EXPECT_EQ(NumberOf(u"ici aussi"), Variant(std::int32_t{4}));
    EXPECT_EQ(NumberOf(u"ailleurs"), Variant(std::int32_t{5}));
}

TEST_F(AutoNumberTest, CannotBeWritten) {
    const auto rows = OpenTable(u"TNUM");
    rows->AddNew();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"NUM", std::int32_t{7}); }), error::kFieldNotUpdatable);
    rows->CancelUpdate();
    rows->Edit();
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"NUM", std::int32_t{7}); }), error::kFieldNotUpdatable);
}

TEST_F(AutoNumberTest, OfARecordsetThatDoesNotShowItIsGivenAtTheEnd) {
    const auto rows = OpenDynaset(u"SELECT NOM FROM TNUM");
    rows->AddNew();
    rows->SetValue(u"NOM", u"caché");
    rows->Update();
    EXPECT_EQ(NumberOf(u"caché"), Variant(std::int32_t{3}));
}

TEST_F(AutoNumberTest, OfAJoinIsGivenWithItsRow) {
    Run(u"CREATE TABLE TSOUS (SOUS_NUM LONG, SOUS_NOM TEXT(20))");
    const auto rows =
        OpenDynaset(u"SELECT NUM, NOM, SOUS_NOM FROM TNUM LEFT JOIN TSOUS ON TNUM.NUM = TSOUS.SOUS_NUM");
    rows->AddNew();
    EXPECT_TRUE(rows->Value(u"NUM").IsNull());
    rows->SetValue(u"NOM", u"joint");
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"NUM"), Variant(std::int32_t{3}));
}

TEST_F(AutoNumberTest, AFileThatIsOnlyReadGivesNone) {
    const auto rows = OpenAnew(kData, true)->OpenRecordset(u"TNUM", RecordsetType::Table);
    EXPECT_EQ(ErrorOf([&] { rows->AddNew(); }), error::kReadOnly);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
}

}  // namespace
}  // namespace quardele::dao
