// Translation of user texts. Every text for the operator passes through TRAD on its way to the screen; with
// the switch off, its state in this edition, texts stay French and no table is touched. UI thread only.
#pragma once

#include <functional>
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
