#include "forms.h"

#include <map>

namespace quardele::sql::differential {

namespace {

using enum Kind;

const std::vector<Form>& NumberForms() {
    static const std::vector<Form> forms = {
        {Number, {Number, Number}, "($0 + $1)", "($0 + $1)"},
        {Number, {Number, Number}, "($0 - $1)", "($0 - $1)"},
        {Number, {Number, SmallNumber}, "($0 * $1)", "($0 * $1)"},
        {Number, {SmallNumber, SmallNumber, SmallNumber}, "($0 - $1 * $2)", "($0 - ($1 * $2))"},
        {Number, {SmallNumber, Number, SmallNumber}, "($0 - $1 - $2)", "(($0 - $1) - $2)"},
        {Number, {Number}, "(-$0)", "(- $0)"},
        {Number, {Number, Divisor}, "($0 \\ $1)", "f_quotient($0, $1)"},
        {Number, {Number, Divisor}, "($0 Mod $1)", "f_rest($0, $1)"},
        {Number, {Number, Divisor, Divisor}, "($0 \\ $1 Mod $2)", "f_rest(f_quotient($0, $1), $2)"},
        {Number, {SmallNumber, Count}, "($0 ^ $1)", "f_power($0, $1)"},
        {Number, {SmallNumber}, "(-$0 ^ 2)", "(- f_power($0, 2))"},
        {Number, {Number}, "Abs($0)", "abs($0)"},
        {Number, {Number}, "Int($0)", "f_int($0)"},
        {Number, {Inexact}, "Int($0)", "f_int($0)"},
        {Number, {Number}, "Fix($0)", "f_fix($0)"},
        {Number, {Number}, "Sgn($0)", "f_sgn($0)"},
        {Number, {Number}, "Round($0)", "f_round($0, 0)"},
        {Number, {Text}, "Len($0)", "f_len($0)"},
        {Number, {Text, Needle}, "InStr($0, $1)", "f_instr(1, $0, $1)"},
        {Number, {Text, Text}, "InStr($0, $1)", "f_instr(1, $0, $1)"},
        {Number, {Count, Text, Needle}, "InStr($0 + 1, $1, $2)", "f_instr($0 + 1, $1, $2)"},
        {Number, {Count, Text, Needle}, "InStr($0 + 1, $1, $2, 1)", "f_instr($0 + 1, $1, $2)"},
        {Number, {Count, Text, Needle}, "InStr($0 + 1, $1, $2, 0)", "f_instr_exact($0 + 1, $1, $2)"},
        {Number, {Text, Text}, "StrComp($0, $1)", "f_strcomp($0, $1)"},
        {Number, {Text}, "Asc($0 & 'x')", "f_asc(f_joined($0, 'x'))"},
        {Number, {Text}, "Val($0)", "f_val($0)"},
        {Number, {Count, Text}, "Val($0 & '.5' & $1)", "f_val(f_joined(f_joined(f_cstr($0), '.5'), $1))"},
        {Number, {Date}, "Year($0)", "f_part('yyyy', $0)"},
        {Number, {Date}, "Month($0)", "f_part('m', $0)"},
        {Number, {Date}, "Day($0)", "f_part('d', $0)"},
        {Number, {Date}, "Weekday($0)", "f_part('w', $0)"},
        {Number, {Date}, "Hour($0)", "f_part('h', $0)"},
        {Number, {Date}, "DatePart('q', $0)", "f_part('q', $0)"},
        {Number, {Date}, "DatePart('y', $0)", "f_part('y', $0)"},
        {Number, {Date, Date}, "DateDiff('d', $0, $1)", "f_datediff('d', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('m', $0, $1)", "f_datediff('m', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('q', $0, $1)", "f_datediff('q', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('yyyy', $0, $1)", "f_datediff('yyyy', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('w', $0, $1)", "f_datediff('w', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('ww', $0, $1)", "f_datediff('ww', $0, $1)"},
        {Number, {Date, Date}, "DateDiff('h', $0, $1)", "f_datediff('h', $0, $1)"},
        {Number, {Date, Date}, "($0 - $1)", "($0 - $1)"},
    };
    return forms;
}

const std::vector<Form>& OtherValueForms() {
    static const std::vector<Form> forms = {
        {Inexact, {Number, Divisor}, "($0 / $1)", "($0 * 1.0 / $1)"},
        {Inexact, {Number, Divisor, Divisor}, "($0 / $1 / $2)", "($0 * 1.0 / $1 / $2)"},
        {Inexact, {Inexact, Number}, "($0 + $1)", "($0 + $1)"},
        {Inexact, {Inexact}, "(-$0)", "(- $0)"},
        {Inexact, {Number, Number}, "($0 / IIf($1 = 0, 3, $1))", "($0 * 1.0 / iif($1 = 0, 3, $1))"},
        {Amount, {Amount, Amount}, "($0 + $1)", "($0 + $1)"},
        {Amount, {Amount, Amount}, "($0 - $1)", "($0 - $1)"},
        {Amount, {Amount}, "Abs($0)", "abs($0)"},
        {Amount, {Amount}, "(-$0)", "(- $0)"},
        {Amount, {Number}, "CCur(Nz($0, 0))", "f_amount(coalesce($0, 0))"},
        {Amount, {Amount, Divisor}, "($0 * $1)", "($0 * $1)"},
        {Date, {Date, Count}, "($0 + $1)", "($0 + $1)"},
        {Date, {Date, Count}, "($0 - $1)", "($0 - $1)"},
        {Date, {Date, Divisor}, "DateAdd('d', $1, $0)", "f_dateadd('d', $1, $0)"},
        {Date, {Date, Divisor}, "DateAdd('m', $1, $0)", "f_dateadd('m', $1, $0)"},
        {Date, {Date, Divisor}, "DateAdd('q', $1, $0)", "f_dateadd('q', $1, $0)"},
        {Date, {Date, Divisor}, "DateAdd('yyyy', $1, $0)", "f_dateadd('yyyy', $1, $0)"},
        {Date, {Date, Divisor}, "DateAdd('ww', $1, $0)", "f_dateadd('ww', $1, $0)"},
        {Date,
         {Date, Count},
         "DateSerial(Year($0), Month($0) + $1, 0)",
         "f_dateserial(f_part('yyyy', $0), f_part('m', $0) + $1, 0)"},
    };
    return forms;
}

const std::vector<Form>& TextForms() {
    static const std::vector<Form> forms = {
        {Text, {Text, Text}, "($0 & $1)", "f_joined($0, $1)"},
        {Text, {Text, Number}, "($0 & $1)", "f_joined($0, f_cstr($1))"},
        {Text, {Text, Text}, "($0 + $1)", "($0 || $1)"},
        {Text, {Text, Count}, "Left($0, $1)", "f_left($0, $1)"},
        {Text, {Text, Count}, "Right($0, $1)", "f_right($0, $1)"},
        {Text, {Text, Count}, "Mid($0, $1 + 1)", "f_mid($0, $1 + 1, 1000)"},
        {Text, {Text, Count, Count}, "Mid($0, $1 + 1, $2)", "f_mid($0, $1 + 1, $2)"},
        {Text, {Text}, "UCase($0)", "f_ucase($0)"},
        {Text, {Text}, "LCase($0)", "f_lcase($0)"},
        {Text, {Text, Needle}, "Trim($0 & $1 & ' ')", "f_trim(f_joined(f_joined($0, $1), ' '))"},
        {Text, {Text, Needle}, "LTrim(' ' & $0 & $1)", "f_ltrim(f_joined(f_joined(' ', $0), $1))"},
        {Text, {Text, Needle}, "RTrim($1 & $0 & '  ')", "f_rtrim(f_joined(f_joined($1, $0), '  '))"},
        {Text, {Text, Needle, Text}, "Replace($0, $1, $2)", "f_replace($0, $1, $2)"},
        {Text,
         {Text, Needle, Text, Count, Count},
         "Replace($0, $1, $2, $3 + 1, $4)",
         "f_replace_some($0, $1, $2, $3 + 1, $4)"},
        {Text, {Count}, "Chr($0 + 65)", "f_chr($0 + 65)"},
        {Text, {Count}, "String($0, 'x')", "f_repeated($0, 'x')"},
        {Text, {Count, Text}, "(Space($0) & $1)", "f_joined(f_repeated($0, ' '), $1)"},
    };
    return forms;
}

const std::vector<Form>& ConditionForms() {
    static const std::vector<Form> forms = {
        {Condition, {Condition, Condition}, "($0 AND $1)", "($0 AND $1)"},
        {Condition, {Condition, Condition}, "($0 OR $1)", "($0 OR $1)"},
        {Condition, {Condition, Condition, Condition}, "($0 OR $1 AND $2)", "($0 OR ($1 AND $2))"},
        {Condition, {Condition, Condition, Condition}, "($0 AND $1 OR NOT $2)", "(($0 AND $1) OR (NOT $2))"},
        {Condition, {Condition}, "(NOT $0)", "(NOT $0)"},
        {Condition, {Number, Number}, "(NOT $0 = $1)", "(NOT ($0 = $1))"},
        {Condition, {Condition, Condition}, "($0 XOR $1)", "($0 <> $1)"},
        {Condition, {Condition, Condition}, "($0 EQV $1)", "($0 = $1)"},
        {Condition, {Condition, Condition}, "($0 IMP $1)", "((NOT $0) OR $1)"},
        {Condition, {Condition}, "($0 IS NULL)", "($0 IS NULL)"},
        {Condition, {Condition, Condition}, "($0 = $1)", "($0 = $1)"},
        {Condition, {Text, Pattern}, "($0 LIKE $1)", "f_like($0, $1)"},
        {Condition, {TextColumn, Pattern}, "($0 LIKE $1)", "f_like($0, $1)"},
        {Condition, {Text, Pattern}, "($0 NOT LIKE $1)", "(NOT f_like($0, $1))"},
        {Condition, {TextColumn, Text}, "($0 LIKE '*' & $1)", "f_like($0, f_joined('*', $1))"},
        {Condition, {Number, Amount}, "($0 < $1)", "($0 < $1)"},
        {Condition, {Inexact, Number}, "($0 <= $1)", "($0 <= $1)"},
        {Condition, {Date, Number}, "($0 > 33000 + $1)", "($0 > 33000 + $1)"},
    };
    return forms;
}

void Append(std::vector<Form>& forms, const std::vector<Form>& more) {
    forms.insert(forms.end(), more.begin(), more.end());
}

/// Comparisons and tests that each kind of value has. The bounds of BETWEEN may stand in any order.
std::vector<Form> ComparisonsOf(Kind kind) {
    const std::string collated = kind == Text ? " COLLATE OURS" : "";
    std::vector<Form> forms;
    for (const std::string op : {" = ", " <> ", " < ", " <= ", " > ", " >= "}) {
        forms.push_back({Condition, {kind, kind}, "($0" + op + "$1)", "($0" + collated + op + "$1)"});
    }
    const std::string is = "$0" + collated;
    const std::string between =
        "((" + is + " >= $1 AND " + is + " <= $2) OR (" + is + " >= $2 AND " + is + " <= $1))";
    Append(forms, {{Condition, {kind, kind, kind}, "($0 BETWEEN $1 AND $2)", between},
                   {Condition, {kind, kind, kind}, "($0 NOT BETWEEN $1 AND $2)", "(NOT " + between + ")"},
                   {Condition, {kind, kind, kind}, "($0 IN ($1, $2))", "(" + is + " IN ($1, $2))"},
                   {Condition, {kind, kind, kind}, "($0 NOT IN ($1, $2))", "(" + is + " NOT IN ($1, $2))"},
                   {Condition, {kind}, "($0 IS NULL)", "($0 IS NULL)"},
                   {Condition, {kind}, "($0 IS NOT NULL)", "($0 IS NOT NULL)"},
                   {Condition, {kind}, "IsNull($0)", "($0 IS NULL)"}});
    return forms;
}

/// Choices between values, which each kind has.
std::vector<Form> ChoicesOf(Kind kind) {
    return {{kind, {Condition, kind, kind}, "IIf($0, $1, $2)", "iif($0, $1, $2)"},
            {kind, {kind, kind}, "Nz($0, $1)", "coalesce($0, $1)"},
            {kind,
             {Condition, kind, Condition, kind},
             "Switch($0, $1, $2, $3)",
             "CASE WHEN $0 THEN $1 WHEN $2 THEN $3 END"},
            {kind, {Count, kind, kind}, "Choose($0, $1, $2)", "CASE $0 WHEN 1 THEN $1 WHEN 2 THEN $2 END"}};
}

std::map<Kind, std::vector<Form>> AllForms() {
    std::vector<Form> all = NumberForms();
    Append(all, OtherValueForms());
    Append(all, TextForms());
    Append(all, ConditionForms());
    for (const Kind kind : {Number, Amount, Text, Date}) {
        Append(all, ComparisonsOf(kind));
        Append(all, ChoicesOf(kind));
    }
    std::map<Kind, std::vector<Form>> byResult;
    for (Form& form : all) {
        byResult[form.result].push_back(std::move(form));
    }
    return byResult;
}

}  // namespace

const std::vector<Form>& FormsOf(Kind kind) {
    static const std::map<Kind, std::vector<Form>> forms = AllForms();
    return forms.at(kind);
}

}  // namespace quardele::sql::differential
