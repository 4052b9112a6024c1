// Whatever way a plan takes to the rows, they are those of the plainest one: each statement is run on a table
// with indexes and on a table of the same rows without any.
#include <algorithm>

#include "change_fixture.h"

namespace quardele::sql {
namespace {

/// Texts that the collation tells apart by little, or not at all; more rows so that an index is worth it.
constexpr const char* kTexts[] = {
    "'AB-123-CD'", "'AB123CD'", "'ab-123-cd '", "'A-B123CD'", "'AB''123CD'", "'e'",     "'é'",     "'E'",
    "'É'",         "'ê'",       "''",           "Null",       "'coop'",      "'co-op'", "'CO-OP'", "'coor'",
    "'ae'",        "'æ'",       "'ß'",          "'ss'",       "'AB-124-CD'", "'Z'",     "'z  '",   "'ZZ'"};
constexpr int kFillers = 400;

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size())) {
        text.replace(at, what.size(), with);
    }
    return text;
}

class PlannedRowsTest : public ChangeTest {
 protected:
    void SetUp() override {
        jet::Step step = Data()->Begin();
        for (const std::string table : {"Plan", "Naif"}) {
            MakeTable(table);
        }
        step.Commit();
    }

    /// Runs a statement in which "{1}" and "{2}" stand for the tables, with and without indexes. Its order
    /// must name every row; without one the rows are compared as they come when sorted.
    void ExpectSame(const std::string& statement, std::size_t least = 1) {
        Lines planned = On(statement, "Plan");
        Lines naive = On(statement, "Naif");
        EXPECT_GE(naive.size(), least) << statement;
        if (statement.find("ORDER BY") == std::string::npos) {
            std::sort(planned.begin(), planned.end());
            std::sort(naive.begin(), naive.end());
        }
        EXPECT_EQ(planned, naive) << statement;
    }

    void ExpectSameWhere(const std::string& condition, std::size_t least = 1) {
        ExpectSame("SELECT * FROM {1} WHERE " + condition, least);
        ExpectSame("SELECT N FROM {1} WHERE " + condition + " ORDER BY T, N", least);
    }

    Lines On(const std::string& statement, const std::string& table) {
        return Get(Replaced(Replaced(statement, "{1}", table + "1"), "{2}", table + "2"));
    }

 private:
    void MakeTable(const std::string& name) {
        const std::string columns = "(N LONG, T TEXT(20), D DATETIME, A CURRENCY, P DECIMAL(10, 2), S SHORT)";
        Do("CREATE TABLE " + name + "1 " + columns);
        Do("CREATE TABLE " + name + "2 (M LONG, R LONG, U TEXT(20), V TEXT(5))");
        if (name == "Plan") {
            Do("CREATE UNIQUE INDEX ParN ON Plan1 (N) WITH PRIMARY");
            Do("CREATE INDEX ParT ON Plan1 (T)");
            Do("CREATE INDEX ParD ON Plan1 (D DESC)");
            Do("CREATE INDEX ParA ON Plan1 (A)");
            Do("CREATE INDEX ParP ON Plan1 (P)");
            Do("CREATE INDEX ParST ON Plan1 (S, T)");
            Do("CREATE UNIQUE INDEX ParM ON Plan2 (M) WITH PRIMARY");
            Do("CREATE INDEX ParR ON Plan2 (R)");
            Do("CREATE INDEX ParUV ON Plan2 (U, V)");
        }
        Fill(name);
    }

    void Fill(const std::string& name) {
        int number = 0;
        for (const char* text : kTexts) {
            AddRow(name, ++number, text);
        }
        for (int filler = 0; filler < kFillers; ++filler) {
            AddRow(name, ++number, "'F" + std::to_string(filler % 50) + "'");
        }
    }

    void AddRow(const std::string& name, int n, const std::string& text) {
        const std::string whole = std::to_string(n % 7);
        const bool lacking = n % 11 == 0;
        Do("INSERT INTO " + name + "1 VALUES (" + std::to_string(n) + ", " + text + ", " +
           (lacking ? "Null" : "#01/" + std::to_string(n % 28 + 1) + "/2026#") + ", " +
           (lacking ? "Null" : whole + ".25") + ", " + (lacking ? "Null" : whole + ".5") + ", " +
           (n % 5 == 0 ? "Null" : whole) + ")");
        // Some rows have no partner, some several, some none that they name.
        for (int partner = 0; partner < n % 3; ++partner) {
            Do("INSERT INTO " + name + "2 VALUES (" + std::to_string(n * 10 + partner) + ", " +
               (n % 13 == 0 ? "Null" : std::to_string(n % 17 == 0 ? n + 100000 : n)) + ", " + text + ", '" +
               std::to_string(partner) + "')");
        }
    }
};

TEST_F(PlannedRowsTest, EqualTextsAreThoseOfTheCollation) {
    for (const char* text : kTexts) {
        ExpectSameWhere("T = " + std::string(text), std::string(text) == "Null" ? 0 : 1);
        ExpectSameWhere(std::string(text) + " = T", 0);
    }
}

TEST_F(PlannedRowsTest, RangesOfTexts) {
    for (const char* text : kTexts) {
        for (const char* comparison : {"<", "<=", ">", ">="}) {
            ExpectSameWhere(std::string("T ") + comparison + " " + text, 0);
        }
    }
    ExpectSameWhere("T BETWEEN 'co-op' AND 'AB'", 5);
    ExpectSameWhere("T > 'AB-123-CD' AND T < 'AB-124-CD'", 0);
    ExpectSameWhere("T >= 'E' AND T > 'e' AND T <= 'é'");
}

TEST_F(PlannedRowsTest, NumbersDatesAmountsAndDecimals) {
    for (const char* condition :
         {"N = 7", "N = 7.5 OR N = 7", "N > 420", "N BETWEEN 3 AND 1", "N < 2.5", "D = #01/05/2026#",
          "D > #01/27/2026#", "D < #01/02/2026 12:00#", "D BETWEEN #01/03/2026# AND #01/04/2026#", "A = 3.25",
          "A > 5.25", "A <= 0.25", "P = 2.5", "P > 5.5", "P < 1", "S = 3 AND T = 'F3'", "S = 3 AND T > 'F45'",
          "S = 3 AND N < 60", "S > 5 AND T = 'F7'"}) {
        ExpectSameWhere(condition);
    }
    ExpectSameWhere("N = 7.5", 0);
    ExpectSameWhere("D = Null", 0);
    ExpectSameWhere("S IS NULL AND T = 'F10'");
    ExpectSameWhere("A IS NULL");
}

TEST_F(PlannedRowsTest, SeveralWaysOfACondition) {
    for (const char* condition :
         {"T = 'E' OR T = 'coop'", "T = 'e' OR N = 6", "T IN ('é', 'E', Null, 'Z', 'z')",
          "N IN (1, 2, 3, 3, 900)", "(T = 'E' OR N = 8) AND S > 0", "T = 'F1' AND S = 3 OR N = 5",
          "(N = 1 OR N = 2) AND (T = 'AB123CD' OR T = 'E')", "N = 4 OR T LIKE 'co*'", "N = 4 OR N > 415"}) {
        ExpectSameWhere(condition);
    }
    ExpectSameWhere("T NOT IN ('é', 'E')", 100);
    ExpectSameWhere("NOT (N = 1 OR N = 2)", 100);
}

TEST_F(PlannedRowsTest, JoinsOfAllKindsWithConditionsOnEitherSide) {
    for (const char* kind : {"INNER", "LEFT", "RIGHT"}) {
        const std::string joined = std::string("SELECT N, T, M, R FROM {1} ") + kind + " JOIN {2} ON ";
        for (const char* on : {"{1}.N = {2}.R", "{1}.T = {2}.U", "{2}.R = {1}.N AND {2}.V = '0'",
                               "{1}.N = {2}.R AND {1}.S > 2", "{1}.T = {2}.U AND {1}.T = {2}.V",
                               "{1}.N = {2}.R AND {1}.T = {2}.U"}) {
            for (const char* where :
                 {"", " WHERE N = 5", " WHERE R = 5", " WHERE T = 'E'", " WHERE U = 'F3'", " WHERE R IS NULL",
                  " WHERE N IS NULL", " WHERE NOT (R > 3)", " WHERE U = 'E' OR T = 'E'",
                  " WHERE R = 5 OR N = 8", " WHERE M > 100 AND N < 300", " WHERE R IS NOT NULL AND S = 1",
                  " WHERE U IN ('E', 'F4')", " WHERE V = '1' OR N = 9", " WHERE U LIKE 'co*'",
                  " WHERE (M BETWEEN 10 AND 60) OR T = 'Z'"}) {
                ExpectSame(joined + on + where, 0);
                ExpectSame(joined + on + where + " ORDER BY T, N, M", 0);
            }
        }
    }
}

TEST_F(PlannedRowsTest, JoinsAreThePairsThatFulfilTheirCondition) {
    const std::string items = "SELECT N, M FROM ";
    for (const char* condition : {"{1}.N = {2}.R", "{1}.T = {2}.U"}) {
        Lines joined = On(items + "{1} INNER JOIN {2} ON " + condition, "Plan");
        // The negation hides the equality from the planner.
        Lines pairs = On(items + "{1}, {2} WHERE NOT NOT (" + condition + ")", "Plan");
        std::sort(joined.begin(), joined.end());
        std::sort(pairs.begin(), pairs.end());
        EXPECT_EQ(joined, pairs) << condition;
        EXPECT_FALSE(joined.empty());
    }
}

TEST_F(PlannedRowsTest, OrdersFromAnIndexAndFirstRows) {
    for (const char* order : {"N", "N DESC", "T, N", "T DESC, N DESC", "D, N", "D DESC, N", "A DESC, N",
                              "P, N DESC", "S, T, N", "S DESC, T, N"}) {
        ExpectSame(std::string("SELECT N, T, D FROM {1} ORDER BY ") + order);
        ExpectSame(std::string("SELECT TOP 7 N FROM {1} ORDER BY ") + order);
        ExpectSame(std::string("SELECT TOP 7 PERCENT N FROM {1} WHERE S > 1 ORDER BY ") + order);
    }
    // Rows that are equal to the last one come too, in physical order.
    for (const char* order : {"T", "D DESC", "S, T", "A"}) {
        ExpectSame(std::string("SELECT N FROM {1} ORDER BY ") + order);
        ExpectSame(std::string("SELECT TOP 3 N FROM {1} ORDER BY ") + order, 3);
    }
}

TEST_F(PlannedRowsTest, GroupsAndDistinctRows) {
    ExpectSame("SELECT T, Count(*), Max(D), Sum(A), Min(P) FROM {1} GROUP BY T ORDER BY T");
    ExpectSame(
        "SELECT S, T, Count(S) FROM {1} WHERE T > 'E' GROUP BY S, T HAVING Count(*) > 1 ORDER BY S, T");
    ExpectSame("SELECT DISTINCT T FROM {1} ORDER BY T");
    ExpectSame("SELECT DISTINCT S, D FROM {1} WHERE N IN (3, 4, 5, 80) OR T = 'F3' ORDER BY S, D");
    ExpectSame("SELECT U, Count(N) FROM {1} RIGHT JOIN {2} ON {1}.N = {2}.R GROUP BY U ORDER BY U");
}

TEST_F(PlannedRowsTest, ShortCallsGiveWhatTheirFunctionsGive) {
    // A text that is made by another function goes the long way.
    for (const char* call : {"Trim({})", "LTrim({})", "RTrim({})", "Left({}, 2)", "Left({}, 0)",
                             "InStr({}, 'b')", "InStr(2, {}, '-')", "InStr(1, {}, 'CO')", "InStr({}, '')",
                             "Trim({} & '')", "'x' & {}", "{} & S", "{} & {}"}) {
        const std::string brief = Replaced(call, "{}", "T");
        const std::string longer = Replaced(call, "{}", "IIf(N > 0, T, 0)");
        EXPECT_EQ(On("SELECT " + brief + " FROM {1} ORDER BY N", "Plan"),
                  On("SELECT " + longer + " FROM {1} ORDER BY N", "Plan"))
            << call;
        ExpectSame("SELECT N FROM {1} ORDER BY " + brief + " DESC, N");
    }
    EXPECT_EQ(On("SELECT DateAdd('m', S, D) FROM {1} ORDER BY N", "Plan"),
              On("SELECT DateAdd('m', S, IIf(N > 0, D, 'x')) FROM {1} ORDER BY N", "Plan"));
}

}  // namespace
}  // namespace quardele::sql
