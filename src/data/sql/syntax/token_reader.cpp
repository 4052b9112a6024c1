#include "syntax/token_reader.h"

#include <algorithm>

#include "sql_error.h"
#include "syntax/lexer.h"

namespace quardele::sql {

namespace {

/// The longest text that is read as a statement, in UTF-16 units.
constexpr std::size_t kLongestStatement = 65536;

std::vector<Token> TokensOf(TextView statement) {
    if (statement.size() > kLongestStatement) {
        FailTooComplex(u"texte de plus de 65 536 caractères");
    }
    return Tokenize(statement);
}

}  // namespace

TokenReader::TokenReader(TextView statement, int expressionError)
    : statement_(statement), tokens_(TokensOf(statement)), expressionError_(expressionError) {}

const Token& TokenReader::Peek(std::size_t ahead) const {
    return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
}

Token TokenReader::Take() {
    Token token = Peek();
    next_ = std::min(next_ + 1, tokens_.size() - 1);
    return token;
}

bool TokenReader::TakeSymbol(TextView symbol) {
    const bool found = Peek().IsSymbol(symbol);
    next_ += found ? 1 : 0;
    return found;
}

bool TokenReader::TakeWord(TextView keyword) {
    const bool found = Peek().IsWord(keyword);
    next_ += found ? 1 : 0;
    return found;
}

void TokenReader::Expect(TextView keyword, int number) {
    if (!TakeWord(keyword)) {
        Fail(number, Text(keyword) + u" attendu");
    }
}

void TokenReader::ExpectSymbol(TextView symbol, int number) {
    if (!TakeSymbol(symbol)) {
        Fail(number, u"« " + Text(symbol) + u" » attendu");
    }
}

Text TokenReader::TakeName(int number) {
    if (!IsName(Peek())) {
        Fail(number, u"nom attendu");
    }
    return Take().text;
}

TextView TokenReader::TakenSince(std::size_t position) const {
    if (next_ == 0 || tokens_[next_ - 1].position < position) {
        return {};
    }
    const Token& last = tokens_[next_ - 1];
    return statement_.substr(position, last.position + last.length - position);
}

void TokenReader::Fail(int number, TextView reason) const {
    const Token& token = Peek();
    const TextView quote = statement_.substr(std::min(quoteStart_, statement_.size()));
    const TextView stop = statement_.substr(token.position, token.length);
    FailSyntax(number, token.kind == TokenKind::Bad ? TextView(token.text) : reason, quote, stop);
}

TokenReader::Nesting::Nesting(TokenReader& reader, int levels) : reader_(reader), levels_(levels) {
    if (reader_.depth_ + levels_ > kDeepestTree) {
        FailTooComplex(u"trop de parenthèses et d'opérations l'une dans l'autre");
    }
    reader_.depth_ += levels_;
}

}  // namespace quardele::sql
