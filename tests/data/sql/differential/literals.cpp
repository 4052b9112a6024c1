#include "literals.h"

#include <basic/date.h>

namespace quardele::sql::differential {

namespace {

/// Case, accents, hyphens and apostrophes, which the collation weighs less than letters.
constexpr const char* kTexts[] = {"a",    "A",   "ab",  "AB",    "Ab",    "aB1",  "b",     "abc",   "a b",
                                  "a bc", "b1",  "1",   "12",    "2a",    "coop", "co-op", "Co-Op", "coor",
                                  "été",  "ete", "Eté", "ETE",   "e",     "é",    "f",     "l'a",   "la",
                                  "L'A",  "x",   "xyz", "aa-11", "AA-11", "aa11", "AA-1b", "aab-1", "z"};
constexpr const char* kPatterns[] = {"*",     "a*",     "*b",      "?",    "??",        "?*",
                                     "*a*",   "[a-c]*", "[!a-c]*", "#*",   "*#",        "*[0-9]*",
                                     "[-a]*", "*[é]*",  "[ax]?*",  "*-*",  "?[a-z]-##", "A*B*",
                                     "[*]",   "ab",     "*[!0-9]", "e*t?", "*''*",      "*[b-y]"};
constexpr const char* kFractions[] = {".25", ".5", ".75"};
constexpr const char* kNeedles[] = {"a", "b", "B", "1", "é", "-", "bc", "o", "x", " "};

Expression Leaf(Kind kind, const std::string& ours, const std::string& theirs) {
    return {.kind = kind, .ours = ours, .theirs = theirs, .parts = {}, .query = {}};
}

Expression Same(Kind kind, const std::string& text) {
    return Leaf(kind, text, text);
}

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char sign : text) {
        quoted += sign == '\'' ? "''" : std::string(1, sign);
    }
    return quoted + "'";
}

std::string Signed(const std::string& digits, bool negative) {
    return negative ? "(-" + digits + ")" : digits;
}

/// Whole numbers, halves and quarters: whatever adds them up, in whatever order, adds them up exactly.
Expression NumberLiteral(Random& random) {
    const bool negative = random.Chance(25);
    const std::string whole = std::to_string(random.Between(0, 12));
    return Same(Kind::Number, Signed(random.Chance(75) ? whole : whole + random.OneOf(kFractions), negative));
}

Expression DateLiteral(Random& random) {
    constexpr int kFirst = 33000;
    constexpr int kQuarters[] = {0, 0, 0, 1, 2, 3};
    const int day = kFirst + (random.Chance(50) ? random.Below(40) : random.Below(14000));
    const int quarter = random.OneOf(kQuarters);
    const basic::CivilDate date = basic::CivilOf({static_cast<double>(day)});
    const std::string time = quarter == 0 ? "" : " " + std::to_string(quarter * 6) + ":00";
    return Leaf(Kind::Date,
                "#" + std::to_string(date.month) + "/" + std::to_string(date.day) + "/" +
                    std::to_string(date.year) + time + "#",
                std::to_string(day + quarter * 0.25));
}

}  // namespace

Expression NullOf(Kind kind) {
    return Same(kind, "Null");
}

Expression Literal(Kind kind, Random& random) {
    switch (kind) {
        case Kind::Date:
        case Kind::DateLiteral:
            return DateLiteral(random);
        case Kind::Text:
        case Kind::TextColumn:
            return Same(kind, Quoted(random.OneOf(kTexts)));
        case Kind::Pattern:
            return Same(kind, std::string("'") + random.OneOf(kPatterns) + "'");
        case Kind::Needle:
            return Same(kind, Quoted(random.OneOf(kNeedles)));
        case Kind::Count:
            return Same(kind, std::to_string(random.Below(4)));
        case Kind::Divisor:
            return Same(kind, Signed(std::to_string(random.Between(1, 7)), random.Chance(30)));
        case Kind::Condition:
            // No literals there: SQLite (3.40) forgets the outer joins around one in ON.
            return random.Chance(50) ? Leaf(kind, "True", "(1 = 1)") : Leaf(kind, "False", "(1 = 0)");
        case Kind::Amount: {
            const Expression number = NumberLiteral(random);
            return Leaf(kind, "CCur(" + number.ours + ")", number.theirs);
        }
        default:
            return NumberLiteral(random);
    }
}

}  // namespace quardele::sql::differential
