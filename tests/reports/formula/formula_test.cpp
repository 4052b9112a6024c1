// The language of report formulas.
#include <basic/date.h>

#include "formula_values.h"

namespace quardele::formula {
namespace {

using basic::Null;
using test::Evaluated;
using test::Shown;

std::string Complaint(TextView text) {
    try {
        static_cast<void>(Formula::Parse(text));
    } catch (const basic::RuntimeError& error) {
        return std::to_string(error.Number()) + ' ' + basic::ToUtf8(error.Description());
    }
    return "none";
}

Text Repeated(TextView text, int count) {
    Text result;
    for (int i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

TEST(Formula, TextsStandInEitherQuotes) {
    EXPECT_EQ(Shown(u"'3 - Énergie'"), "3 - Énergie");
    EXPECT_EQ(Shown(u"\"l'atelier\""), "l'atelier");
    EXPECT_EQ(Shown(u"'dit \"oui\"'"), "dit \"oui\"");
    EXPECT_EQ(Shown(u"''"), "");
}

TEST(Formula, AQuoteInsideATextIsWrittenTwice) {
    EXPECT_EQ(Shown(u"'l''atelier'"), "l'atelier");
    EXPECT_EQ(Shown(u"\"a\"\"b\""), "a\"b");
    EXPECT_EQ(Shown(u"''''"), "'");
}

TEST(Formula, AQuoteThatIsNotDoubledEndsTheTextAndTheRestIsRefused) {
    EXPECT_EQ(Complaint(u"'Date d'achat'").substr(0, 4), "3075");
    EXPECT_EQ(Complaint(u"{TVEH.TVEH_IMMAT}='AB'CD'").substr(0, 4), "3075");
}

TEST(Formula, NumbersHaveAPoint) {
    EXPECT_EQ(Shown(u"12.5"), "12,5");
    EXPECT_EQ(Shown(u".5 + 1"), "1,5");
    EXPECT_EQ(Shown(u"-3"), "-3");
    EXPECT_EQ(Shown(u"--+3"), "3");
}

TEST(Formula, DatesStandBetweenHashSignsMonthOrYearFirst) {
    EXPECT_EQ(Shown(u"#12/31/2026#"), "31/12/2026");
    EXPECT_EQ(Shown(u"#2026-12-31 08:30#"), "31/12/2026 08:30:00");
    EXPECT_EQ(Complaint(u"#demain#").substr(0, 4), "3075");
}

TEST(Formula, ArithmeticBindsAsOneExpects) {
    EXPECT_EQ(Shown(u"1 + 2 * 3 - 4 / 2"), "5");
    EXPECT_EQ(Shown(u"(1 + 2) * 3"), "9");
    EXPECT_EQ(Shown(u"10 - 3 - 2"), "5");
    EXPECT_EQ(Shown(u"2 * -3"), "-6");
    EXPECT_EQ(Shown(u"1 & 1 + 1"), "12");
}

TEST(Formula, DatesMoveByDaysAndDifferByDays) {
    EXPECT_EQ(Shown(u"#12/31/2026# + 1"), "01/01/2027");
    EXPECT_EQ(Shown(u"1 + #12/31/2026#"), "01/01/2027");
    EXPECT_EQ(Shown(u"#2026-12-31# - 30"), "01/12/2026");
    EXPECT_EQ(Shown(u"#2026-12-31# - #2026-12-01#"), "30");
    EXPECT_EQ(Shown(u"#2026-12-31# + 99999999"), "error 6");
}

TEST(Formula, PlusJoinsTextsAndAmpersandJoinsAnything) {
    EXPECT_EQ(Shown(u"'AB' + '-CD'"), "AB-CD");
    EXPECT_EQ(Shown(u"'Page ' & 2 & ' du ' & #12/31/2026#"), "Page 2 du 31/12/2026");
    EXPECT_EQ(Shown(u"'km' + 5"), "error 13");
}

TEST(Formula, WhatIsNoNumberCannotBeCalculatedWith) {
    EXPECT_EQ(Shown(u"'3' * 2"), "error 13");
    EXPECT_EQ(Shown(u"-'x'"), "error 13");
    EXPECT_EQ(Shown(u"1 / 0"), "error 11");
    EXPECT_EQ(Shown(u"#1/1/2026# * 2"), "error 13");
}

TEST(Formula, ComparisonsOfTextsIgnoreCase) {
    EXPECT_EQ(Shown(u"'renault' = 'RENAULT'"), "Vrai");
    EXPECT_EQ(Shown(u"'a' < 'B'"), "Vrai");
    EXPECT_EQ(Shown(u"'é' <> 'e'"), "Vrai");
    EXPECT_EQ(Shown(u"2 >= 2"), "Vrai");
    EXPECT_EQ(Shown(u"2 <= 1"), "Faux");
    EXPECT_EQ(Shown(u"#1/1/2026# > #12/31/2025#"), "Vrai");
    EXPECT_EQ(Shown(u"1 = 'x'"), "error 13");
}

TEST(Formula, AndOrAndNot) {
    EXPECT_EQ(Shown(u"true and not false"), "Vrai");
    EXPECT_EQ(Shown(u"false or 1 = 1"), "Vrai");
    EXPECT_EQ(Shown(u"true or false and false"), "Vrai");
    EXPECT_EQ(Shown(u"not 1 = 2 and true"), "Vrai");
    EXPECT_EQ(Shown(u"not not true"), "Vrai");
    EXPECT_EQ(Shown(u"'x' or true"), "error 13");
}

TEST(Formula, TheRightSideIsNotLookedAtWhenTheLeftDecides) {
    EXPECT_EQ(Shown(u"false and 1 / 0 = 1"), "Faux");
    EXPECT_EQ(Shown(u"true or 1 / 0 = 1"), "Vrai");
}

TEST(Formula, IfThenElse) {
    EXPECT_EQ(Shown(u"if 1 < 2 then 'oui' else 'non'"), "oui");
    EXPECT_EQ(Shown(u"IF 1 > 2 THEN 'a' ELSE IF 2 > 1 THEN 'b' ELSE 'c'"), "b");
    EXPECT_EQ(Shown(u"if false then 1"), "Null");
    EXPECT_EQ(Shown(u"(if true then 2 else 3) * 4"), "8");
    EXPECT_EQ(Shown(u"if true then 1 else 1 / 0"), "1");
    EXPECT_EQ(Shown(u"IIf(1 = 1, 'a', 1 / 0)"), "a");
}

TEST(Formula, FieldsAndFormulasAreAskedFor) {
    EXPECT_EQ(Shown(u"{TVEH.TVEH_IMMAT} & ' ' & {@LIBUSER3}",
                    {{u"TVEH.TVEH_IMMAT", u"AB-123-CD"}, {u"@LIBUSER3", u"3 - Énergie"}}),
              "AB-123-CD 3 - Énergie");
    EXPECT_EQ(Shown(u"{ T.Nom du client }", {{u"T.Nom du client", u"x"}}), "x");
    EXPECT_EQ(Shown(u"{T.a.b}", {{u"T.a.b", u"x"}}), "x");
}

TEST(Formula, NullSpreadsButForJoining) {
    const std::map<Text, Variant> none{{u"T.F", Null()}};
    EXPECT_EQ(Shown(u"{T.F} + 'x'", none), "Null");
    EXPECT_EQ(Shown(u"{T.F} & 'x'", none), "x");
    EXPECT_EQ(Shown(u"{T.F} = 1", none), "Null");
    EXPECT_EQ(Shown(u"not ({T.F} = 1)", none), "Null");
    EXPECT_EQ(Shown(u"{T.F} = 1 or true", none), "Vrai");
    EXPECT_EQ(Shown(u"{T.F} = 1 and false", none), "Faux");
    EXPECT_EQ(Shown(u"if {T.F} = 1 then 'a' else 'b'", none), "b");
    EXPECT_EQ(Shown(u"-{T.F}", none), "Null");
    EXPECT_EQ(Shown(u"UCase({T.F})", none), "Null");
    EXPECT_EQ(Shown(u"IsNull({T.F})", none), "Vrai");
}

TEST(Formula, PagesAndRecordsAreCounted) {
    EXPECT_EQ(Shown(u"'Page ' & PageNumber & '/' & totalpagecount & ', ' & RecordNumber"), "Page 2/7, 5");
}

TEST(Formula, SummariesNameWhatTheyAreOver) {
    const Formula formula = Formula::Parse(u"Sum({T.F}, {T.G}) + Count({@A}) + Maximum({T.F})");
    ASSERT_EQ(formula.References().size(), 3U);
    const auto& sum = std::get<SummaryReference>(formula.References()[0]);
    EXPECT_EQ(sum.kind, SummaryKind::Sum);
    EXPECT_EQ(std::get<FieldReference>(sum.of).field, u"F");
    ASSERT_TRUE(sum.group.has_value());
    EXPECT_EQ(sum.group->field, u"G");
    EXPECT_EQ(std::get<FormulaReference>(std::get<SummaryReference>(formula.References()[1]).of).name, u"A");
    EXPECT_EQ(Shown(u"Sum({T.F}) + 1"), "43");
    EXPECT_EQ(Complaint(u"Sum(1)").substr(0, 4), "3075");
    EXPECT_EQ(Complaint(u"Sum({T.F}, {@A})").substr(0, 4), "3075");
}

TEST(Formula, RemarksGoToTheEndOfTheirLine) {
    EXPECT_EQ(Shown(u"1 + // un\n2 // deux"), "3");
    EXPECT_EQ(Shown(u"'a // b'"), "a // b");
}

TEST(Formula, ABlankFormulaHasNoValue) {
    EXPECT_EQ(Shown(u""), "Null");
    EXPECT_EQ(Shown(u" \n // rien"), "Null");
}

TEST(Formula, WhatIsWrongIsSaidWithItsPlace) {
    EXPECT_EQ(Complaint(u"1 +"),
              "3075 Erreur de syntaxe dans l'expression « 1 + ». Une valeur est attendue (caractère 4).");
    EXPECT_EQ(Complaint(u"'abc"),
              "3075 Erreur de syntaxe dans l'expression « 'abc ». Il manque le guillemet qui ferme le texte "
              "(caractère 1).");
    EXPECT_EQ(Complaint(u"Leftt('a', 1)"), "3085 Fonction « Leftt » non définie dans l'expression.");
}

TEST(Formula, WhatIsNoFormulaIsRefused) {
    for (const char16_t* text : {u"(1",          u"1)",        u"1 2",       u"{T.F",      u"{TF}",
                                 u"{@}",         u"{.F}",      u"{T.}",      u"if 1",      u"if 1 then",
                                 u"then 1",      u"1 = ",      u"1 = 2 = 3", u"Left('a')", u"Left('a', 1, 2)",
                                 u"Left('a' 1)", u"IIf(1, 2)", u"1 ^ 2",     u"a.b",       u"not",
                                 u"[1]",         u"12.5.1",    u"é",         u"#",         u"@a"}) {
        EXPECT_NE(Complaint(text), "none") << basic::ToUtf8(text);
    }
}

TEST(Formula, WhatIsTooDeepOrTooLongIsRefusedAndNotRead) {
    EXPECT_EQ(Complaint(Repeated(u"(", 30000) + u"1" + Repeated(u")", 30000)).substr(0, 4), "3360");
    EXPECT_EQ(Complaint(Repeated(u"-", 60000) + u"1").substr(0, 4), "3360");
    EXPECT_EQ(Complaint(Repeated(u"not ", 15000) + u"1").substr(0, 4), "3360");
    EXPECT_EQ(Complaint(Repeated(u"1+", 30000) + u"1").substr(0, 4), "3360");
    EXPECT_EQ(Complaint(Repeated(u"if 1 then ", 5000) + u"1").substr(0, 4), "3360");
    EXPECT_EQ(Complaint(Repeated(u"Abs(", 10000) + u"1").substr(0, 4), "3360");
    EXPECT_EQ(Complaint(u"'" + Repeated(u"x", 70000) + u"'").substr(0, 4), "3360");
}

TEST(Formula, LongChainsOfOrdinaryLengthAreRead) {
    EXPECT_EQ(Shown(Repeated(u"1 + ", 900) + u"1"), "901");
    EXPECT_EQ(Shown(Repeated(u"(", 40) + u"1" + Repeated(u")", 40)), "1");
}

}  // namespace
}  // namespace quardele::formula
