// Many statements in one text.
#include <sql/statement.h>

#include <algorithm>

namespace quardele::sql {
namespace {

constexpr TextView kBlanks = u" \t\r\n\u00A0\uFEFF";

/// Where what starts at `at` ends: behind the closing sign of a text, a name in brackets or a date, else
/// behind the one character. A doubled quote inside a text ends it and starts the next, which comes to the
/// same.
std::size_t EndOfPiece(TextView script, std::size_t at) {
    char16_t closing = script[at];
    switch (script[at]) {
        case u'[':
            closing = u']';
            break;
        case u'\'':
        case u'"':
        case u'#':
            break;
        default:
            return at + 1;
    }
    const std::size_t end = script.find(closing, at + 1);
    return end == TextView::npos ? script.size() : end + 1;
}

/// Where the first statement starts at or behind `at`: blanks are passed over, and comments, each of which
/// ends with its line. Within a statement two hyphens are two signs.
std::size_t StartOfStatement(TextView script, std::size_t at) {
    constexpr TextView kComment = u"--";
    at = std::min(script.find_first_not_of(kBlanks, at), script.size());
    while (script.substr(at).starts_with(kComment)) {
        const std::size_t lineEnd = std::min(script.find(u'\n', at), script.size());
        at = std::min(script.find_first_not_of(kBlanks, lineEnd), script.size());
    }
    return at;
}

}  // namespace

std::vector<ScriptStatement> SplitScript(TextView script) {
    std::vector<ScriptStatement> statements;
    std::size_t line = 1;
    std::size_t counted = 0;  // lines are counted up to here
    for (std::size_t start = StartOfStatement(script, 0); start < script.size();) {
        std::size_t end = start;
        while (end < script.size() && script[end] != u';') {
            end = EndOfPiece(script, end);
        }
        const TextView piece = script.substr(start, end - start);
        const std::size_t first = piece.find_first_not_of(kBlanks);
        if (first != TextView::npos) {
            line += static_cast<std::size_t>(
                std::count(script.begin() + static_cast<std::ptrdiff_t>(counted),
                           script.begin() + static_cast<std::ptrdiff_t>(start + first), u'\n'));
            counted = start + first;
            statements.push_back({piece.substr(first, piece.find_last_not_of(kBlanks) + 1 - first), line});
        }
        start = StartOfStatement(script, std::min(end + 1, script.size()));
    }
    return statements;
}

}  // namespace quardele::sql
