// Rows that are found in steps: the same ones, in the same order, as when all are found at once.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

/// A table of many rows whose keys stand in no order, with and without a primary key.
class StepsTest : public ChangeTest {
 protected:
    static constexpr int kRows = 3000;

    StepsTest() {
        Do("CREATE TABLE T (K TEXT(10) CONSTRAINT PK PRIMARY KEY, C TEXT(20), N LONG)");
        Do("CREATE INDEX BYC ON T (C)");
        Do("CREATE TABLE U (K TEXT(10), N LONG)");
        auto step = Data()->Begin();
        for (int i = 0; i < kRows; ++i) {
            constexpr int kSpread = 1787;
            const int shuffled = i * kSpread % kRows;
            const std::string key = KeyOf(shuffled);
            const std::string number = std::to_string(shuffled);
            Do("INSERT INTO T VALUES ('" + key + "', 'c" + std::to_string(shuffled % 7) + "', " + number +
               ")");
            Do("INSERT INTO U VALUES ('" + key + "', " + number + ")");
        }
        step.Commit();
    }

    static std::string KeyOf(int number) { return "K" + std::to_string(10000 + number); }

    [[nodiscard]] std::shared_ptr<Query> Prepared(const std::string& statement) {
        return Query::Prepare(Data(), basic::FromUtf8(statement));
    }
    /// The first column of what steps find, asked for row by row.
    static Lines InSteps(const Query& query, const RowSet& rows) {
        Lines lines;
        for (std::size_t row = 0; rows.Found(row + 1) > row; ++row) {
            lines.push_back(Shown(rows.Value(row, 0)));
        }
        EXPECT_EQ(rows.Size(), lines.size());
        EXPECT_EQ(rows.Found(), lines.size());
        EXPECT_FALSE(query.Columns().empty());
        return lines;
    }
    [[nodiscard]] Lines AtOnce(const std::string& statement) {
        const auto query = Prepared(statement);
        const RowSet rows = query->Run();
        Lines lines;
        for (std::size_t row = 0; row < rows.Size(); ++row) {
            lines.push_back(Shown(rows.Value(row, 0)));
        }
        return lines;
    }
    static std::size_t FoundFirst(const Query& query) { return query.RunInSteps().Found(1); }
};

TEST_F(StepsTest, FindTheRowsOfTheWholeRunInItsOrder) {
    for (const char* statement :
         {"SELECT * FROM T", "SELECT * FROM U", "SELECT * FROM T ORDER BY K",
          "SELECT * FROM T ORDER BY K DESC", "SELECT * FROM T ORDER BY C", "SELECT * FROM T WHERE N < 2900",
          "SELECT * FROM T WHERE Left(C, 2) = 'c3'", "SELECT * FROM T WHERE InStr(1, K, '99') <> 0",
          "SELECT * FROM T WHERE N = 2999", "SELECT * FROM T WHERE N > 2990 ORDER BY K DESC",
          "SELECT * FROM T WHERE K LIKE '*7' AND NOT (N < 10 OR C = 'c1')", "SELECT * FROM T WHERE N > 5000",
          "SELECT * FROM U WHERE N > 1500", "SELECT * FROM U WHERE 1 = 0", "SELECT * FROM T WHERE 1 = 1",
          "SELECT TOP 5 * FROM T WHERE N > 7", "SELECT * FROM T WHERE N + 1 > 30 ORDER BY N",
          "SELECT DISTINCT C FROM T", "SELECT T.K FROM T INNER JOIN U ON T.K = U.K WHERE U.N > 2000"}) {
        const auto query = Prepared(statement);
        EXPECT_EQ(InSteps(*query, query->RunInSteps()), AtOnce(statement)) << statement;
    }
}

TEST_F(StepsTest, LookNoFurtherThanAsked) {
    constexpr std::size_t kStep = 100;
    for (const char* statement :
         {"SELECT * FROM T", "SELECT * FROM U", "SELECT * FROM T ORDER BY K DESC",
          "SELECT * FROM T WHERE N < 2900", "SELECT * FROM T WHERE InStr(1, C, 'c3') <> 0",
          "SELECT * FROM U WHERE N > 1500"}) {
        const std::size_t found = FoundFirst(*Prepared(statement));
        EXPECT_GE(found, 1U) << statement;
        EXPECT_LE(found, kStep) << statement;
    }
}

TEST_F(StepsTest, ErrorsOfConditionsComeAtOnce) {
    Do("INSERT INTO T (K, C, N) VALUES ('Z', 'douze', 1)");
    const auto query = Prepared("SELECT * FROM T WHERE CInt(Replace(C, 'c', '')) >= 0");
    EXPECT_EQ(ErrorOf([&] { (void)query->RunInSteps(); }), basic::error::kTypeMismatch);
}

TEST_F(StepsTest, AConditionStopsAtTheFirstRowThatFulfilsIt) {
    const auto query = Prepared("SELECT * FROM T");
    const RowSet rows = query->RunInSteps();
    const Condition condition(query, u"N > 100");
    EXPECT_EQ(condition.FindForward(rows, 0), std::optional<std::size_t>(101));
    EXPECT_LT(rows.Found(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(Condition(query, u"N > 5000").FindForward(rows, 0), std::nullopt);
    EXPECT_EQ(rows.Found(), static_cast<std::size_t>(kRows));
}

TEST_F(StepsTest, AnEqualityIsFoundWhereverItsRowLies) {
    const auto query = Prepared("SELECT * FROM T");
    const RowSet rows = query->RunInSteps();
    EXPECT_EQ(Condition(query, u"N = 2500").FindForward(rows, 0), std::optional<std::size_t>(2500));
    EXPECT_EQ(Condition(query, u"N = 7").FindBackward(rows, kRows - 1), std::optional<std::size_t>(7));
}

TEST_F(StepsTest, ARowWhoseKeyMovesAheadIsNotFoundTwice) {
    const auto query = Prepared("SELECT * FROM T");
    const RowSet rows = query->RunInSteps();
    ASSERT_GE(rows.Found(10), 10U);
    const auto moved = rows.Key(3, 0);
    Do("UPDATE T SET K = 'Z' WHERE K = '" + KeyOf(3) + "'");
    EXPECT_EQ(rows.Size(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(rows.Key(3, 0), moved);
    EXPECT_EQ(Shown(rows.Value(kRows - 1, 0)), "'" + KeyOf(kRows - 1) + "'");
}

TEST_F(StepsTest, ChangesAheadCountAndThoseBehindDoNot) {
    const auto query = Prepared("SELECT * FROM T");
    const RowSet rows = query->RunInSteps();
    ASSERT_GE(rows.Found(10), 10U);
    Do("DELETE FROM T WHERE N = 2000");
    Do("DELETE FROM T WHERE N = 2");
    Do("INSERT INTO T VALUES ('A', 'devant', 1)");
    Do("INSERT INTO T VALUES ('Z', 'fin', 1)");
    EXPECT_EQ(rows.Size(), static_cast<std::size_t>(kRows));
    EXPECT_EQ(Shown(rows.Value(0, 0)), "'" + KeyOf(0) + "'");
    EXPECT_EQ(ErrorOf([&] { (void)rows.Value(2, 0); }), basic::error::kRecordDeleted);
    EXPECT_EQ(Shown(rows.Value(2000, 0)), "'" + KeyOf(2001) + "'");
    EXPECT_EQ(Shown(rows.Value(kRows - 1, 0)), "'Z'");
}

TEST_F(StepsTest, AFilterThatIsFoundAtOnceInTheEndFindsNoRowTwiceEither) {
    const auto query = Prepared("SELECT * FROM T WHERE N < 50 OR N > 2900");
    const RowSet rows = query->RunInSteps();
    ASSERT_GE(rows.Found(10), 10U);
    Do("UPDATE T SET K = 'Z' WHERE N = 3");
    Do("UPDATE T SET N = 2950 WHERE N = 5");
    EXPECT_EQ(rows.Size(), 149U);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(rows.Value(3, 0)); }), 3167) << "it has another key";
    EXPECT_EQ(Shown(rows.Value(148, 0)), "'" + KeyOf(kRows - 1) + "'");
}

}  // namespace
}  // namespace quardele::sql
