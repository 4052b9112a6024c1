#include "command_line.h"

#include <algorithm>

namespace quardele::basic {

namespace {

constexpr TextView kBlanks = u" \t";
constexpr char16_t kMark = u'"';
constexpr char16_t kBackslash = u'\\';

void SkipBlanks(TextView& line) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
}

/// In the program's name, which is a path, backslashes have no meaning.
void SkipName(TextView& line) {
    bool quoted = false;
    while (!line.empty() && (quoted || kBlanks.find(line.front()) == TextView::npos)) {
        quoted ^= line.front() == kMark;
        line.remove_prefix(1);
    }
}

/// Takes backslashes, and a mark of the text that follows them; leaves a mark that is none of the text.
void TakeBackslashes(TextView& line, Text& argument) {
    const std::size_t count = std::min(line.find_first_not_of(kBackslash), line.size());
    line.remove_prefix(count);
    const bool marked = !line.empty() && line.front() == kMark;
    argument.append(marked ? count / 2 : count, kBackslash);
    if (marked && count % 2 == 1) {
        argument += kMark;
        line.remove_prefix(1);
    }
}

Text TakeArgument(TextView& line) {
    Text argument;
    bool quoted = false;
    while (!line.empty() && (quoted || kBlanks.find(line.front()) == TextView::npos)) {
        if (line.front() == kBackslash) {
            TakeBackslashes(line, argument);
        } else if (quoted && line.starts_with(u"\"\"")) {
            argument += kMark;
            line.remove_prefix(2);
        } else if (line.front() == kMark) {
            quoted = !quoted;
            line.remove_prefix(1);
        } else {
            argument += line.front();
            line.remove_prefix(1);
        }
    }
    return argument;
}

}  // namespace

std::vector<Text> SplitCommandLine(TextView line) {
    std::vector<Text> arguments;
    SkipName(line);
    for (SkipBlanks(line); !line.empty(); SkipBlanks(line)) {
        arguments.push_back(TakeArgument(line));
    }
    return arguments;
}

}  // namespace quardele::basic
