// Statements and conditions of any text. What can be read is written so that it reads the same.
#include <stdexcept>
#include <string_view>

#include <sql/statement.h>

#include "harness.h"
#include "sql_error.h"
#include "syntax/action_parser.h"
#include "syntax/parser.h"
#include "syntax/printer.h"

namespace quardele::fuzz {

namespace {

/// The longest text that is read as a statement.
constexpr std::size_t kLongest = 65536;

[[nodiscard]] basic::Text RewriteStatement(basic::TextView text) {
    return sql::Print(sql::ParseStatement(text));
}

[[nodiscard]] basic::Text RewriteCondition(basic::TextView text) {
    return sql::Print(*sql::ParseCondition(text));
}

template <class Rewrite>
void CheckRewriting(const basic::Text& text, const Rewrite& rewrite) {
    const basic::Text printed = rewrite(text);
    basic::Text again;
    try {
        again = rewrite(printed);
    } catch (const basic::RuntimeError& failure) {
        // Brackets make a tree deeper, and one that is nearly too deep as it stands is so then.
        if (failure.Number() == sql::error::kTooComplex) {
            return;
        }
        throw std::logic_error("written so that it cannot be read: " + basic::ToUtf8(printed));
    }
    if (again != printed) {
        throw std::logic_error("written as something else: " + basic::ToUtf8(printed));
    }
}

}  // namespace

// UTF-8.
void Use(BytesView input) {
    const BytesView start = input.first(std::min(input.size(), kLongest));
    const basic::Text text = basic::FromUtf8(std::string(start.begin(), start.end()));
    Attempt([&] { CheckRewriting(text, RewriteStatement); });
    Attempt([&] { CheckRewriting(text, RewriteCondition); });
    for (const sql::ScriptStatement& statement : sql::SplitScript(text)) {
        Attempt([&] { static_cast<void>(sql::ParseAction(statement.text)); });
    }
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    for (const std::string_view text :
         {"SELECT TSITE_CODE, Count(*) AS n FROM TSITE WHERE TSITE_Inactif = False GROUP BY TSITE_CODE "
          "HAVING Count(*) > 0 ORDER BY n DESC, 1;",
          "SELECT DISTINCT a.*, IIf(b.[C D] Is Null, 'x', Left(b.E, 2)) FROM T AS a LEFT JOIN (U AS b INNER "
          "JOIN V ON b.x = V.x) ON a.c = b.c WHERE a.c BETWEEN 'A' AND 'M' OR NOT a.l LIKE '[a-c]*'",
          "SELECT TOP 3 PERCENT * FROM T WHERE c IN ('PAR', \"LYO\", Null) AND DateAdd('m', 1, #1/31/26#) > "
          "#2026-02-28 12:30:00# ORDER BY Len(c), l",
          "SELECT a FROM T UNION ALL SELECT b FROM U UNION SELECT -1.5e3 FROM V ORDER BY 1",
          "SELECT x FROM T WHERE EXISTS (SELECT * FROM U WHERE U.y = T.y) AND x NOT IN (SELECT z FROM W) "
          "XOR x EQV y IMP z",
          "A + B * -C ^ 2 \\ 3 Mod 4 & 'é''è' <> NOT D AND (E OR F IS NOT NULL)",
          "INSERT INTO T (a, [b c]) VALUES (1, 'x')", "INSERT INTO T SELECT * FROM U WHERE a > 2",
          "UPDATE T SET a = a + 1, b = Null WHERE c = #12:00#", "DELETE FROM T WHERE a = True",
          "CREATE TABLE T (a COUNTER PRIMARY KEY, b TEXT(20) NOT NULL, c MEMO, d DOUBLE)",
          "CREATE UNIQUE INDEX i ON T (a, b DESC) WITH PRIMARY", "ALTER TABLE T ADD COLUMN z DATETIME",
          "DROP TABLE T"}) {
        seeds.emplace_back(text.begin(), text.end());
    }
    return seeds;
}

}  // namespace quardele::fuzz
