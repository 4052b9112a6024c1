// The catalogue of bookmarks: which bookmarks each form asks for, in SIGNETS.MDB.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <QApplication>
#include <QTest>

#include <basic/conversion.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <word/gword.h>

#include "recording_word.h"

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using word::GWORD;
using Rows = std::vector<std::string>;

constexpr char16_t kFile[] = u"c:\\quardele\\SIGNETS.MDB";

std::shared_ptr<dao::Database> Catalogue() {
    return dao::DBEngine::Instance().Workspaces(0).OpenDatabase(kFile);
}

void Put(int application, basic::TextView form, basic::TextView bookmark) {
    const auto table = Catalogue()->OpenRecordset(u"TSIGNETS");
    table->AddNew();
    table->SetValue(u"SIGNETS_Appli", application);
    table->SetValue(u"SIGNETS_nomdot", form);
    table->SetValue(u"SIGNETS_nomsignet", bookmark);
    table->Update();
}

/// The rows as "12 FRELANCES RS", in the order of these texts.
Rows Written() {
    Rows rows;
    const auto table = Catalogue()->OpenRecordset(u"TSIGNETS");
    for (; !table->Eof(); table->MoveNext()) {
        std::string row;
        for (const auto* field : {u"SIGNETS_Appli", u"SIGNETS_nomdot", u"SIGNETS_nomsignet"}) {
            row += (row.empty() ? "" : " ") + basic::ToUtf8(basic::CStr(table->Value(field)));
        }
        rows.push_back(row);
    }
    std::ranges::sort(rows);
    return rows;
}

}  // namespace

class BookmarkCatalogueTest : public QObject {
    Q_OBJECT

    std::optional<support::Installation> installation_;
    std::optional<RecordingWord> word_;
    std::optional<GWORD> gword_;
    ObjectPtr application_;
    int asked_ = 0;

 private slots:
    void init() {
        installation_.emplace();
        word_.emplace();
        word_->bookmarks = {"RS"};
        application_ = word_->CreateObject(u"Word.Application");
        application_->Child(u"Documents")->Call(u"Add");
        asked_ = 0;
        gword_.emplace(
            [this] {
                ++asked_;
                return word::CatalogueKey{12, u"FRELANCES"};
            },
            forms::ShowBox);
    }
    void cleanup() {
        gword_.reset();
        application_.reset();
        word_.reset();
        installation_.reset();
    }

    void ItsMembersAreGivenAndTaken() {
        const auto base = Catalogue();
        gword_->LetBASE_SIGNETS(base);
        QCOMPARE(gword_->BASE_SIGNETS(), base);
        gword_->SetBASE_SIGNETS(nullptr);
        QCOMPARE(gword_->BASE_SIGNETS(), nullptr);
        const auto table = base->OpenRecordset(u"TSIGNETS");
        gword_->LetTABLE_SIGNETS(table);
        QCOMPARE(gword_->TABLE_SIGNETS(), table);
        gword_->SetTABLE_SIGNETS(nullptr);
        QCOMPARE(gword_->TABLE_SIGNETS(), nullptr);
    }

    void OpensTheFileOnceAndItsTableEachTime() {
        QVERIFY(gword_->BASE_SIGNETS() == nullptr);
        gword_->W_Existe_Signet(application_, u"RS");
        const auto base = gword_->BASE_SIGNETS();
        const auto table = gword_->TABLE_SIGNETS();
        QVERIFY(base != nullptr);
        QCOMPARE(table->Index(), basic::Text(u"PrimaryKey"));
        gword_->W_Existe_Signet(application_, u"RS");
        QCOMPARE(gword_->BASE_SIGNETS(), base);
        QVERIFY(gword_->TABLE_SIGNETS() != table);
    }

    void UsesTheDatabaseThatItWasGiven() {
        const auto base = Catalogue();
        gword_->SetBASE_SIGNETS(base);
        gword_->Enreg_Signet(application_, u"RS");
        QCOMPARE(gword_->BASE_SIGNETS(), base);
        QCOMPARE(Written(), Rows{"12 FRELANCES RS"});
    }

    void LooksTheBookmarkUpTwiceForOneTest() {
        gword_->W_Existe_Signet(application_, u"RS");
        QCOMPARE(asked_, 2);
    }

    void WritesABookmarkDownWhetherTheDocumentHasItOrNot() {
        QVERIFY(gword_->W_Existe_Signet(application_, u"RS"));
        QVERIFY(!gword_->W_Existe_Signet(application_, u"ADR4"));
        QCOMPARE(Written(), (Rows{"12 FRELANCES ADR4", "12 FRELANCES RS"}));
    }

    void WritesABookmarkDownThatIsKnownForOthersOnly() {
        Put(13, u"FRELANCES", u"RS");
        Put(12, u"FCHXMODL", u"RS");
        Put(12, u"FRELANCES", u"ADR1");
        gword_->Enreg_Signet(application_, u"RS");
        QCOMPARE(Written(),
                 (Rows{"12 FCHXMODL RS", "12 FRELANCES ADR1", "12 FRELANCES RS", "13 FRELANCES RS"}));
    }

    void WritesNothingDownForABookmarkThatIsKnown() {
        Put(12, u"FRELANCES", u"RS");
        gword_->Enreg_Signet(application_, u"RS");
        QCOMPARE(Written(), Rows{"12 FRELANCES RS"});
        QVERIFY(!gword_->TABLE_SIGNETS()->NoMatch());
    }

    void OtherProgramsReadWhatIsWrittenDown() {
        gword_->Enreg_Signet(application_, u"RS");
        const auto lines = support::Installation::ExportTable(installation_->File("SIGNETS.MDB"), "TSIGNETS");
        if (lines.empty()) {
            QSKIP("no other reader is installed");
        }
        QCOMPARE(lines, (Rows{"SIGNETS_Appli,SIGNETS_nomdot,SIGNETS_nomsignet", "12,\"FRELANCES\",\"RS\""}));
    }

    void StaysAloneWhenItsFileIsMissing() {
        std::filesystem::remove(installation_->File("SIGNETS.MDB"));
        QVERIFY(gword_->W_Existe_Signet(application_, u"RS"));
        QVERIFY(gword_->BASE_SIGNETS() == nullptr);
        QCOMPARE(asked_, 0);
    }

    void IsSilentWhenTheKeyCannotBeTold() {
        gword_.emplace([]() -> word::CatalogueKey { throw basic::RuntimeError(basic::error::kObjectNotSet); },
                       forms::ShowBox);
        const support::BoxAnswerer boxes;
        QVERIFY(gword_->W_Existe_Signet(application_, u"RS"));
        QVERIFY(boxes.Shown().empty());
        QVERIFY(Written().empty());
    }

    void IsSilentWhileSomebodyKeepsTheFileForHimself() {
        const auto exclusive = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(kFile, true);
        const support::BoxAnswerer boxes;
        QVERIFY(gword_->W_Existe_Signet(application_, u"RS"));
        QVERIFY(boxes.Shown().empty());
        QVERIFY(gword_->BASE_SIGNETS() == nullptr);
    }

    void IsSilentWhenTheFileIsNoDatabase() {
        std::ofstream(installation_->File("SIGNETS.MDB"), std::ios::trunc) << "no database";
        const support::BoxAnswerer boxes;
        QVERIFY(gword_->W_Existe_Signet(application_, u"RS"));
        QVERIFY(boxes.Shown().empty());
    }
};

}  // namespace quardele::tests

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    quardele::forms::SetUpApplication(*qApp);
    quardele::tests::BookmarkCatalogueTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "bookmark_catalogue_test.moc"
