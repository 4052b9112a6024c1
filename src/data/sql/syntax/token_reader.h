// A position in the tokens of one statement, and the errors that name it.
#pragma once

#include <vector>

#include "syntax/ast.h"
#include "syntax/token.h"

namespace quardele::sql {

class TokenReader {
 public:
    /// `expressionError` is the number of a syntax error inside expressions. Throws 3360 for a text that is
    /// too long.
    TokenReader(TextView statement, int expressionError);

    [[nodiscard]] const Token& Peek(std::size_t ahead = 0) const;
    Token Take();
    /// Each takes the next token when it is the one asked for.
    bool TakeSymbol(TextView symbol);
    bool TakeWord(TextView keyword);
    // Each takes the next token, and fails with the number when it is not the one asked for.
    void Expect(TextView keyword, int number);
    void ExpectSymbol(TextView symbol, int number);
    Text TakeName(int number);
    [[nodiscard]] bool AtEnd() const { return Peek().kind == TokenKind::End; }

    /// What is not taken yet, as it was written.
    [[nodiscard]] TextView Rest() const { return statement_.substr(Peek().position); }
    /// What was taken since a position of the statement, as it was written.
    [[nodiscard]] TextView TakenSince(std::size_t position) const;

    /// From here on descriptions quote the text from the next token on.
    void StartQuote() { quoteStart_ = Peek().position; }

    /// Throws with the quote and the next token as the place. What no statement can hold is reported as
    /// such whatever the reason given.
    [[noreturn]] void Fail(int number, TextView reason) const;
    [[noreturn]] void FailInExpression(TextView reason) const { Fail(expressionError_, reason); }

    /// Counts how deep the grammar's own recursion is; throws 3360 beyond kDeepestTree. What costs later
    /// steps more than an operator does counts for several levels.
    class Nesting {
     public:
        explicit Nesting(TokenReader& reader, int levels = 1);
        ~Nesting() { reader_.depth_ -= levels_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

     private:
        TokenReader& reader_;
        int levels_;
    };

 private:
    TextView statement_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    std::size_t quoteStart_ = 0;
    int expressionError_;
    int depth_ = 0;
};

}  // namespace quardele::sql
