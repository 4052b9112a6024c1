#include "reference_functions.h"

#include <algorithm>
#include <cmath>
#include <regex>

#include <basic/text.h>

#include "reference_dates.h"
#include "reference_texts.h"

namespace quardele::sql::differential {

namespace {

using bench::SqliteValue;
using Values = std::vector<SqliteValue>;

bool IsNull(const SqliteValue& value) {
    return std::holds_alternative<std::monostate>(value);
}

double Number(const SqliteValue& value) {
    const auto* const whole = std::get_if<std::int64_t>(&value);
    return whole != nullptr ? static_cast<double>(*whole) : std::get<double>(value);
}

int Whole(const SqliteValue& value) {
    return static_cast<int>(Number(value));
}

const std::string& Plain(const SqliteValue& value) {
    return std::get<std::string>(value);
}

std::u16string Text(const SqliteValue& value) {
    return basic::FromUtf8(Plain(value));
}

SqliteValue Result(const std::u16string& text) {
    return basic::ToUtf8(text);
}

SqliteValue Result(int number) {
    return std::int64_t{number};
}

/// Halves go to the even neighbour.
double Rounded(double number, int digits) {
    const double unit = std::pow(10, digits);
    return std::nearbyint(number * unit) / unit;
}

std::u16string Without(std::u16string text, bool front, bool back) {
    if (back) {
        text.erase(text.find_last_not_of(u' ') + 1);
    }
    return front ? text.substr(std::min(text.size(), text.find_first_not_of(u' '))) : text;
}

/// Blanks are no part of a text's number; "D" stands for "E".
double NumberAtStart(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n'; });
    const std::regex number(R"(^[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([EeDd][+-]?[0-9]+)?)");
    std::smatch found;
    if (!std::regex_search(text, found, number)) {
        return 0;
    }
    std::string written = found[0];
    std::replace_if(
        written.begin(), written.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
    return std::stod(written);
}

/// Multiples of a power of 1/2, as the French write them. The zero takes the sign away from another zero.
std::string Written(double number) {
    std::array<char, 40> digits{};
    std::snprintf(digits.data(), digits.size(), "%.15g", number + 0.0);
    std::string text = digits.data();
    if (const std::size_t point = text.find('.'); point != std::string::npos) {
        text[point] = ',';
    }
    return text;
}

/// Makes a function known that gives Null when an argument is Null.
template <class Function>
void AddStrict(bench::SqliteFile& file, const char* name, int arguments, Function function) {
    file.AddFunction(name, arguments, [function](const Values& values) -> SqliteValue {
        if (std::any_of(values.begin(), values.end(), IsNull)) {
            return {};
        }
        return function(values);
    });
}

void AddNumberFunctions(bench::SqliteFile& file) {
    AddStrict(file, "f_quotient", 2, [](const Values& values) -> SqliteValue {
        return std::trunc(Rounded(Number(values[0]), 0) / Rounded(Number(values[1]), 0));
    });
    AddStrict(file, "f_rest", 2, [](const Values& values) -> SqliteValue {
        return std::fmod(Rounded(Number(values[0]), 0), Rounded(Number(values[1]), 0));
    });
    AddStrict(file, "f_power", 2, [](const Values& values) -> SqliteValue {
        return std::pow(Number(values[0]), Number(values[1]));
    });
    AddStrict(file, "f_int", 1,
              [](const Values& values) -> SqliteValue { return std::floor(Number(values[0])); });
    AddStrict(file, "f_fix", 1,
              [](const Values& values) -> SqliteValue { return std::trunc(Number(values[0])); });
    AddStrict(file, "f_sgn", 1, [](const Values& values) -> SqliteValue {
        const double number = Number(values[0]);
        return Result(number > 0 ? 1 : number < 0 ? -1 : 0);
    });
    AddStrict(file, "f_round", 2, [](const Values& values) -> SqliteValue {
        return Rounded(Number(values[0]), Whole(values[1]));
    });
    AddStrict(file, "f_amount", 1, [](const Values& values) -> SqliteValue {
        constexpr int kDigits = 4;
        return Rounded(Number(values[0]), kDigits);
    });
    AddStrict(file, "f_cstr", 1,
              [](const Values& values) -> SqliteValue { return Written(Number(values[0])); });
}

void AddPartsOfTexts(bench::SqliteFile& file) {
    AddStrict(file, "f_left", 2, [](const Values& values) {
        return Result(Text(values[0]).substr(0, static_cast<std::size_t>(Whole(values[1]))));
    });
    AddStrict(file, "f_right", 2, [](const Values& values) {
        const std::u16string text = Text(values[0]);
        const auto length = static_cast<std::size_t>(Whole(values[1]));
        return Result(length < text.size() ? text.substr(text.size() - length) : text);
    });
    AddStrict(file, "f_mid", 3, [](const Values& values) {
        const std::u16string text = Text(values[0]);
        const auto from = static_cast<std::size_t>(Whole(values[1]) - 1);
        return Result(from < text.size() ? text.substr(from, static_cast<std::size_t>(Whole(values[2])))
                                         : std::u16string());
    });
    AddStrict(file, "f_trim", 1,
              [](const Values& values) { return Result(Without(Text(values[0]), true, true)); });
    AddStrict(file, "f_ltrim", 1,
              [](const Values& values) { return Result(Without(Text(values[0]), true, false)); });
    AddStrict(file, "f_rtrim", 1,
              [](const Values& values) { return Result(Without(Text(values[0]), false, true)); });
}

void AddTextFunctions(bench::SqliteFile& file) {
    file.AddFunction("f_joined", 2, [](const Values& values) -> SqliteValue {
        const auto textOf = [](const SqliteValue& value) {
            return IsNull(value) ? std::string() : Plain(value);
        };
        return textOf(values[0]) + textOf(values[1]);
    });
    AddStrict(file, "f_len", 1,
              [](const Values& values) { return Result(static_cast<int>(Text(values[0]).size())); });
    AddStrict(file, "f_ucase", 1, [](const Values& values) { return Result(Upper(Text(values[0]))); });
    AddStrict(file, "f_lcase", 1, [](const Values& values) { return Result(Lower(Text(values[0]))); });
    AddStrict(file, "f_instr", 3, [](const Values& values) {
        return Result(PositionOf(Text(values[2]), Text(values[1]), Whole(values[0])));
    });
    AddStrict(file, "f_instr_exact", 3, [](const Values& values) {
        const auto from = static_cast<std::size_t>(Whole(values[0]) - 1);
        return Result(static_cast<int>(Text(values[1]).find(Text(values[2]), from) + 1));
    });
    AddStrict(file, "f_asc", 1, [](const Values& values) { return Result(int{Text(values[0])[0]}); });
    AddStrict(file, "f_chr", 1, [](const Values& values) {
        return Result(std::u16string(1, static_cast<char16_t>(Whole(values[0]))));
    });
    AddStrict(file, "f_val", 1,
              [](const Values& values) -> SqliteValue { return NumberAtStart(Plain(values[0])); });
    AddStrict(file, "f_replace", 3, [](const Values& values) {
        return Result(Replaced(Text(values[0]), Text(values[1]), Text(values[2])));
    });
    AddStrict(file, "f_replace_some", 5, [](const Values& values) {
        const std::u16string text = Text(values[0]);
        const auto start = static_cast<std::size_t>(Whole(values[3]) - 1);
        return Result(Replaced(text.substr(std::min(start, text.size())), Text(values[1]), Text(values[2]),
                               Whole(values[4])));
    });
    AddStrict(file, "f_repeated", 2, [](const Values& values) {
        return Result(std::u16string(static_cast<std::size_t>(Whole(values[0])), Text(values[1])[0]));
    });
    AddStrict(file, "f_strcomp", 2,
              [](const Values& values) { return Result(Collate(Text(values[0]), Text(values[1]))); });
    AddStrict(file, "f_like", 2,
              [](const Values& values) { return Result(IsLike(Text(values[0]), Text(values[1])) ? 1 : 0); });
}

void AddDateFunctions(bench::SqliteFile& file) {
    AddStrict(file, "f_part", 2,
              [](const Values& values) { return Result(DatePart(Plain(values[0]), Number(values[1]))); });
    AddStrict(file, "f_dateadd", 3, [](const Values& values) -> SqliteValue {
        return DateAdd(Plain(values[0]), Whole(values[1]), Number(values[2]));
    });
    AddStrict(file, "f_datediff", 3, [](const Values& values) {
        return Result(DateDiff(Plain(values[0]), Number(values[1]), Number(values[2])));
    });
    AddStrict(file, "f_dateserial", 3, [](const Values& values) -> SqliteValue {
        return DateSerial(Whole(values[0]), Whole(values[1]), Whole(values[2]));
    });
}

}  // namespace

void AddReferenceFunctions(bench::SqliteFile& file) {
    file.AddCollation("OURS", [](std::string_view left, std::string_view right) {
        return Collate(basic::FromUtf8(std::string(left)), basic::FromUtf8(std::string(right)));
    });
    AddNumberFunctions(file);
    AddPartsOfTexts(file);
    AddTextFunctions(file);
    AddDateFunctions(file);
}

std::string Folded(const std::string& text) {
    return basic::ToUtf8(Lower(Without(basic::FromUtf8(text), false, true)));
}

}  // namespace quardele::sql::differential
