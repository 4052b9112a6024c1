#include "local_settings.h"

#include <cstdint>
#include <optional>
#include <string>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <basic/western.h>

namespace quardele::shell {

namespace {

using basic::Text;
using basic::TextView;

Text FromWestern(const std::string& bytes) {
    Text text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        text.push_back(basic::FromWestern(static_cast<std::uint8_t>(byte)));
    }
    return text;
}

/// A file that cannot be read further looks like one that ends here.
void ThrowIfUnreadable(const std::istream& file) {
    if (file.bad()) {
        throw basic::RuntimeError(basic::error::kDeviceIo);
    }
}

/// The next line without its end; empty optional at the end of the file.
std::optional<Text> ReadLine(std::istream& file) {
    if (file.peek() == std::istream::traits_type::eof()) {
        ThrowIfUnreadable(file);
        return {};
    }
    std::string bytes;
    char byte = 0;
    while (file.get(byte) && byte != '\r' && byte != '\n') {
        bytes.push_back(byte);
    }
    ThrowIfUnreadable(file);
    if (file && byte == '\r' && file.peek() == '\n') {
        file.ignore();
    }
    return FromWestern(bytes);
}

bool StartsWith(TextView line, TextView key) {
    return basic::UCase(basic::Left(line, static_cast<std::ptrdiff_t>(key.size()))) == key;
}

/// Whether the line sets the key, with or without a blank before the equal sign.
bool Sets(TextView line, TextView key) {
    return StartsWith(line, Text(key) + u"=") || StartsWith(line, Text(key) + u" =");
}

/// What stands behind the first equal sign; empty optional when that is missing or ends the line.
std::optional<Text> BehindEqualSign(TextView line) {
    const std::size_t sign = line.find(u'=');
    if (sign == TextView::npos || sign + 1 == line.size()) {
        return {};
    }
    return Text(line.substr(sign + 1));
}

/// The text between the first double quote and the one that ends the line.
std::optional<Text> QuotedValue(TextView line) {
    const std::size_t first = line.find(u'"');
    if (!line.ends_with(u'"') || first + 1 == line.size()) {
        return {};
    }
    return Text(line.substr(first + 1, line.size() - first - 2));
}

/// The key decides on each line anew: any line behind it brings the default back.
void ReadCalendar(TextView lineWithoutBlanks, LocalSettings& settings) {
    settings.PARAM_CALENDRIER = 0;
    if (StartsWith(lineWithoutBlanks, u"CALENDRIER")) {
        if (const std::optional<Text> value = BehindEqualSign(lineWithoutBlanks)) {
            settings.PARAM_CALENDRIER = basic::CInt(basic::Trim(*value));
        }
    }
}

void ReadSetting(TextView line, LocalSettings& settings) {
    if (Sets(line, u"MIRE") && basic::UCase(basic::Right(line, 3)) == u"OFF") {
        settings.MIRE_ACTIVE = false;
    }
    if (Sets(line, u"MIREVEH")) {
        settings.MIRE_VEH = QuotedValue(line).value_or(settings.MIRE_VEH);
    }
    if (Sets(line, u"DEVCAL")) {
        if (const std::optional<Text> value = BehindEqualSign(line)) {
            settings.PARAM_DEVCAL = basic::Trim(*value);
        }
    }
    const Text dense = basic::Replace(line, u" ", u"");
    if (Sets(dense, u"SITE")) {
        settings.PARAM_SITE = BehindEqualSign(dense).value_or(settings.PARAM_SITE);
    }
    ReadCalendar(dense, settings);
}

}  // namespace

void ReadLocalSettings(std::istream& file, LocalSettings& settings) {
    while (const std::optional<Text> line = ReadLine(file)) {
        const Text trimmed = basic::Trim(*line);
        if (trimmed.empty()) {
            return;
        }
        ReadSetting(trimmed, settings);
    }
}

}  // namespace quardele::shell
