// Dynasets that find their rows as somebody comes to them.
#include "dao_test.h"

namespace quardele::dao {
namespace {

class FoundRowsTest : public DaoTest {
 protected:
    static constexpr int kRows = 500;
    /// More rows than a step finds.
    static constexpr std::size_t kFar = 300;

    FoundRowsTest() {
        ExecuteElsewhere("CREATE TABLE T (K LONG CONSTRAINT PK PRIMARY KEY, C TEXT(20), N LONG)");
        const auto table = OpenTable(u"T");
        for (int i = 0; i < kRows; ++i) {
            AddTo(*table, 10 * i);
        }
    }

    static void AddTo(Recordset& rows, int key) {
        rows.AddNew();
        rows.SetValue(u"K", key);
        rows.SetValue(u"C", u"c" + basic::FromUtf8(std::to_string(key % 3)));
        rows.SetValue(u"N", key);
        rows.Update();
    }
    [[nodiscard]] std::shared_ptr<Recordset> At(int key) {
        return OpenDynaset(u"SELECT * FROM T WHERE K = " + basic::FromUtf8(std::to_string(key)));
    }
    [[nodiscard]] std::shared_ptr<Recordset> All() { return OpenDynaset(u"SELECT * FROM T"); }
    static bool IsWhole(const Recordset& rows) {
        return rows.RowsFound(0) >= static_cast<std::size_t>(kRows);
    }
};

TEST_F(FoundRowsTest, RecordCountCountsTheRowsVisited) {
    const auto rows = All();
    EXPECT_EQ(rows->RecordCount(), 1U);
    EXPECT_FALSE(IsWhole(*rows));
    rows->Move(5);
    EXPECT_EQ(rows->RecordCount(), 6U);
    rows->SetAbsolutePosition(kFar);
    EXPECT_EQ(rows->RecordCount(), kFar + 1);
    EXPECT_EQ(rows->Value(u"K"), Variant(static_cast<int>(10 * kFar)));
    EXPECT_FALSE(IsWhole(*rows));
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
    rows->MoveFirst();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(rows->PercentPosition(), 0.0F);
}

TEST_F(FoundRowsTest, WalkingComesToEveryRowOnceAndToTheEnd) {
    const auto rows = All();
    int expected = 0;
    for (; !rows->Eof(); rows->MoveNext()) {
        ASSERT_EQ(rows->Value(u"K"), Variant(10 * expected++));
    }
    EXPECT_EQ(expected, kRows);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), error::kNoCurrentRecord);
}

TEST_F(FoundRowsTest, WhatThisProgramAddsIsNoMember) {
    const auto rows = All();
    const auto filtered = OpenDynaset(u"SELECT * FROM T WHERE N >= 0");
    ASSERT_FALSE(IsWhole(*rows));
    const auto other = All();
    AddTo(*other, 4995);
    AddTo(*OpenTable(u"T"), -5);
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(rows->Value(u"K"), Variant(10 * (kRows - 1)));
    filtered->MoveLast();
    EXPECT_EQ(filtered->RecordCount(), static_cast<std::size_t>(kRows));
    rows->Requery();
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows) + 2);
    EXPECT_EQ(rows->Value(u"K"), Variant(4995));
}

TEST_F(FoundRowsTest, WhatThisProgramDeletesKeepsItsPlace) {
    const auto rows = All();
    At(3000)->Delete();
    At(20)->Delete();
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
    rows->SetAbsolutePosition(kFar);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"K"); }), error::kRecordDeleted);
    rows->MoveNext();
    EXPECT_EQ(rows->Value(u"K"), Variant(3010));
}

TEST_F(FoundRowsTest, WhatThisProgramMovesKeepsItsPlace) {
    const auto rows = All();
    const auto moved = At(3000);
    moved->Edit();
    moved->SetValue(u"K", -1);
    moved->Update();
    rows->SetAbsolutePosition(kFar);
    EXPECT_EQ(rows->Value(u"K"), Variant(-1));
    rows->MoveLast();
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
}

TEST_F(FoundRowsTest, AnAddedRecordStandsAtTheEnd) {
    const auto rows = All();
    AddTo(*rows, 15);
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->AbsolutePosition(), kRows);
    EXPECT_EQ(rows->Value(u"K"), Variant(15));
    rows->MovePrevious();
    EXPECT_EQ(rows->Value(u"K"), Variant(10 * (kRows - 1)));
}

TEST_F(FoundRowsTest, RowsAheadAreThoseThatOthersHaveLeft) {
    const auto rows = All();
    rows->Move(5);
    ExecuteElsewhere("DELETE FROM T WHERE K = 3000");
    ExecuteElsewhere("INSERT INTO T VALUES (4995, 'neuf', 1)");
    ExecuteElsewhere("INSERT INTO T VALUES (-5, 'neuf', 1)");
    ExecuteElsewhere("UPDATE T SET K = 4996 WHERE K = 10");
    ExecuteElsewhere("DELETE FROM T WHERE K = 20");
    DBEngine::Instance().Idle(1);
    rows->MoveLast();
    EXPECT_EQ(rows->Value(u"K"), Variant(4995)) << "the one behind it has been found before";
    EXPECT_EQ(rows->RecordCount(), static_cast<std::size_t>(kRows));
    rows->SetAbsolutePosition(1);
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"K"); }), error::kRecordDeleted) << "it has another key";
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"K"); }), error::kRecordDeleted);
    rows->SetAbsolutePosition(kFar);
    EXPECT_EQ(rows->Value(u"K"), Variant(3010));
}

TEST_F(FoundRowsTest, BookmarksHoldWhateverIsFoundLater) {
    const auto rows = All();
    rows->Move(7);
    const Bookmark bookmark = rows->CurrentBookmark();
    rows->MoveLast();
    rows->SetBookmark(bookmark);
    EXPECT_EQ(rows->Value(u"K"), Variant(70));
    EXPECT_EQ(rows->AbsolutePosition(), 7);
}

TEST_F(FoundRowsTest, SearchesFindRowsThatNobodyHasComeTo) {
    const auto rows = All();
    rows->FindFirst(u"N > 3995");
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(rows->Value(u"K"), Variant(4000));
    EXPECT_EQ(rows->RecordCount(), 401U);
    EXPECT_FALSE(IsWhole(*rows));
    rows->FindPrevious(u"C = 'c2'");
    EXPECT_EQ(rows->Value(u"K"), Variant(3980));
    rows->FindLast(u"C = 'c1'");
    EXPECT_EQ(rows->Value(u"K"), Variant(4990));
    const auto others = All();
    others->FindFirst(u"N = 4500");
    EXPECT_EQ(others->Value(u"K"), Variant(4500));
    others->FindFirst(u"N > 10000");
    EXPECT_TRUE(others->NoMatch());
    EXPECT_EQ(others->Value(u"K"), Variant(4500));
    EXPECT_EQ(others->RecordCount(), static_cast<std::size_t>(kRows));
}

TEST_F(FoundRowsTest, PositionsBeyondTheRowsAreRefused) {
    const auto rows = All();
    EXPECT_EQ(ErrorOf([&] { rows->SetAbsolutePosition(kRows); }), error::kInvalidArgument);
    EXPECT_EQ(ErrorOf([&] { (void)rows->ValueAt(kRows, 0); }), error::kNoCurrentRecord);
    EXPECT_EQ(rows->ValueAt(kRows - 1, 0), Variant(10 * (kRows - 1)));
    EXPECT_EQ(rows->RowsFound(kRows + 10), static_cast<std::size_t>(kRows));
}

TEST_F(FoundRowsTest, AClosedOneIsForgottenByTheFile) {
    {
        const auto rows = All();
        const auto others = All();
        rows->Close();
    }
    AddTo(*OpenTable(u"T"), 7);
    EXPECT_EQ(All()->RowCount(), static_cast<std::size_t>(kRows) + 1);
}

TEST_F(FoundRowsTest, ASortedJoinShowsWhatWasWrittenSince) {
    const auto rows = OpenDynaset(
        u"SELECT A.K, B.C FROM T AS A INNER JOIN T AS B ON A.N = B.K WHERE A.K < 100 ORDER BY A.C, A.K");
    ASSERT_EQ(rows->Value(u"K"), Variant(0));
    ASSERT_EQ(rows->Value(u"C"), Variant(u"c0"));
    const auto changed = At(0);
    changed->Edit();
    changed->SetValue(u"C", u"autre");
    changed->Update();
    EXPECT_EQ(rows->Value(u"C"), Variant(u"autre"));
    ExecuteElsewhere("UPDATE T SET C = 'ailleurs' WHERE K = 0");
    DBEngine::Instance().Idle(1);
    EXPECT_EQ(rows->Value(u"C"), Variant(u"ailleurs"));
    At(30)->Delete();
    rows->MoveNext();
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"K"); }), error::kRecordDeleted);
}

}  // namespace
}  // namespace quardele::dao
