// Small routines that several forms share.
#pragma once

#include <QString>

#include <basic/text.h>
#include <forms/form.h>
#include <forms/grid.h>

namespace quardele::shell {

/// Whether a control of the form holds an unsaved change: a bound text, memo or check box with DataChanged,
/// or a grid with ChangeMade.
[[nodiscard]] bool Saisie_En_Cours(forms::Form& form);
/// Gives every data control of the form the database's path, then translates the form.
void Lier_Donnees_Form(forms::Form& form, const QString& databasePath);
/// Selects the whole text of the active control when that is a text box; errors are ignored.
void Selection_Texte();

/// 0 for a blank text, otherwise its number; throws RuntimeError 13 for a text that is no number.
[[nodiscard]] double Champ_Vers_Nombre(const QString& text);
/// Takes the row source from every data-bound list or combo box of the form; errors are ignored.
void Vider_RowSource(forms::Form& form);
/// Splits a statement at its first ORDER BY and its first WHERE. All outputs are upper case and trimmed,
/// without the words themselves; an empty statement leaves them as they were. Throws RuntimeError 5 for a
/// statement that ends right behind ORDER BY.
void SplitRecordSource(const QString& statement, QString& base, QString& where, QString& order);
/// The text up to and including the last "\" or ":"; empty when there is neither.
[[nodiscard]] QString Dossier_Parent(const QString& path);

}  // namespace quardele::shell
