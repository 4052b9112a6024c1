// The structure patch at start-up: which columns it misses, what it tells, and that the process ends.
#include <fstream>
#include <sstream>

#include <QTest>

#include <child_process.h>
#include <forms/runtime.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/installation.h>

#include "database_edits.h"
#include "start.h"

using namespace quardele;
using tests::Start;
using tests::StartProgram;

namespace {

const QString kFirstLine = QStringLiteral("- Ajout champ TVEH_Note1 - Table : TVEH\n");
const QString kSecondLine = QStringLiteral("- Ajout champ TVEH_Note2 - Table : TVEH\n");

QString MessageWith(const QString& journal) {
    return QStringLiteral("Une mise à jour de structure des données a été effectuée.\n") + journal +
           QStringLiteral("\n\nL'application doit être redémarrée...");
}

std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

}  // namespace

class StructurePatchTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanup();
    void BothColumnsPresentStartWithoutAMessage();
    void TwoMissingColumnsAreToldAndEndTheProgram();
    void TheColumnsAreInTheTableForEveryProgram();
    void TheSampleOfAWorkshopIsBroughtUpToDate();
    void ATableThatSomebodyHasOpenStaysAsItIs();
    void WhileAnotherWorkstationIsInItNothingChangesAndTheNextStartTriesAgain_data();
    void WhileAnotherWorkstationIsInItNothingChangesAndTheNextStartTriesAgain();
    void AColumnThatCannotBeAddedIsTriedAtEachStart();
    void OneMissingColumnIsOneLine();
    void AColumnInOtherCaseIsMissing();
    void WithoutADataDatabaseTheJournalIsEmpty();
};

void StructurePatchTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void StructurePatchTest::cleanup() {
    tests::StopProgram();
}

void StructurePatchTest::BothColumnsPresentStartWithoutAMessage() {
    const support::Installation installation;
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{});
    QVERIFY(!start.ended);
}

void StructurePatchTest::TwoMissingColumnsAreToldAndEndTheProgram() {
    const support::Installation installation;
    std::filesystem::copy_file(QUARDELE_INSTALLATION_DIR "/before-notes/talmeon.mdb",
                               installation.File("DATA/talmeon.mdb"),
                               std::filesystem::copy_options::overwrite_existing);
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{MessageWith(kFirstLine + kSecondLine)});
    QVERIFY(start.ended);
    tests::StopProgram();
    const Start second = StartProgram();
    QCOMPARE(second.boxes, std::vector<QString>{});
    QVERIFY(!second.ended);
}

void StructurePatchTest::TheColumnsAreInTheTableForEveryProgram() {
    const support::Installation installation;
    const std::filesystem::path file = installation.File("DATA/talmeon.mdb");
    std::filesystem::copy_file(QUARDELE_INSTALLATION_DIR "/before-notes/talmeon.mdb", file,
                               std::filesystem::copy_options::overwrite_existing);
    const auto before = support::Installation::ExportTable(file, "TVEH");
    if (before.empty()) {
        QSKIP("mdb-export is not installed");
    }
    QVERIFY(StartProgram().ended);
    const auto after = support::Installation::ExportTable(file, "TVEH");
    QCOMPARE(after.size(), before.size());
    QCOMPARE(after[0], before[0] + ",TVEH_Note1,TVEH_Note2");
    for (std::size_t row = 1; row < after.size(); ++row) {
        QCOMPARE(after[row], before[row] + ",,");
    }
    tests::StopProgram();
    const auto rows =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\talmeon.mdb");
    for (const basic::TextView name : {u"TVEH_Note1", u"TVEH_Note2"}) {
        const dao::Field note = rows->TableDefNamed(u"TVEH").FieldNamed(name);
        QCOMPARE(note.Type(), dao::FieldType::Text);
        QCOMPARE(note.Size(), 100);
        QVERIFY(note.allowZeroLength);
        QCOMPARE(note.defaultValue, basic::Text());
    }
}

void StructurePatchTest::TheSampleOfAWorkshopIsBroughtUpToDate() {
    const std::filesystem::path sample =
        std::filesystem::path(QUARDELE_SAMPLE_DIR) / "before-notes" / "talmeon.mdb";
    if (!std::filesystem::exists(sample)) {
        QSKIP("the sample installation is not there");
    }
    const support::Installation installation;
    const std::filesystem::path file = installation.File("DATA/talmeon.mdb");
    std::filesystem::copy_file(sample, file, std::filesystem::copy_options::overwrite_existing);
    const auto before = support::Installation::ExportTable(file, "TVEH");
    if (before.empty()) {
        QSKIP("mdb-export is not installed");
    }
    const auto visits = support::Installation::ExportTable(file, "TVEH_DETAIL");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{MessageWith(kFirstLine + kSecondLine)});
    QVERIFY(start.ended);
    tests::StopProgram();
    const auto after = support::Installation::ExportTable(file, "TVEH");
    QCOMPARE(after.size(), before.size());
    QCOMPARE(after[0], before[0] + ",TVEH_Note1,TVEH_Note2");
    for (std::size_t row = 1; row < after.size(); ++row) {
        QCOMPARE(after[row], before[row] + ",,");
    }
    QCOMPARE(support::Installation::ExportTable(file, "TVEH_DETAIL"), visits);
    const Start second = StartProgram();
    QCOMPARE(second.boxes, std::vector<QString>{});
    QVERIFY(!second.ended);
}

void StructurePatchTest::ATableThatSomebodyHasOpenStaysAsItIs() {
    const support::Installation installation;
    std::filesystem::copy_file(QUARDELE_INSTALLATION_DIR "/before-notes/talmeon.mdb",
                               installation.File("DATA/talmeon.mdb"),
                               std::filesystem::copy_options::overwrite_existing);
    const auto rows = dao::DBEngine::Instance()
                          .Workspaces(0)
                          .OpenDatabase(u"C:\\QUARDELE\\DATA\\talmeon.mdb")
                          ->OpenRecordset(u"TVEH");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{MessageWith(kFirstLine + kSecondLine)});
    QVERIFY(start.ended);
    QCOMPARE(rows->FieldIndex(u"TVEH_EDIT") >= 0, true);
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\talmeon.mdb");
    QCOMPARE(database->TableDefNamed(u"TVEH").Fields().size(), rows->Fields().size());
}

void StructurePatchTest::WhileAnotherWorkstationIsInItNothingChangesAndTheNextStartTriesAgain_data() {
    QTest::addColumn<QStringList>("held");
    QTest::newRow("in the vehicles") << QStringList{"TVEH", "4428 TG 79", "TVEH_MARQUE"};
    QTest::newRow("in another table") << QStringList{"TTYP", "VID", "TTYP_LIBELLE"};
}

void StructurePatchTest::WhileAnotherWorkstationIsInItNothingChangesAndTheNextStartTriesAgain() {
    const support::Installation installation;
    const std::filesystem::path file = installation.File("DATA/talmeon.mdb");
    std::filesystem::copy_file(QUARDELE_INSTALLATION_DIR "/before-notes/talmeon.mdb", file,
                               std::filesystem::copy_options::overwrite_existing);
    const auto before = support::Installation::ExportTable(file, "TVEH");
    if (before.empty()) {
        QSKIP("mdb-export is not installed");
    }
    const std::vector<QString> told = {MessageWith(kFirstLine + kSecondLine)};
    QFETCH(const QStringList, held);
    {
        std::vector<std::string> arguments = {file.string()};
        for (const QString& word : held) {
            arguments.push_back(word.toStdString());
        }
        arguments.emplace_back("?");
        test::Process other(QUARDELE_OTHER_PROCESS, arguments);
        QVERIFY(other.WaitForSign());
        const Start refused = StartProgram();
        QCOMPARE(refused.boxes, told);
        QVERIFY(refused.ended);
        tests::StopProgram();
        QCOMPARE(other.Wait(), 0);
    }
    QCOMPARE(support::Installation::ExportTable(file, "TVEH"), before);
    const Start patched = StartProgram();
    QCOMPARE(patched.boxes, told);
    QVERIFY(patched.ended);
    tests::StopProgram();
    QCOMPARE(support::Installation::ExportTable(file, "TVEH")[0], before[0] + ",TVEH_Note1,TVEH_Note2");
    const Start usual = StartProgram();
    QCOMPARE(usual.boxes, std::vector<QString>{});
    QVERIFY(!usual.ended);
}

void StructurePatchTest::AColumnThatCannotBeAddedIsTriedAtEachStart() {
    const support::Installation installation;
    // The engine takes both spellings for one name and refuses to add the column.
    tests::ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TVEH_Note1", u"TVEH_NOTE1");
    QVERIFY(StartProgram().ended);
    const Start second = StartProgram();
    QCOMPARE(second.boxes, std::vector<QString>{MessageWith(kFirstLine)});
    QVERIFY(second.ended);
}

void StructurePatchTest::OneMissingColumnIsOneLine() {
    const support::Installation installation;
    tests::ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TVEH_Note2", u"TVEH_Autre");
    const Start start = StartProgram();
    QCOMPARE(start.boxes, std::vector<QString>{MessageWith(kSecondLine)});
    QVERIFY(start.ended);
}

void StructurePatchTest::AColumnInOtherCaseIsMissing() {
    const support::Installation installation;
    const std::filesystem::path file = installation.File("DATA/talmeon.mdb");
    tests::ReplaceInFile(file, u"TVEH_Note2", u"tveh_note2");
    const std::string before = BytesOf(file);
    for (int start = 1; start <= 3; ++start) {
        const Start told = StartProgram();
        QCOMPARE(told.boxes, std::vector<QString>{MessageWith(kSecondLine)});
        QVERIFY(told.ended);
        tests::StopProgram();
        QVERIFY(BytesOf(file) == before);
    }
}

void StructurePatchTest::WithoutADataDatabaseTheJournalIsEmpty() {
    const support::Installation installation;
    std::filesystem::remove(installation.File("DATA/talmeon.mdb"));
    const Start start = StartProgram();
    QCOMPARE(start.boxes.size(), std::size_t{2});
    QCOMPARE(start.boxes[1], MessageWith(QString()));
    QVERIFY(start.ended);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    StructurePatchTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "structure_patch_test.moc"
