// Whatever is typed gives rows or an error with a number, never a crash.
#include <chrono>
#include <random>

#include "parser.h"
#include "printer.h"
#include "sql_fixture.h"

namespace quardele::sql {
namespace {

constexpr auto kTime = std::chrono::milliseconds(2000);
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
        std::string text = Chance(2) ? "SELECT " : "";
        for (std::size_t i = Below(25); i > 0; --i) {
            text += Words()[Below(Words().size())] + (Chance(4) ? "" : " ");
        }
        return text;
    }

    /// A statement that is nearly right: some words of it are lost, doubled or exchanged.
    std::string Damaged() {
        static const std::vector<std::string> good = {
            "SELECT TSITE_CODE , Count(*) AS n FROM TSITE WHERE TSITE_Inactif = False GROUP BY TSITE_CODE "
            "HAVING Count(*) > 0 ORDER BY n DESC , 1",
            "SELECT a.* , IIf( b.TSITE_CODE Is Null , 'x' , Left( b.TSITE_LIBELLE , 2 ) ) FROM TSITE AS a "
            "LEFT JOIN "
            "TSITE AS b ON a.TSITE_CODE = b.TSITE_CODE WHERE a.TSITE_CODE BETWEEN 'A' AND 'M' OR NOT "
            "a.TSITE_LIBELLE LIKE '[a-c]*'",
            "SELECT TOP 3 * FROM TSITE WHERE TSITE_CODE IN ( 'PAR' , 'LYO' , Null ) AND DateAdd( 'm' , 1 , "
            "#1/31/26# ) > #2/28/26# ORDER BY Len( TSITE_CODE ) , TSITE_LIBELLE"};
        std::vector<std::string> words;
        std::string word;
        for (const char c : good[Below(good.size())] + " ") {
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

    std::string RandomUnits() {
        std::string text = "SELECT ";
        for (std::size_t i = Below(60); i > 0; --i) {
            text += static_cast<char>(32 + Below(95));
        }
        return text;
    }

    std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

 private:
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
    const auto end = std::chrono::steady_clock::now() + kTime;
    std::size_t tried = 0;
    std::size_t ran = 0;
    while (std::chrono::steady_clock::now() < end) {
        for (const std::string& text : {garbage.RandomWords(), garbage.Damaged(), garbage.RandomUnits()}) {
            SCOPED_TRACE(text);
            ran += TryAll(text, query, rows) ? 1 : 0;
            ++tried;
        }
    }
    // The loop must have seen both the grammar's errors and the executor.
    EXPECT_GT(tried, 1000U);
    EXPECT_GT(ran, 20U);
}

TEST(GarbageTest, WhatIsReadIsWrittenSoThatItReadsTheSame) {
    Garbage garbage;
    const auto end = std::chrono::steady_clock::now() + kTime / 4;
    std::size_t read = 0;
    while (std::chrono::steady_clock::now() < end) {
        const Text text = basic::FromUtf8(garbage.Damaged());
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
