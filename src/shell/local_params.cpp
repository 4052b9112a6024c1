#include "local_params.h"

#include <algorithm>
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
        return FromAnsi(bytes);
    }

    void Close() {
        stream_.close();
        stream_.clear();
    }

 private:
    /// The suite writes the file in the Western code page, whose letters are those of Unicode's first page.
    static Text FromAnsi(const std::string& bytes) { return forms::ToText(QString::fromLatin1(bytes)); }

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
