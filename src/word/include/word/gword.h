// The system's vocabulary for driving Word: flat, small operations on an application object that the caller
// owns, so that several applications can live side by side.
//
// Most operations never raise a failure: they show a box titled "Erreur Word (...)", or stay silent, and
// return. Where nothing else is said below, an operation is silent, and its result is worth nothing: many
// return false whatever happened, some true. Those that answer a question say so. UI thread only.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include <automation/object.h>
#include <dao/dao.h>

namespace quardele::word {

using automation::ObjectPtr;
using basic::Text;
using basic::TextView;
using basic::Variant;

/// What the bookmark catalogue writes down beside a bookmark's name.
struct CatalogueKey {
    int application = 0;  ///< number of the module
    Text form;            ///< name of the active form
};

/// The arguments of W_FormatCaracteres, in the order of Word's old macro statement; those that are not given
/// change nothing. Only size (0, points), underline (1), font name (15) and bold (16) are used.
using CharacterFormat = std::array<std::optional<Variant>, 18>;

/// Shows a text with an OK button and returns when it is answered; an empty title means the program's own.
using ShowBox = std::function<void(const Text& text, const Text& title)>;

class GWORD {
 public:
    /// `catalogueKey` is asked each time a bookmark is looked for while the catalogue's file exists; its
    /// failure leaves the catalogue alone.
    GWORD(std::function<CatalogueKey()> catalogueKey, ShowBox showBox);

    // Accessors of the catalogue's database and table, empty until the first bookmark is looked for.
    [[nodiscard]] std::shared_ptr<dao::Database> BASE_SIGNETS() const { return baseSignets_; }
    void LetBASE_SIGNETS(std::shared_ptr<dao::Database> database) { SetBASE_SIGNETS(std::move(database)); }
    void SetBASE_SIGNETS(std::shared_ptr<dao::Database> database) { baseSignets_ = std::move(database); }
    [[nodiscard]] std::shared_ptr<dao::Recordset> TABLE_SIGNETS() const { return tableSignets_; }
    void LetTABLE_SIGNETS(std::shared_ptr<dao::Recordset> table) { SetTABLE_SIGNETS(std::move(table)); }
    void SetTABLE_SIGNETS(std::shared_ptr<dao::Recordset> table) { tableSignets_ = std::move(table); }

    /// Writes down that the active form asked for a bookmark, when the catalogue file exists.
    void Enreg_Signet(const ObjectPtr& Word, TextView bookmark);

    /// Creates a new Word application into `Word`; whether it did. Box on failure.
    bool W_CreationObjet(ObjectPtr& Word);
    bool W_FenAppAfficher(const ObjectPtr& Word);
    bool W_FenAppRestauration(const ObjectPtr& Word);
    bool W_Fermer(const ObjectPtr& Word);
    /// Saves the document under a Windows path. Swallows every failure; always true.
    bool W_FichierEnregistrerSous(const ObjectPtr& Word, TextView fileName);
    bool W_AffichageNotesBasPg(const ObjectPtr& Word);
    /// Saves the document; `fileName` is ignored. Box on failure; true all the same.
    bool W_FichierEnregistrer(const ObjectPtr& Word, TextView fileName);
    /// Moves by characters; with `extend` 1 the selection grows. Box on failure; true all the same.
    bool W_CarDroite(const ObjectPtr& Word, int count, int extend);
    /// The same, to the left.
    bool W_CarGauche(const ObjectPtr& Word, int count, int extend);
    /// Opens a document by its Windows path. Box on failure.
    bool W_FichierOuvrir(const ObjectPtr& Word, TextView fileName);
    /// The same, for reading only.
    bool W_FichierOuvrirRO(const ObjectPtr& Word, TextView fileName);
    /// Goes to the end of the document, as a selection when `extend` is not 0. Box on failure.
    bool W_FinDocument(const ObjectPtr& Word, std::optional<int> extend = {});
    bool W_FinLigneTableau(const ObjectPtr& Word);
    /// Goes to the end of the table's column, if there is a table; whether nothing failed.
    bool W_FinColonneTableau(const ObjectPtr& Word);
    /// Types a text. Box on failure; true all the same.
    bool W_Insertion(const ObjectPtr& Word, const Variant& text);
    /// Positions and sizes, here and in W_FenAppDimension, are Word's points.
    bool W_FenAppDeplacement(const ObjectPtr& Word, TextView task, int left, int top);
    /// Box on failure.
    bool W_LigneVersBas(const ObjectPtr& Word);
    /// Where the selection starts, in characters from the start of its story; Empty after a failure, which is
    /// shown in a box.
    Variant W_LitPosDebSel(const ObjectPtr& Word);
    /// The same for the end.
    Variant W_LitPosFinSel(const ObjectPtr& Word);
    /// The selected text; `start` and `end` are ignored. Box on failure.
    Text W_LitTexte(const ObjectPtr& Word, int start, int end);
    /// The text between two positions of the document, in characters. Box on failure.
    Text W_LitTexte_OLD(const ObjectPtr& Word, int start, int end);
    /// Without a flag: whether the selection is hidden. With one: hides or shows it, true. Box on failure.
    bool W_Masque(const ObjectPtr& Word, std::optional<bool> flag = {});
    /// To the next word; the selection grows when a marker is given, whatever it is.
    bool W_MotDroite(const ObjectPtr& Word, const std::optional<Variant>& marker = {});
    // By the clipboard, for the selection; true whatever happened.
    bool W_EditionColler(const ObjectPtr& Word);
    bool W_EditionCopier(const ObjectPtr& Word);
    bool W_EditionCouper(const ObjectPtr& Word);
    /// Without a flag: whether the header is shown. With one: opens or leaves the header, false. Box on
    /// failure.
    bool W_AffichageEntete(const ObjectPtr& Word, std::optional<bool> flag = {});
    /// Closes the document without saving it when `mode` is 2, and asks the application itself to close
    /// otherwise. Any failure is taken for an operator who closed Word.
    bool W_FichierFermer(const ObjectPtr& Word, int mode);
    bool W_AffichageEntetePiedPgPrec(const ObjectPtr& Word);
    /// Shows pages as they are printed. Box on failure.
    void W_AffichagePage(const ObjectPtr& Word);
    /// Without a flag: whether the rulers are shown. With one: shows or hides them, true. Box on failure.
    bool W_AffichageRegle(const ObjectPtr& Word, std::optional<bool> flag = {});
    /// Makes a Windows folder the process's current one. Throws 76 when there is no such folder.
    bool W_ChDir(const ObjectPtr& Word, TextView folder);
    bool W_AffichageEntetePiedPgSuiv(const ObjectPtr& Word);
    /// Box on failure.
    bool W_DebutDocument(const ObjectPtr& Word);
    /// Into the footer, or back from it. Failures behind W_AffichagePage reach the caller.
    bool W_AffichagePiedPage(const ObjectPtr& Word);
    /// Goes to the next footnote. Failures reach the caller.
    bool W_AtteindreNoteBasPgSuiv(const ObjectPtr& Word);
    /// Goes to the start of the line. Failures reach the caller.
    bool W_DebutLigne(const ObjectPtr& Word);
    /// Selects a bookmark and shows pages; whether the bookmark was selected. Box when the pages are not.
    bool W_EditionAtteindre(const ObjectPtr& Word, TextView bookmark);
    /// Whether the document has changes that are not saved; false after a failure.
    bool W_EstDocModifie(const ObjectPtr& Word);
    /// Whether the document has a table. Failures reach the caller.
    bool W_Existe_Tableau(const ObjectPtr& Word);
    bool W_PhraseDroite(const ObjectPtr& Word, const Variant& first, const Variant& second);
    /// Ends Word; whether it did.
    Variant W_Quit(const ObjectPtr& Word);
    /// Inserts one row, whatever `count` is; whether it did.
    bool W_TableauInsererLigne(const ObjectPtr& Word, int count);
    bool W_CellulePrec(const ObjectPtr& Word);
    bool W_FenAppDimension(const ObjectPtr& Word, TextView task, int width, int height);
    bool W_CelluleSuiv(const ObjectPtr& Word);
    // Five operations that do nothing: 0 columns, and false.
    int W_TABLEAU_NBCOL(const ObjectPtr& Word, const Variant& table);
    bool W_TABLEAU_ADDLIGNE(const ObjectPtr& Word, const Variant& table);
    bool W_Signet_TrierPar_Pos(const ObjectPtr& Word);
    bool W_Signet_TrierPar_Nom(const ObjectPtr& Word);
    bool W_Signet_SUPPRIME(const ObjectPtr& Word, TextView bookmark);
    // Moves in tables. Box on failure.
    bool W_DebutColonneTableau(const ObjectPtr& Word);
    bool W_DebutLigneTableau(const ObjectPtr& Word);
    bool W_EditionAtteindreTableau(const ObjectPtr& Word);
    /// Makes a bookmark of the selection; true. Failures reach the caller.
    bool W_EditionSignet(const ObjectPtr& Word, TextView bookmark);
    bool W_FenDocAgrandissement(const ObjectPtr& Word, int state);
    bool W_TableauSupprimerCellules(const ObjectPtr& Word);
    bool W_TableauSelectionnerLigne(const ObjectPtr& Word);
    bool W_TableauLargeurColonne(const ObjectPtr& Word);
    /// Whether the bookmark exists; if so the selection goes there, as W_EditionAtteindre does it, and what
    /// becomes of that is not told. Box when the question itself fails.
    bool W_Existe_Signet(const ObjectPtr& Word, TextView bookmark);
    /// What Word tells of the selection under that code. Failures reach the caller.
    Variant W_SelInfo(const ObjectPtr& Word, int code);
    /// A new document; `templatePath` is a Windows path without extension, tried as .dot, .dotm, .dotx.
    /// Whether nothing failed. Box on failure.
    bool W_FichierNouveau(const ObjectPtr& Word, std::optional<Text> templatePath = {});
    /// Whether the bookmark exists. Box on failure.
    bool W_SignetExistant(const ObjectPtr& Word, TextView bookmark);
    /// Box on failure.
    bool W_FormatCaracteres(const ObjectPtr& Word, const CharacterFormat& format);
    /// Moves down by paragraphs; with `extend` 1 the selection grows. Box on failure.
    bool W_ParaVersBas(const ObjectPtr& Word, int count, int extend);
    /// Selects the table of the selection; whether it did.
    bool W_TableauSelectionnerTableau(const ObjectPtr& Word);

 private:
    friend class GwordInside;  // the unit tests

    /// The text of a bookmark. It asks for a member that Word does not have, and so ends with its box.
    Text W_LitSignet(const ObjectPtr& Word, TextView bookmark);

    std::function<CatalogueKey()> catalogueKey_;
    ShowBox showBox_;
    std::shared_ptr<dao::Database> baseSignets_;
    std::shared_ptr<dao::Recordset> tableSignets_;
    /// Title of the last failure that was not shown.
    Text errorTitle_;
};

}  // namespace quardele::word
