#include "syntax/lexer.h"

#include "sql_fixture.h"

namespace quardele::sql {
namespace {

/// The tokens of a text, each as its kind's letter and its content.
std::string Tokens(const std::string& text) {
    std::string line;
    for (const Token& token : Tokenize(basic::FromUtf8(text))) {
        switch (token.kind) {
            case TokenKind::End:
                return line + "end";
            case TokenKind::Word:
                line += "w:" + basic::ToUtf8(token.text) + " ";
                break;
            case TokenKind::Name:
                line += "n:" + basic::ToUtf8(token.text) + " ";
                break;
            case TokenKind::Literal:
                line += "l:" + Shown(token.value) + " ";
                break;
            case TokenKind::Symbol:
                line += "s:" + basic::ToUtf8(token.text) + " ";
                break;
            case TokenKind::Bad:
                return line + "bad:" + basic::ToUtf8(token.text);
        }
    }
    return line + "(no end)";
}

TEST(LexerTest, NumbersOfOtherBasesStandWhereAnOperandIsDue) {
    EXPECT_EQ(Tokens("= &H1F + &o17"), "s:= l:31 s:+ l:15 end");
    EXPECT_EQ(Tokens("(&hFFFFFFFF)"), "s:( l:-1 s:) end");
    EXPECT_EQ(Tokens("a &H1"), "w:a s:& w:H1 end");
    EXPECT_EQ(Tokens("'a'&H1"), "l:'a' s:& w:H1 end");
    EXPECT_EQ(Tokens("= &HXY"), "s:= bad:nombre incorrect après &");
    EXPECT_EQ(Tokens("= &H123456789"), "s:= bad:nombre incorrect après &");
}

TEST(LexerTest, WordsNamesNumbersAndSymbols) {
    EXPECT_EQ(Tokens("Select a.b,[x y] from T1;"), "w:Select w:a s:. w:b s:, n:x y w:from w:T1 s:; end");
    EXPECT_EQ(Tokens("a<=b<>c>=d<e"), "w:a s:<= w:b s:<> w:c s:>= w:d s:< w:e end");
    EXPECT_EQ(Tokens("Éléments_1"), "w:Éléments_1 end");
    EXPECT_EQ(Tokens(" \t\r\n"), "end");
}

TEST(LexerTest, NumbersAreWholeOrNot) {
    EXPECT_EQ(Tokens("1 2147483647"), "l:1 l:2147483647 end");
    EXPECT_TRUE(Tokenize(u"7").front().value.Is<std::int32_t>());
    EXPECT_TRUE(Tokenize(u"7.0").front().value.Is<double>());
    EXPECT_TRUE(Tokenize(u"2147483648").front().value.Is<double>());
    EXPECT_EQ(Tokens("1.5 .5 2e3 2.5E-1"), "l:1.5 l:0.5 l:2000 l:0.25 end");
    EXPECT_EQ(Tokens("12abc"), "l:12 w:abc end");
    EXPECT_EQ(Tokens("1e"), "l:1 w:e end");
    EXPECT_EQ(Tokens("1e999"), "bad:nombre trop grand");
}

TEST(LexerTest, QuotesOfBothKindsAreDoubledInside) {
    EXPECT_EQ(Tokens("'l''avion'"), "l:'l''avion' end");
    EXPECT_EQ(Tokens("\"l'avion\""), "l:'l''avion' end");
    EXPECT_EQ(Tokens("\"a\"\"b\" ''"), "l:'a\"b' l:'' end");
    EXPECT_EQ(Tokens("'a"), "bad:texte sans apostrophe ou guillemet de fin");
    EXPECT_EQ(Tokens("'a''"), "bad:texte sans apostrophe ou guillemet de fin");
}

TEST(LexerTest, BracketsHoldAnyName) {
    EXPECT_EQ(Tokens("[select] [ N° d'ordre ]"), "n:select n:N° d'ordre end");
    EXPECT_EQ(Tokens("[abc"), "bad:crochet fermant absent");
    EXPECT_EQ(Tokens("[]"), "bad:nom entre crochets incorrect");
    EXPECT_EQ(Tokens("[a[b]"), "bad:nom entre crochets incorrect");
}

TEST(LexerTest, DatesStandBetweenHashSigns) {
    EXPECT_EQ(Tokens("#12/31/2026#"), "l:#12/31/2026# end");
    EXPECT_EQ(Tokens("#12/31/2026"), "bad:date sans # de fin");
    EXPECT_EQ(Tokens("#pas une date#"), "bad:date incorrecte");
}

TEST(LexerTest, FunctionNamesMayCarryATypeSign) {
    EXPECT_EQ(Tokens("Left$(a,1)"), "w:Left$ s:( w:a s:, l:1 s:) end");
}

TEST(LexerTest, WhatNoStatementCanHoldIsSaid) {
    EXPECT_EQ(Tokens("a @"), "w:a bad:caractère inattendu");
    EXPECT_EQ(Tokens("{"), "bad:caractère inattendu");
}

TEST(LexerTest, PositionsPointIntoTheText) {
    const std::vector<Token> tokens = Tokenize(u"a  [b c]");
    ASSERT_EQ(tokens.size(), 3U);
    EXPECT_EQ(tokens[1].position, 3U);
    EXPECT_EQ(tokens[1].length, 5U);
}

}  // namespace
}  // namespace quardele::sql
