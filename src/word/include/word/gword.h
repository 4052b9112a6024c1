// The system's vocabulary for driving Word: flat, small operations on an application object that the caller
// owns, so that several applications can live side by side.
//
// Most operations never raise a failure: they show a box titled as given, or stay silent, and return. UI
// thread only.
#pragma once

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

class GWORD {
 public:
    /// `catalogueKey` is asked each time a bookmark is looked for.
    explicit GWORD(std::function<CatalogueKey()> catalogueKey);

    // Accessors of the catalogue's database and table, empty until the first bookmark is looked for.
    [[nodiscard]] std::shared_ptr<dao::Database> BASE_SIGNETS() const { return baseSignets_; }
    void SetBASE_SIGNETS(std::shared_ptr<dao::Database> database) { baseSignets_ = std::move(database); }
    [[nodiscard]] std::shared_ptr<dao::Recordset> TABLE_SIGNETS() const { return tableSignets_; }
    void SetTABLE_SIGNETS(std::shared_ptr<dao::Recordset> table) { tableSignets_ = std::move(table); }

    /// Writes down that the active form asked for a bookmark, when the catalogue file exists. Silent.
    void Enreg_Signet(TextView bookmark);

    /// Creates a new Word application into `Word`. Box on failure.
    bool W_CreationObjet(ObjectPtr& Word);
    bool W_FenAppAfficher(const ObjectPtr& Word);
    bool W_FenAppRestauration(const ObjectPtr& Word);
    /// Saves the document under a Windows path. Swallows every failure; always true.
    bool W_FichierEnregistrerSous(const ObjectPtr& Word, TextView fileName);
    /// Saves the document; `fileName` is ignored. Box on failure; true all the same.
    bool W_FichierEnregistrer(const ObjectPtr& Word, TextView fileName);
    bool W_FinLigneTableau(const ObjectPtr& Word);
    bool W_Insertion(const ObjectPtr& Word, const Variant& text);
    /// Positions and sizes, here and in W_FenAppDimension, are Word's points.
    bool W_FenAppDeplacement(const ObjectPtr& Word, TextView task, int left, int top);
    /// Without a flag: whether the header is shown. With one: opens or leaves the header, false.
    bool W_AffichageEntete(const ObjectPtr& Word, std::optional<bool> flag = {});
    void W_AffichagePage(const ObjectPtr& Word);
    /// Without a flag: whether the rulers are shown. With one: shows or hides them, true.
    bool W_AffichageRegle(const ObjectPtr& Word, std::optional<bool> flag = {});
    bool W_DebutDocument(const ObjectPtr& Word);
    bool W_EditionAtteindre(const ObjectPtr& Word, TextView bookmark);
    /// Whether the document has a table. Failures reach the caller.
    bool W_Existe_Tableau(const ObjectPtr& Word);
    bool W_FenAppDimension(const ObjectPtr& Word, TextView task, int width, int height);
    bool W_CelluleSuiv(const ObjectPtr& Word);
    bool W_FenDocAgrandissement(const ObjectPtr& Word, int state);
    /// Whether the bookmark exists; if so the selection stands on it.
    bool W_Existe_Signet(const ObjectPtr& Word, TextView bookmark);
    /// A new document; `templatePath` is a Windows path without extension, tried as .dot, .dotm, .dotx.
    bool W_FichierNouveau(const ObjectPtr& Word, std::optional<Text> templatePath = {});
    bool W_SignetExistant(const ObjectPtr& Word, TextView bookmark);

 private:
    std::function<CatalogueKey()> catalogueKey_;
    std::shared_ptr<dao::Database> baseSignets_;
    std::shared_ptr<dao::Recordset> tableSignets_;
};

}  // namespace quardele::word
