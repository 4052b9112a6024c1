// Line breaks of texts that come from Windows.
#pragma once

#include <QString>

namespace quardele::forms {

/// The text with a line feed for each of its line breaks: CR LF, CR alone, LF alone.
[[nodiscard]] inline QString WithLineFeeds(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

}  // namespace quardele::forms
