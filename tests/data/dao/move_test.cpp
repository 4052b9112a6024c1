// Moves by several rows, and positions in hundredths.
#include <limits>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class MoveTest : public DaoTest {
 protected:
    /// BAT CLI CT DIS EXT FRE HAY LIM PNE REV TAC VID, as each type of recordset shows them.
    [[nodiscard]] std::vector<std::shared_ptr<Recordset>> OpenInEachType() {
        auto table = OpenTable(u"TTYP");
        table->SetIndex(u"PrimaryKey");
        return {table, OpenDynaset(u"TTYP"), Data().OpenRecordset(u"TTYP", RecordsetType::Snapshot)};
    }
};

TEST_F(MoveTest, GoesSoManyRowsOnOrBack) {
    for (const auto& rows : OpenInEachType()) {
        rows->Move(3);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"DIS"));
        rows->Move(-2);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
        rows->Move(10);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
    }
}

TEST_F(MoveTest, BeyondTheEndsSetsEofAndBof) {
    for (const auto& rows : OpenInEachType()) {
        rows->Move(12);
        EXPECT_TRUE(rows->Eof());
        EXPECT_EQ(ErrorOf([&] { rows->Move(1); }), error::kNoCurrentRecord);
        EXPECT_EQ(ErrorOf([&] { rows->Move(0); }), error::kNoCurrentRecord);
        rows->Move(-2);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"TAC"));
        rows->Move(-100);
        EXPECT_TRUE(rows->Bof());
        EXPECT_EQ(ErrorOf([&] { rows->Move(-1); }), error::kNoCurrentRecord);
        rows->Move(2);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"CLI"));
        rows->Move(std::numeric_limits<long>::min());
        EXPECT_TRUE(rows->Bof());
    }
}

TEST_F(MoveTest, ByNothingDropsAnEditAndShowsTheStoredRow) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Edit();
    rows->SetValue(u"TTYP_LIBELLE", u"X");
    rows->Move(0);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_NE(rows->Value(u"TTYP_LIBELLE"), Variant(u"X"));
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
}

TEST_F(MoveTest, OnAnEmptySetRaises3021) {
    const auto rows = OpenDynaset(u"Select * from TVEH where false");
    for (const long step : {-1L, 0L, 1L}) {
        EXPECT_EQ(ErrorOf([&] { rows->Move(step); }), error::kNoCurrentRecord);
    }
    EXPECT_EQ(ErrorOf([&] { (void)rows->PercentPosition(); }), error::kNoCurrentRecord);
    EXPECT_EQ(ErrorOf([&] { rows->SetPercentPosition(0); }), error::kNoCurrentRecord);
}

TEST_F(MoveTest, RowsPassedByAMoveCountAsVisited) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->Move(5);
    EXPECT_EQ(rows->RecordCount(), 6U);
    rows->MoveFirst();
    rows->Move(12);
    EXPECT_EQ(rows->RecordCount(), 12U);
}

TEST_F(MoveTest, PercentPositionIsTheShareOfTheRowsInFront) {
    for (const auto& rows : OpenInEachType()) {
        rows->MoveLast();
        EXPECT_FLOAT_EQ(rows->PercentPosition(), 100.F * 11 / 12);
        rows->MoveFirst();
        EXPECT_FLOAT_EQ(rows->PercentPosition(), 0);
        rows->Move(6);
        EXPECT_FLOAT_EQ(rows->PercentPosition(), 50);
        rows->MoveNext();
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"LIM")) << "asking does not move";
    }
}

TEST_F(MoveTest, PercentPositionCountsTheRowsVisitedOnly) {
    const auto rows = OpenDynaset(u"TTYP");
    rows->MoveNext();
    EXPECT_FLOAT_EQ(rows->PercentPosition(), 50);
}

TEST_F(MoveTest, PercentPositionCanBeSet) {
    for (const auto& rows : OpenInEachType()) {
        rows->MoveLast();
        rows->SetPercentPosition(25);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"DIS"));
        rows->SetPercentPosition(100);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"VID"));
        rows->SetPercentPosition(0);
        EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"BAT"));
        for (const float bad : {-1.F, 100.5F, std::numeric_limits<float>::quiet_NaN()}) {
            EXPECT_EQ(ErrorOf([&] { rows->SetPercentPosition(bad); }), error::kInvalidArgument);
        }
    }
}

TEST_F(MoveTest, PercentPositionOfADeletedRowOfATableRaises3167AndTheWalkGoesOn) {
    const auto rows = OpenTable(u"TTYP");
    rows->SetIndex(u"PrimaryKey");
    rows->Move(3);
    rows->Delete();
    EXPECT_EQ(ErrorOf([&] { (void)rows->PercentPosition(); }), error::kRecordDeleted);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"TTYP_CODE"), Variant(u"EXT"));
}

TEST_F(MoveTest, AMoveThatIsRefusedDoesNotHappen) {
    class Refusal final : public RecordsetObserver {
     public:
        void RowLeaving(Recordset& /*rows*/) override { throw RuntimeError(error::kDuplicateKey); }
    };
    Refusal refusal;
    const auto rows = OpenDynaset(u"TTYP");
    rows->SetObserver(&refusal);
    EXPECT_EQ(ErrorOf([&] { rows->Move(4); }), error::kDuplicateKey);
    EXPECT_EQ(ErrorOf([&] { rows->SetPercentPosition(0); }), error::kDuplicateKey);
    EXPECT_EQ(rows->AbsolutePosition(), 0);
    rows->SetObserver(nullptr);
}

}  // namespace
}  // namespace quardele::dao
