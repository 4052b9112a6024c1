// Queries within queries.
#include "query_fixture.h"

namespace quardele::sql {
namespace {

struct Case {
    const char* name;
    const char* statement;
    Lines rows;
};

class SubqueryTest : public SmallFileTest {};

TEST_F(SubqueryTest, GivesItsRows) {
    const std::vector<Case> cases = {
        {"In",
         "SELECT Immat FROM V WHERE Immat IN (SELECT Immat FROM D WHERE Typ = 'VID')",
         {"'AA-1'", "'CC-3'"}},
        {"NotIn", "SELECT Immat FROM V WHERE Immat NOT IN (SELECT Immat FROM D)", {"'BB-2'"}},
        {"NullInTheSetLetsNothingBeOutside", "SELECT Immat FROM V WHERE 'XX' NOT IN (SELECT Typ FROM D)", {}},
        {"NullIsOutsideAnEmptySet",
         "SELECT Immat FROM V WHERE Marque NOT IN (SELECT Typ FROM D WHERE False)",
         {"'AA-1'", "'BB-2'", "'CC-3'", "'DD-4'"}},
        {"NullIsNeitherInNorOutside",
         "SELECT Immat FROM V WHERE Marque NOT IN (SELECT 'FIAT' FROM D)",
         {"'AA-1'", "'CC-3'"}},
        {"Exists",
         "SELECT Immat FROM V WHERE EXISTS (SELECT * FROM D WHERE D.Immat = V.Immat)",
         {"'AA-1'", "'CC-3'", "'DD-4'"}},
        {"NotExists",
         "SELECT Immat FROM V WHERE NOT EXISTS (SELECT Mois FROM D WHERE D.Immat = V.Immat)",
         {"'BB-2'"}},
        {"ScalarInTheList",
         "SELECT Immat, (SELECT Count(*) FROM D WHERE D.Immat = V.Immat) AS Nb FROM V",
         {"'AA-1' 2", "'BB-2' 0", "'CC-3' 1", "'DD-4' 1"}},
        {"ScalarWithoutRowIsNull",
         "SELECT Immat, (SELECT Max(Mois) FROM D WHERE D.Immat = V.Immat) FROM V",
         {"'AA-1' 24", "'BB-2' Null", "'CC-3' 6", "'DD-4' 12"}},
        {"ScalarInACondition",
         "SELECT Immat FROM V WHERE Km > (SELECT Avg(Km) FROM V)",
         {"'CC-3'", "'DD-4'"}},
        {"AliasOfASubqueryInTheOrder",
         "SELECT Immat, (SELECT Count(*) FROM D WHERE D.Immat = V.Immat) AS Nb FROM V ORDER BY Nb DESC, "
         "Immat",
         {"'AA-1' 2", "'CC-3' 1", "'DD-4' 1", "'BB-2' 0"}},
        {"TopOfACorrelatedOrder",
         "SELECT Immat, (SELECT TOP 1 Typ FROM D WHERE D.Immat = V.Immat ORDER BY Mois) AS P FROM V WHERE Km "
         "< "
         "3500",
         {"'AA-1' 'VID'", "'BB-2' Null", "'CC-3' 'VID'"}},
        {"InHaving",
         "SELECT Marque, Count(*) FROM V GROUP BY Marque HAVING Count(*) > (SELECT Count(*) FROM D WHERE "
         "Mois = "
         "24)",
         {"'RENAULT' 2"}},
        {"OfAGroup",
         "SELECT Marque, (SELECT Max(Km) FROM V AS W WHERE W.Marque = V.Marque) FROM V GROUP BY Marque",
         {"Null Null", "'FIAT' 2000", "'RENAULT' 3000"}},
        {"Any",
         "SELECT Immat FROM V WHERE Km / 500 < ANY (SELECT Mois FROM D)",
         {"'AA-1'", "'BB-2'", "'CC-3'", "'DD-4'"}},
        {"Some", "SELECT Immat FROM V WHERE Km / 200 = SOME (SELECT Mois FROM D)", {}},
        {"All", "SELECT Immat FROM V WHERE Km > ALL (SELECT Km FROM V WHERE Marque = 'RENAULT')", {"'DD-4'"}},
        {"AllOfNothing",
         "SELECT Immat FROM V WHERE Km > ALL (SELECT Km FROM V WHERE False) AND Km < 1500",
         {"'AA-1'"}},
        {"AnyOfNothing", "SELECT Immat FROM V WHERE Km > ANY (SELECT Km FROM V WHERE False)", {}},
        {"NotEqualToAll", "SELECT Immat FROM V WHERE Immat <> ALL (SELECT Immat FROM D)", {"'BB-2'"}},
        {"TwoLevels",
         "SELECT Immat FROM V WHERE EXISTS (SELECT * FROM D WHERE D.Immat = V.Immat AND D.Mois = (SELECT "
         "Max(Mois) FROM D AS E WHERE E.Immat = V.Immat) AND D.Mois > 6)",
         {"'AA-1'", "'DD-4'"}},
        {"SameTableInsideAndOutside",
         "SELECT Immat FROM V WHERE Km = (SELECT Max(Km) FROM V AS W WHERE W.Marque = V.Marque)",
         {"'BB-2'", "'CC-3'"}},
        {"InAnOnCondition",
         "SELECT V.Immat, D.Typ FROM V INNER JOIN D ON V.Immat = D.Immat AND D.Mois = (SELECT Max(Mois) FROM "
         "D "
         "AS E WHERE E.Immat = V.Immat) ORDER BY V.Immat",
         {"'AA-1' 'CT'", "'CC-3' 'VID'", "'DD-4' Null"}},
        {"OfAUnion",
         "SELECT Immat FROM V WHERE Immat IN (SELECT Immat FROM D WHERE Mois = 24 UNION SELECT 'BB-2' FROM "
         "D)",
         {"'AA-1'", "'BB-2'"}},
        {"WithoutTables", "SELECT (SELECT 1 + 1) AS Deux", {"2"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(DescriptionOf(Data(), c.statement), "");
        EXPECT_EQ(Get(c.statement), c.rows);
    }
}

TEST_F(SubqueryTest, StandsInTheFromClause) {
    const std::vector<Case> cases = {
        {"Rows",
         "SELECT * FROM (SELECT Immat, Km * 2 AS Double FROM V) AS T WHERE Double > 5000 ORDER BY Immat",
         {"'CC-3' 6000", "'DD-4' 8000"}},
        {"Qualified",
         "SELECT T.Immat FROM (SELECT * FROM V WHERE Marque = 'RENAULT') AS T ORDER BY T.Km DESC",
         {"'CC-3'", "'AA-1'"}},
        {"Groups", "SELECT Max(Nb) FROM (SELECT Immat, Count(*) AS Nb FROM D GROUP BY Immat) AS T", {"2"}},
        {"Joined",
         "SELECT V.Immat, T.Nb FROM V LEFT JOIN (SELECT Immat, Count(*) AS Nb FROM D GROUP BY Immat) AS T ON "
         "V.Immat = T.Immat ORDER BY V.Immat",
         {"'AA-1' 2", "'BB-2' Null", "'CC-3' 1", "'DD-4' 1"}},
        {"JoinedWithAnother",
         "SELECT A.Immat, B.Typ FROM (SELECT Immat FROM V) AS A INNER JOIN (SELECT Immat, Typ FROM D) AS B "
         "ON "
         "A.Immat = B.Immat WHERE B.Typ = 'VID' ORDER BY A.Immat",
         {"'AA-1' 'VID'", "'CC-3' 'VID'"}},
        {"Nested",
         "SELECT X FROM (SELECT Y AS X FROM (SELECT Immat AS Y FROM V) AS I) AS O WHERE X < 'BB-3'",
         {"'AA-1'", "'BB-2'"}},
        {"Union", "SELECT Count(*) FROM (SELECT Immat FROM V UNION ALL SELECT Immat FROM D) AS T", {"8"}},
        {"WithinASubquery",
         "SELECT Immat FROM V WHERE (SELECT Count(*) FROM (SELECT Typ FROM D WHERE D.Immat = V.Immat) AS T) "
         "> 1",
         {"'AA-1'"}},
        {"WithoutName", "SELECT Immat FROM (SELECT Immat FROM V WHERE Km = 1000)", {"'AA-1'"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(DescriptionOf(Data(), c.statement), "");
        EXPECT_EQ(Get(c.statement), c.rows);
    }
}

TEST_F(SubqueryTest, RowsOfAQueryInFromCannotBeChangedButBeLookedFor) {
    const auto query = Query::Prepare(Data(), u"SELECT * FROM (SELECT Immat, Km FROM V) AS T");
    const RowSet rows = query->Run();
    EXPECT_FALSE(rows.HasKeys());
    EXPECT_FALSE(rows.IsUpdatable(0));
    EXPECT_TRUE(query->Sources().empty());
    EXPECT_EQ(Condition(query, u"Km = 3000").FindForward(rows, 0), 2U);
}

TEST_F(SubqueryTest, ServesSearches) {
    const auto query = Query::Prepare(Data(), u"SELECT Immat, Km FROM V ORDER BY Immat");
    const RowSet rows = query->Run();
    const Condition newest(query, u"Km = (SELECT Max(Km) FROM V)");
    EXPECT_EQ(newest.FindForward(rows, 0), 3U);
    const Condition visited(query, u"EXISTS (SELECT * FROM D WHERE D.Immat = V.Immat AND Typ = 'VID')");
    EXPECT_EQ(visited.FindForward(rows, 1), 2U);
}

TEST_F(SubqueryTest, ServesActions) {
    EXPECT_EQ(Do("UPDATE V SET Km = (SELECT Max(Mois) FROM D WHERE D.Immat = V.Immat) WHERE Immat = 'AA-1'"),
              1U);
    EXPECT_EQ(Get("SELECT Km FROM V WHERE Immat = 'AA-1'"), Lines{"24"});
    EXPECT_EQ(Do("DELETE FROM V WHERE Immat NOT IN (SELECT Immat FROM D)"), 1U);
    EXPECT_EQ(Do("INSERT INTO V (Immat, Km) SELECT 'N' & Immat, (SELECT Count(*) FROM V) FROM V"), 3U);
    EXPECT_EQ(Get("SELECT DISTINCT Km FROM V WHERE Immat LIKE 'N*'"), Lines{"3"});
}

TEST_F(SubqueryTest, SeesNoRowThatItsOwnInsertAdds) {
    EXPECT_EQ(Do("INSERT INTO D SELECT Immat, 'X', (SELECT Count(*) FROM D) FROM V"), 4U);
    EXPECT_EQ(Get("SELECT DISTINCT Mois FROM D WHERE Typ = 'X'"), Lines{"4"});
}

TEST_F(SubqueryTest, MistakesHaveTheirNumbers) {
    const std::vector<std::pair<const char*, int>> cases = {
        {"SELECT * FROM V WHERE Km = (SELECT Mois FROM D)", 3354},
        {"SELECT * FROM V WHERE Km = (SELECT Immat, Mois FROM D)", 3306},
        {"SELECT * FROM V WHERE Km IN (SELECT * FROM D)", 3306},
        {"SELECT * FROM V WHERE Km IN (SELECT Immat FROM D)", 3464},
        {"SELECT * FROM V WHERE Km > ALL (SELECT Immat FROM D)", 3464},
        {"SELECT * FROM V WHERE Km IN (SELECT Inconnu FROM D)", 3061},
        {"SELECT * FROM V WHERE EXISTS (SELECT * FROM Inconnue)", 3078},
        {"SELECT * FROM V WHERE EXISTS (DELETE FROM D)", 3075},
        {"SELECT * FROM V WHERE EXISTS (SELECT * FROM D; DELETE FROM D)", 3075},
        {"SELECT * FROM (SELECT * FROM D", 3131},
        {"SELECT * FROM (DELETE FROM D) AS T", 3131},
        {"SELECT * FROM (SELECT Immat FROM D) AS T, V AS T", 3081},
        {"SELECT Mois FROM (SELECT Immat FROM D) AS T", 3061},
        {"SELECT Marque, (SELECT Count(*) FROM D WHERE D.Immat = V.Immat) FROM V GROUP BY Marque", 3122},
        {"UPDATE V SET Km = 1", 3129},
    };
    for (const auto& [statement, number] : cases) {
        EXPECT_EQ(ErrorOfStatement(Data(), statement), number)
            << statement << ": " << DescriptionOf(Data(), statement);
    }
}

TEST_F(SubqueryTest, MayBeRepeatedWhereAnItemMayBe) {
    const std::string visits = "(SELECT Count(*) FROM D WHERE D.Immat = V.Immat)";
    EXPECT_EQ(Get("SELECT DISTINCT " + visits + " AS Nombre FROM V ORDER BY " + visits + " DESC"),
              (Lines{"2", "1", "0"}));
    EXPECT_EQ(Get("SELECT " + visits + ", Count(*) FROM V GROUP BY " + visits), (Lines{"0 1", "1 2", "2 1"}));
    EXPECT_EQ(ErrorOfStatement(Data(), "SELECT DISTINCT Immat FROM V ORDER BY " + visits), 3093);
}

TEST_F(SubqueryTest, DepthIsLimited) {
    const auto nested = [](int levels, const std::string& open, const std::string& close) {
        std::string text = "SELECT 1 AS X FROM V WHERE Immat = 'AA-1'";
        for (int i = 0; i < levels; ++i) {
            text.insert(0, open);
            text += close;
        }
        return text;
    };
    EXPECT_EQ(Get(nested(20, "SELECT (", ") AS X")), Lines{"1"});
    EXPECT_EQ(Get(nested(20, "SELECT X FROM (", ") AS T")), Lines{"1"});
    EXPECT_EQ(ErrorOfStatement(Data(), nested(2000, "SELECT (", ") AS X")), 3360);
    EXPECT_EQ(ErrorOfStatement(Data(), nested(2000, "SELECT X FROM (", ") AS T")), 3360);
    EXPECT_EQ(ErrorOfStatement(Data(), nested(2000, "SELECT * FROM V WHERE EXISTS (", ")")), 3360);
}

TEST_F(SubqueryTest, DistinctRowsAreThoseOfTheTablesShown) {
    EXPECT_EQ(Get("SELECT DISTINCTROW V.Immat FROM V INNER JOIN D ON V.Immat = D.Immat ORDER BY V.Immat"),
              (Lines{"'AA-1'", "'CC-3'", "'DD-4'"}));
    EXPECT_EQ(Get("SELECT DISTINCTROW Marque FROM V INNER JOIN D ON V.Immat = D.Immat ORDER BY Marque"),
              (Lines{"Null", "'RENAULT'", "'RENAULT'"}));
    EXPECT_EQ(Get("SELECT DISTINCTROW Typ FROM D WHERE Typ = 'VID'").size(), 2U);
}

}  // namespace
}  // namespace quardele::sql
