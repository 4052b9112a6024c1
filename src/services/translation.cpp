#include <services/translation.h>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <forms/msg_box.h>
#include <forms/strings.h>
#include <services/charset_converter.h>

namespace quardele::services {

namespace {

using basic::Text;
using basic::TextView;

constexpr std::ptrdiff_t kKeyLength = 20;
constexpr auto kTargetCharset = u"windows-1250";

/// Case does not count; Null equals nothing.
bool IsText(const basic::Variant& value, TextView text) {
    return !value.IsNull() && basic::UCase(basic::Joined(value)) == basic::UCase(text);
}

/// Puts the table on the row of a text, given trimmed. Rows that share the key stand together; the whole text
/// tells them apart, in any case, so that one row serves "OUI" and "Oui".
bool FindRow(dao::Recordset& table, TextView trimmed) {
    const Text key = basic::Left(trimmed, kKeyLength);
    table.Seek(u">=", {key});
    dao::DBEngine::Instance().Idle(1);
    if (table.NoMatch()) {
        return false;
    }
    while (!IsText(table.Value(u"T_VALEUR"), trimmed)) {
        table.MoveNext();
        if (table.Eof()) {
            return false;
        }
        const basic::Variant rowKey = table.Value(u"T_ABREGE");
        if (!IsText(rowKey, key) && key < basic::Joined(rowKey)) {
            return false;
        }
    }
    return true;
}

/// The row's translation with the blanks around the original; empty optional when there is no row.
std::optional<QString> Translated(const QString& text) {
    const Text original = forms::ToText(text);
    dao::Recordset* const table = Translation().TranslationTable.get();
    if (table == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    if (!FindRow(*table, basic::Trim(original))) {
        return {};
    }
    const auto leading = static_cast<std::ptrdiff_t>(original.size() - basic::LTrim(original).size());
    const auto trailing = static_cast<std::ptrdiff_t>(original.size() - basic::RTrim(original).size());
    return forms::ToQString(basic::Space(leading) + basic::Joined(table->Value(u"t_trad")) +
                            basic::Space(trailing));
}

QString Translate(const QString& text, bool plain) {
    if (!Translation().TranslationOn) {
        return text;
    }
    QString result = text;
    try {
        if (const std::optional<QString> translated = Translated(text)) {
            result = *translated;
            if (!plain) {
                result = CharsetConverter::Instance().Convert(result, QString::fromUtf16(kTargetCharset));
            }
        }
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(QStringLiteral("Proc. TRAD : ") + forms::ToQString(error.Description()));
    }
    return result;
}

}  // namespace

TranslationSettings& Translation() {
    static TranslationSettings settings;
    return settings;
}

QString TRAD(const QString& text) {
    return Translate(text, false);
}

QString TRAD(const QString& text, PlainTag /*plain*/) {
    return Translate(text, true);
}

}  // namespace quardele::services
