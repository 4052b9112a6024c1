// The translation switch raised as the start of a translated edition does, on rows of a test's own.
#pragma once

#include <vector>

#include <QSet>
#include <QString>
#include <QStringList>

#include <basic/variant.h>
#include <support/boxes.h>

namespace quardele::support {

/// A row of the translation table. Its key is the beginning of the text unless another one is given.
struct TranslationRow {
    TranslationRow(basic::TextView frenchText, basic::TextView translatedText);
    TranslationRow(basic::Variant rowKey, basic::Variant frenchText, basic::TextView translatedText);

    basic::Variant key;
    basic::Variant text;
    basic::Text translation;
};

/// The table's file in an installation, as the program knows it.
inline constexpr auto kTranslationFile = u"C:\\QUARDELE\\DATA\\BDTRAD.MDB";

/// On the table as the installation has it.
void RaiseTranslation();
/// On a table of these rows alone.
void RaiseTranslation(const std::vector<TranslationRow>& rows, basic::TextView file = kTranslationFile);

/// What a text becomes when it passes through RaiseMarks() once: brackets around it, its outer blanks
/// outside, letters without their accents, some of which the code page of translations lacks.
[[nodiscard]] QString Marked(const QString& text);
/// The same, passed twice.
[[nodiscard]] QString MarkedTwice(const QString& text);
[[nodiscard]] QString WithoutAccents(const QString& text);

/// On a table that puts each of these texts into brackets, however often it passes.
void RaiseMarks(const QSet<QString>& texts, basic::TextView file = kTranslationFile);

/// Boxes under marks. Each expectation is the whole text of a box, with brackets around what is to pass
/// through the translation: the table has a row for each part inside and outside of brackets, so a part that
/// passes where it should not shows too.
void RaiseMarksFor(const QStringList& boxes, basic::TextView file = kTranslationFile);
/// What the boxes so far have said, without accents, and forgets them.
[[nodiscard]] QStringList TakeWithoutAccents(BoxAnswerer& boxes);
/// The boxes of an expectation as they come out.
[[nodiscard]] QStringList BoxesWithoutAccents(const QStringList& boxes);

}  // namespace quardele::support
