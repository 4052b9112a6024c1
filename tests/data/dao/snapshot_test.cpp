// Snapshots.
#include "dao_test.h"

namespace quardele::dao {
namespace {

class SnapshotTest : public DaoTest {
 protected:
    [[nodiscard]] std::shared_ptr<Recordset> OpenSnapshot(TextView source) {
        return Data().OpenRecordset(source, RecordsetType::Snapshot);
    }
    void Rename(TextView code, TextView label) {
        const auto rows = OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='" + Text(code) + u"'");
        rows->Edit();
        rows->SetValue(u"TTYP_LIBELLE", Text(label));
        rows->Update();
    }
};

TEST_F(SnapshotTest, CannotBeChanged) {
    const auto rows = OpenSnapshot(u"TTYP");
    EXPECT_EQ(rows->Type(), RecordsetType::Snapshot);
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->AddNew(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kReadOnly);
}

TEST_F(SnapshotTest, KeepsTheValuesOfTheMomentWhenItWasOpened) {
    const auto rows = OpenSnapshot(
        u"SELECT TTYP_CODE, TTYP_LIBELLE, Len([TTYP_LIBELLE]) AS Longueur FROM TTYP "
        u"ORDER BY TTYP_CODE");
    Rename(u"VID", u"Vidange");
    DBEngine::Instance().Idle(1);
    rows->MoveLast();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange et filtres"));
    EXPECT_EQ(rows->Value(u"Longueur"), Variant(std::int32_t{18}));
    EXPECT_EQ(rows->ValueAt(11, 1), Variant(u"Vidange et filtres"));
    rows->Requery();
    rows->MoveLast();
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
}

TEST_F(SnapshotTest, SearchesItsFixedValues) {
    const auto rows = OpenSnapshot(u"TTYP");
    Rename(u"VID", u"Vidange");
    rows->FindFirst(u"TTYP_LIBELLE='Vidange'");
    EXPECT_TRUE(rows->NoMatch());
    rows->FindFirst(u"TTYP_LIBELLE='Vidange et filtres'");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
}

TEST_F(SnapshotTest, CountsAndMovesLikeADynaset) {
    const auto rows = OpenSnapshot(u"TTYP");
    EXPECT_EQ(rows->RecordCount(), 1U);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), 12U);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof());
}

}  // namespace
}  // namespace quardele::dao
