// The catalogue of bookmarks: which bookmarks each form asks for, written down for whoever makes templates.
#include <basic/paths.h>
#include <word/gword.h>

namespace quardele::word {

namespace {

constexpr TextView kCatalogueFile = u"c:\\quardele\\SIGNETS.MDB";
constexpr int kReleaseReadLocks = 1;

}  // namespace

void GWORD::Enreg_Signet(const ObjectPtr&, TextView bookmark) {
    try {
        if (basic::Dir(kCatalogueFile).empty()) {
            return;
        }
        dao::DBEngine& engine = dao::DBEngine::Instance();
        if (baseSignets_ == nullptr) {
            baseSignets_ = engine.Workspaces(0).OpenDatabase(kCatalogueFile);
        }
        tableSignets_ = baseSignets_->OpenRecordset(u"TSIGNETS");
        tableSignets_->SetIndex(u"PrimaryKey");
        engine.Idle(kReleaseReadLocks);
        const CatalogueKey key = catalogueKey_();
        tableSignets_->Seek(u"=", {key.application, key.form, bookmark});
        if (tableSignets_->NoMatch()) {
            tableSignets_->AddNew();
            tableSignets_->SetValue(u"SIGNETS_Appli", key.application);
            tableSignets_->SetValue(u"SIGNETS_nomdot", key.form);
            tableSignets_->SetValue(u"SIGNETS_nomsignet", bookmark);
            tableSignets_->Update();
        }
    } catch (const basic::RuntimeError&) {
        // The catalogue is a help for template makers; a letter never waits for it.
        return;
    }
}

}  // namespace quardele::word
