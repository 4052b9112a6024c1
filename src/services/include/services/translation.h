// Translation of user texts: messages, and the captions, headings and tips of forms, pass through TRAD on
// their way to the screen. These do not, and are French in every edition: descriptions of failures and the
// box of a failure that nobody handles, panels of the status bar, entries of lists to choose from, hints in
// empty grids, names that the system reads out, the strip that tells why an export has failed, the calendar
// with its title, the file dialog for a PDF. With the switch off, its state in this edition, all texts stay
// French and no table is touched. UI thread only.
#pragma once

#include <memory>

#include <QString>

#include <dao/dao.h>
#include <forms/form.h>

namespace quardele::services {

/// The session's settings.
struct TranslationSettings {
    bool TranslationOn = false;
    int TranslationCharset = 0;
    QString TranslationFont;
    /// Folder (with trailing backslash) and file name of the translation database; recorded at start.
    QString CHEMIN_TRAD;
    QString NOM_BD_TRAD;
    /// Table recordset, indexed on T_ABREGE; nothing opens it in this edition.
    std::shared_ptr<dao::Recordset> TranslationTable;
};
[[nodiscard]] TranslationSettings& Translation();

/// Marks the second form of TRAD.
struct PlainTag {};
inline constexpr PlainTag Plain{};

/// The translation of a text, or the text itself.
[[nodiscard]] QString TRAD(const QString& text);
/// The same, without conversion to the target character set.
[[nodiscard]] QString TRAD(const QString& text, PlainTag);

/// Translates a form's own texts; the last act of a form's Load. Does nothing while the switch is off.
void TranslateForm(forms::Form& form);

}  // namespace quardele::services
