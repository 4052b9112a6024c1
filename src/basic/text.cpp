#include <basic/text.h>

#include <algorithm>

#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

constexpr char16_t kBlank = u' ';

void RequireAtLeast(std::ptrdiff_t least, std::ptrdiff_t value) {
    if (value < least) {
        throw RuntimeError(error::kInvalidCall);
    }
}

TextView WithoutLeading(TextView text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
    return text;
}

TextView WithoutTrailing(TextView text) {
    return text.substr(0, text.find_last_not_of(kBlank) + 1);
}

}  // namespace

Text Trim(TextView text) {
    return Text(WithoutTrailing(WithoutLeading(text)));
}
Text LTrim(TextView text) {
    return Text(WithoutLeading(text));
}
Text RTrim(TextView text) {
    return Text(WithoutTrailing(text));
}

Text Left(TextView text, std::ptrdiff_t count) {
    RequireAtLeast(0, count);
    return Text(text.substr(0, static_cast<std::size_t>(count)));
}

Text Right(TextView text, std::ptrdiff_t count) {
    RequireAtLeast(0, count);
    const std::size_t kept = std::min(static_cast<std::size_t>(count), text.size());
    return Text(text.substr(text.size() - kept));
}

Text Mid(TextView text, std::ptrdiff_t start) {
    return Mid(text, start, static_cast<std::ptrdiff_t>(text.size()));
}

Text Mid(TextView text, std::ptrdiff_t start, std::ptrdiff_t count) {
    RequireAtLeast(1, start);
    RequireAtLeast(0, count);
    const std::size_t first = std::min(static_cast<std::size_t>(start) - 1, text.size());
    return Text(text.substr(first, static_cast<std::size_t>(count)));
}

std::ptrdiff_t InStr(TextView text, TextView what) {
    return InStr(1, text, what);
}

std::ptrdiff_t InStr(std::ptrdiff_t start, TextView text, TextView what) {
    RequireAtLeast(1, start);
    if (static_cast<std::size_t>(start) > text.size()) {
        return 0;
    }
    const std::size_t found = text.find(what, static_cast<std::size_t>(start) - 1);
    return found == TextView::npos ? 0 : static_cast<std::ptrdiff_t>(found) + 1;
}

Text Replace(TextView text, TextView what, TextView with) {
    if (what.empty()) {
        return Text(text);
    }
    Text result;
    std::size_t copied = 0;
    for (std::size_t found = text.find(what); found != TextView::npos; found = text.find(what, copied)) {
        result.append(text, copied, found - copied).append(with);
        copied = found + what.size();
    }
    return result.append(text, copied);
}

Text Space(std::ptrdiff_t count) {
    RequireAtLeast(0, count);
    return Text(static_cast<std::size_t>(count), kBlank);
}

}  // namespace quardele::basic
