#include "local_params.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>

#include <basic/conversion.h>
#include <basic/paths.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <shell/form_support.h>
#include <shell/session.h>

namespace quardele::shell {

namespace {

using basic::Text;
using basic::TextView;

/// Where the Western code page 1252 differs from Unicode's first 256 characters: its bytes 0x80 to 0x9F. The
/// five that it leaves open stand for the control characters of the same number.
constexpr std::array<char16_t, 32> kWesternExtras = {
    u'\u20AC', 0x81,      u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8D,      u'\u017D', 0x8F,
    0x90,      u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0x9D,      u'\u017E', u'\u0178'};

/// The suite writes the file in the Western code page.
Text FromWestern(const std::string& bytes) {
    constexpr unsigned char kFirstExtra = 0x80;
    Text text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        const std::size_t extra = static_cast<std::size_t>(code) - kFirstExtra;
        text.push_back(extra < kWesternExtras.size() ? kWesternExtras[extra] : char16_t{code});
    }
    return text;
}

/// The one sequential file of the program. A failure while reading leaves it open.
class FileNumberOne {
 public:
    void Open(TextView windowsPath) {
        if (stream_.is_open()) {
            throw basic::RuntimeError(basic::error::kFileAlreadyOpen);
        }
        stream_.open(basic::NativePath(windowsPath), std::ios::binary);
        if (!stream_.is_open()) {
            throw basic::RuntimeError(basic::error::kPathFileAccess);
        }
    }

    /// The next line without its end; empty optional at the end of the file.
    std::optional<Text> ReadLine() {
        std::string bytes;
        if (!std::getline(stream_, bytes)) {
            return {};
        }
        if (bytes.ends_with('\r')) {
            bytes.pop_back();
        }
        return FromWestern(bytes);
    }

    void Close() {
        stream_.close();
        stream_.clear();
    }

 private:
    std::ifstream stream_;
};

FileNumberOne& TheFileNumberOne() {
    static FileNumberOne file;
    return file;
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
void ReadCalendar(TextView lineWithoutBlanks) {
    Session& session = TheSession();
    session.PARAM_CALENDRIER = 0;
    if (StartsWith(lineWithoutBlanks, u"CALENDRIER")) {
        if (const std::optional<Text> value = BehindEqualSign(lineWithoutBlanks)) {
            session.PARAM_CALENDRIER = basic::CInt(basic::Trim(*value));
        }
    }
}

void ReadSetting(TextView line) {
    Session& session = TheSession();
    if (Sets(line, u"MIRE") && basic::UCase(basic::Right(line, 3)) == u"OFF") {
        session.MIRE_ACTIVE = false;
    }
    if (Sets(line, u"MIREVEH")) {
        if (const std::optional<Text> picture = QuotedValue(line)) {
            session.MIRE_VEH = forms::ToQString(*picture);
        }
    }
    if (Sets(line, u"DEVCAL")) {
        if (const std::optional<Text> value = BehindEqualSign(line)) {
            session.PARAM_DEVCAL = forms::ToQString(basic::Trim(*value));
        }
    }
    const Text dense = basic::Replace(line, u" ", u"");
    if (Sets(dense, u"SITE")) {
        if (const std::optional<Text> value = BehindEqualSign(dense)) {
            session.PARAM_SITE = forms::ToQString(*value);
        }
    }
    ReadCalendar(dense);
}

/// An empty line ends the settings, whatever follows it.
void ReadSettings(FileNumberOne& file) {
    while (const std::optional<Text> line = file.ReadLine()) {
        const Text trimmed = basic::Trim(*line);
        if (trimmed.empty()) {
            return;
        }
        ReadSetting(trimmed);
    }
}

}  // namespace

void Init_Params_Locaux() {
    try {
        Session& session = TheSession();
        session.MIRE_ACTIVE = true;
        session.MIRE_VEH.clear();
        session.PARAM_DEVCAL.clear();

        const QString folder = Dossier_Parent(forms::ToQString(basic::CurDir()));
        const Text path = forms::ToText(folder) + u"\\quardele.ini";
        if (basic::Dir(path).empty()) {
            return;
        }
        FileNumberOne& file = TheFileNumberOne();
        file.Open(path);
        ReadSettings(file);
        file.Close();
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Procedure Init_Params_Locaux : ") +
                      forms::ToQString(error.Description()));
    }
}

}  // namespace quardele::shell
