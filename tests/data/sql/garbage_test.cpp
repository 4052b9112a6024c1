// Whatever is typed gives rows or an error with a number, never a crash.
#include <random>

#include "change_fixture.h"
#include "syntax/parser.h"
#include "syntax/printer.h"

namespace quardele::sql {
namespace {

constexpr std::size_t kTexts = 30000;
constexpr std::size_t kActions = 20000;
constexpr unsigned kSeed = 20261231;

const std::vector<std::string>& Words() {
    static const std::vector<std::string> words = {"SELECT",
                                                   "FROM",
                                                   "WHERE",
                                                   "GROUP BY",
                                                   "HAVING",
                                                   "ORDER BY",
                                                   "DISTINCT",
                                                   "TOP 2",
                                                   "TOP",
                                                   "AS",
                                                   "AND",
                                                   "OR",
                                                   "NOT",
                                                   "XOR",
                                                   "(SELECT",
                                                   "EXISTS (SELECT",
                                                   "= ANY (SELECT",
                                                   "DISTINCTROW",
                                                   "ALIKE",
                                                   "&H1F",
                                                   "Yes",
                                                   "LIKE",
                                                   "BETWEEN",
                                                   "IN",
                                                   "IS",
                                                   "NULL",
                                                   "TRUE",
                                                   "FALSE",
                                                   "INNER JOIN",
                                                   "LEFT JOIN",
                                                   "RIGHT JOIN",
                                                   "ON",
                                                   "UNION",
                                                   "INSERT INTO",
                                                   "VALUES (",
                                                   "UPDATE",
                                                   "SET",
                                                   "DELETE",
                                                   "CREATE TABLE",
                                                   "CREATE INDEX",
                                                   "ALTER TABLE",
                                                   "ADD COLUMN",
                                                   "DROP TABLE",
                                                   "PRIMARY KEY",
                                                   "UNIQUE",
                                                   "CONSTRAINT",
                                                   "DEFAULT",
                                                   "WITH IGNORE NULL",
                                                   "TEXT(9)",
                                                   "LONG",
                                                   "COUNTER",
                                                   "MOD",
                                                   "ASC",
                                                   "DESC",
                                                   "(",
                                                   ")",
                                                   ",",
                                                   ".",
                                                   ";",
                                                   "=",
                                                   "<>",
                                                   "<",
                                                   ">=",
                                                   "+",
                                                   "-",
                                                   "*",
                                                   "/",
                                                   "\\",
                                                   "^",
                                                   "&",
                                                   "'PAR'",
                                                   "'",
                                                   "\"",
                                                   "''",
                                                   "#12/31/26#",
                                                   "#",
                                                   "[",
                                                   "]",
                                                   "[TSITE]",
                                                   "TSITE",
                                                   "TSITE_CODE",
                                                   "TSITE_LIBELLE",
                                                   "TSITE_Inactif",
                                                   "TSITE.*",
                                                   "T",
                                                   "1",
                                                   "0",
                                                   "2.5",
                                                   "1e9",
                                                   "Count(*)",
                                                   "Sum(",
                                                   "Max(",
                                                   "First(",
                                                   "IIf(",
                                                   "Left(",
                                                   "InStr(",
                                                   "DateAdd(",
                                                   "'m'",
                                                   "Nz(",
                                                   "Format(",
                                                   "Switch(",
                                                   "EXISTS",
                                                   "é",
                                                   "@",
                                                   "{",
                                                   "!",
                                                   "'[a-'",
                                                   "'*a?#'",
                                                   "-1",
                                                   "99999999999"};
    return words;
}

class Garbage {
 public:
    std::string RandomWords() {
        std::string text = Chance(2) ? "SELECT " : Chance(2) ? "UPDATE TSITE SET " : "";
        for (std::size_t i = Below(25); i > 0; --i) {
            text += Words()[Below(Words().size())] + (Chance(4) ? "" : " ");
        }
        return text;
    }

    /// A query that is nearly right: some words of it are lost, doubled or exchanged.
    std::string DamagedQuery() {
        static const std::vector<std::string> good = {
            "SELECT TSITE_CODE , Count(*) AS n FROM TSITE WHERE TSITE_Inactif = False GROUP BY TSITE_CODE "
            "HAVING Count(*) > 0 ORDER BY n DESC , 1",
            "SELECT a.* , IIf( b.TSITE_CODE Is Null , 'x' , Left( b.TSITE_LIBELLE , 2 ) ) FROM TSITE AS a "
            "LEFT JOIN "
            "TSITE AS b ON a.TSITE_CODE = b.TSITE_CODE WHERE a.TSITE_CODE BETWEEN 'A' AND 'M' OR NOT "
            "a.TSITE_LIBELLE LIKE '[a-c]*'",
            "SELECT TOP 3 * FROM TSITE WHERE TSITE_CODE IN ( 'PAR' , 'LYO' , Null ) AND DateAdd( 'm' , 1 , "
            "#1/31/26# ) > #2/28/26# ORDER BY Len( TSITE_CODE ) , TSITE_LIBELLE",
            "SELECT DISTINCTROW a.TSITE_CODE , ( SELECT Count(*) FROM TSITE AS b WHERE b.TSITE_CODE < "
            "a.TSITE_CODE ) AS n FROM TSITE AS a WHERE EXISTS ( SELECT * FROM TSITE AS c WHERE c.TSITE_CODE "
            "= "
            "a.TSITE_CODE ) ORDER BY n DESC",
            "SELECT T.* , &H1F FROM ( SELECT TSITE_CODE , StDev( Len( TSITE_LIBELLE ) ) AS n FROM TSITE "
            "GROUP "
            "BY TSITE_CODE ) AS T INNER JOIN TSITE AS S ON T.TSITE_CODE = S.TSITE_CODE WHERE S.TSITE_CODE "
            "NOT "
            "IN ( SELECT TSITE_LIBELLE FROM TSITE UNION SELECT 'x' ) AND S.TSITE_CODE >= ALL ( SELECT "
            "TSITE_CODE FROM TSITE WHERE TSITE_CODE <= S.TSITE_CODE ) OR T.TSITE_CODE ALIKE 'P%'"};
        return Damaged(good[Below(good.size())]);
    }

    /// The same with an action statement.
    std::string DamagedAction() {
        static const std::vector<std::string> good = {
            "INSERT INTO TSITE ( TSITE_CODE , TSITE_LIBELLE ) VALUES ( 'NEW' , 'a' & 'b' ) ;",
            "INSERT INTO TSITE SELECT 'x' & TSITE_CODE , TSITE_LIBELLE , False FROM TSITE WHERE "
            "TSITE_Inactif = False",
            "UPDATE TSITE SET TSITE_LIBELLE = Left( TSITE_CODE , 2 ) , TSITE_Inactif = True WHERE "
            "TSITE_CODE > 'L'",
            "UPDATE TSITE AS a INNER JOIN TSITE AS b ON a.TSITE_CODE = b.TSITE_CODE SET a.TSITE_LIBELLE = "
            "b.TSITE_CODE",
            "DELETE a.* FROM TSITE AS a WHERE a.TSITE_CODE IN ( 'PAR' , 'LYO' )",
            "CREATE TABLE T ( a COUNTER PRIMARY KEY , b TEXT(9) NOT NULL DEFAULT 'x' , c DECIMAL(9,2) , "
            "CONSTRAINT k UNIQUE ( b , c ) )",
            "CREATE UNIQUE INDEX I ON TSITE ( TSITE_LIBELLE DESC , TSITE_CODE ) WITH IGNORE NULL",
            "ALTER TABLE TSITE ADD COLUMN d LONG DEFAULT 1",
            "DROP TABLE TSITE"};
        return Damaged(good[Below(good.size())]);
    }

    std::string RandomUnits() {
        std::string text = "SELECT ";
        for (std::size_t i = Below(60); i > 0; --i) {
            text += static_cast<char>(32 + Below(95));
        }
        return text;
    }

    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

 private:
    std::string Damaged(const std::string& statement) {
        std::vector<std::string> words;
        std::string word;
        for (const char c : statement + " ") {
            if (c != ' ') {
                word += c;
            } else {
                words.push_back(word);
                word.clear();
            }
        }
        for (std::size_t i = 1 + Below(4); i > 0; --i) {
            const std::size_t at = Below(words.size());
            switch (Below(4)) {
                case 0:
                    words[at].clear();
                    break;
                case 1:
                    words[at] += " " + words[at];
                    break;
                case 2:
                    words[at] = words[Below(words.size())];
                    break;
                default:
                    words[at] = Words()[Below(Words().size())];
            }
        }
        std::string text;
        for (const std::string& part : words) {
            text += part + " ";
        }
        return text;
    }

    bool Chance(std::size_t oneIn) { return Below(oneIn) == 0; }

    std::mt19937 random_{kSeed};
};

/// Runs a text as a statement and as a condition; true when the statement gave rows.
bool TryAll(const std::string& text, const std::shared_ptr<const Query>& query, const RowSet& rows) {
    const int condition =
        ErrorOf([&] { static_cast<void>(Condition(query, basic::FromUtf8(text)).FindForward(rows, 0)); });
    EXPECT_GE(condition, 0);
    return ErrorOfStatement(Stock(), text) == 0;
}

TEST(GarbageTest, GivesRowsOrAnError) {
    Garbage garbage;
    const auto query = Query::Prepare(Stock(), u"SELECT * FROM TSITE");
    const RowSet rows = query->Run();
    std::size_t ran = 0;
    for (std::size_t tried = 0; tried < kTexts;) {
        for (const std::string& text :
             {garbage.RandomWords(), garbage.DamagedQuery(), garbage.RandomUnits()}) {
            SCOPED_TRACE(text);
            ran += TryAll(text, query, rows) ? 1 : 0;
            ++tried;
        }
    }
    // The loop must have seen both the grammar's errors and the executor.
    EXPECT_GT(ran, 20U);
    EXPECT_LT(ran, kTexts);
}

using GarbageActionTest = ChangeTest;

TEST_F(GarbageActionTest, DoesWhatItSaysOrIsAnError) {
    constexpr std::size_t kStatementsOfAStep = 20;
    const jet::test::TempFolder folder;
    const auto database = jet::Database::Open(folder.Copy(SampleFile("STOCK/SERVANDA.MDB")));
    const Lines before = Rows(database, "SELECT * FROM TSITE");
    Garbage garbage;
    std::size_t ran = 0;
    for (std::size_t tried = 0; tried < kActions; tried += kStatementsOfAStep) {
        // Dropped, so that there is always something to change.
        const jet::Step step = database->Begin();
        for (std::size_t i = 0; i < kStatementsOfAStep; ++i) {
            const std::string text = i % 4 == 0 ? garbage.RandomWords() : garbage.DamagedAction();
            SCOPED_TRACE(text);
            const int number = ErrorOf([&] { Execute(*database, basic::FromUtf8(text)); });
            EXPECT_GE(number, 0);
            ran += number == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(ran, 20U);
    EXPECT_LT(ran, kActions);
    EXPECT_EQ(Rows(database, "SELECT * FROM TSITE"), before);
}

TEST_F(GarbageActionTest, LongTextsGiveAnError) {
    for (const char unit : {'(', '[', '\'', '"', '#', '-', '.', ',', '=', '1', 'a', '*', ' ', ';', '&'}) {
        const std::string text(65400, unit);
        for (const std::string start :
             {"INSERT INTO TTYP VALUES (", "INSERT INTO TTYP (",
              "UPDATE TTYP SET TTYP_LIBELLE = ", "UPDATE TTYP SET ", "DELETE FROM TTYP WHERE TTYP_CODE = '",
              "CREATE TABLE ", "CREATE TABLE T (a TEXT DEFAULT ", "CREATE INDEX I ON TTYP (",
              "ALTER TABLE TTYP ADD ", "DROP TABLE "}) {
            EXPECT_NE(ErrorOfAction(start + text), 0) << start << unit;
        }
    }
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"12"});
}

TEST(GarbageTest, WhatIsReadIsWrittenSoThatItReadsTheSame) {
    Garbage garbage;
    std::size_t read = 0;
    for (std::size_t i = 0; i < kTexts; ++i) {
        const Text text = basic::FromUtf8(garbage.DamagedQuery());
        Text printed;
        if (ErrorOf([&] { printed = Print(ParseStatement(text)); }) == 0) {
            EXPECT_EQ(basic::ToUtf8(Print(ParseStatement(printed))), basic::ToUtf8(printed));
            ++read;
        }
    }
    EXPECT_GT(read, 100U);
}

TEST(GarbageTest, LongTextsGiveAnError) {
    for (const char unit : {'(', '[', '\'', '"', '#', '-', '.', ',', '=', '1', 'a', '*', ' ', ';', '&'}) {
        const std::string text(65536, unit);
        EXPECT_NE(ErrorOfStatement(Stock(), text), 0) << unit;
        EXPECT_NE(ErrorOfStatement(Stock(), "SELECT * FROM TSITE WHERE " + text), 0) << unit;
        EXPECT_NE(ErrorOfStatement(Stock(), "SELECT * FROM TSITE WHERE TSITE_CODE = '" + text), 0) << unit;
    }
}

}  // namespace
}  // namespace quardele::sql
