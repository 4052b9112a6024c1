// The suite's tool for documents, started on a vehicle. A small program stands in its place.
#include <chrono>
#include <fstream>

#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

namespace fs = std::filesystem;

const QString kMissing = QStringLiteral(
    "Cette fonction nécessite le module de gestion des liens documentaire (contacter BRESSIMOR)");

/// What the tool writes into the current folder of the program that starts it.
bool Await(const char* file) {
    return QTest::qWaitFor([file] { return fs::exists(file); }, 20000);
}

/// The arguments that the tool got. Only blanks outside of quotes separate them.
QStringList SeenArguments() {
    if (!Await("tool.seen")) {
        return {QStringLiteral("not started")};
    }
    QStringList arguments;
    std::ifstream seen("tool.seen");
    for (std::string line; std::getline(seen, line);) {
        arguments.append(QString::fromStdString(line));
    }
    return arguments;
}

}  // namespace

class DocumentsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup();

    void BothFilesMustBeThere_data();
    void BothFilesMustBeThere();
    void AToolAboveTheCurrentFolderIsNotTheSuites();
    void TheToolGetsFolderModuleAndRegistration_data();
    void TheToolGetsFolderModuleAndRegistration();
    void NobodyWaitsForTheTool();
    void WithoutAStockFolderTheCurrentOneIsLookedIn();
    void AKeyOpensTheDocuments();
    void AToolThatCannotBeStartedEndsTheProgram();

 private:
    void PlaceTool() const;
    void PlaceDatabase(const char* file) const { std::ofstream(program_->Files().File(file)).put('\n'); }

    std::unique_ptr<RunningProgram> program_;
};

void DocumentsTest::init() {
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    forms::App::SetPathForTests(QStringLiteral("C:\\QUARDELE\\PROG\\VEH"));
    OpenRecordOf(QStringLiteral("KG-361-VP"));
}

void DocumentsTest::cleanup() {
    // The tool must be gone before its folder can go.
    if (fs::exists("tool.seen")) {
        std::ofstream("tool.go").put('\n');
        QVERIFY(Await("tool.done"));
    }
    forms::App::SetPathForTests(QString());
    program_.reset();
}

/// Above the program's own folder, which is not the current one.
void DocumentsTest::PlaceTool() const {
    fs::create_directories(program_->Files().File("PROG"));
    fs::copy_file(QUARDELE_SMALL_TOOL, program_->Files().File("PROG/VFoliant.exe"));
}

void DocumentsTest::BothFilesMustBeThere_data() {
    QTest::addColumn<bool>("tool");
    QTest::addColumn<bool>("database");
    QTest::newRow("neither") << false << false;
    QTest::newRow("no database") << true << false;
    QTest::newRow("no tool") << false << true;
}

void DocumentsTest::BothFilesMustBeThere() {
    QFETCH(const bool, tool);
    QFETCH(const bool, database);
    if (tool) {
        PlaceTool();
    }
    if (database) {
        PlaceDatabase("STOCK/FOLIANT.MDB");
    }
    support::BoxAnswerer boxes;
    Press("Cmd_Images");
    CompareOnlyBox(boxes, kMissing, kNoIcon);
    QVERIFY(!fs::exists("tool.seen"));
}

void DocumentsTest::AToolAboveTheCurrentFolderIsNotTheSuites() {
    fs::copy_file(QUARDELE_SMALL_TOOL, program_->Files().File("VFoliant.exe"));
    PlaceDatabase("STOCK/FOLIANT.MDB");
    support::BoxAnswerer boxes;
    Press("Cmd_Images");
    CompareOnlyBox(boxes, kMissing, kNoIcon);
    QVERIFY(!fs::exists("tool.seen"));
}

void DocumentsTest::TheToolGetsFolderModuleAndRegistration_data() {
    QTest::addColumn<QString>("registration");
    QTest::addColumn<QStringList>("arguments");
    const QString before = QStringLiteral("C:\\QUARDELE\\STOCK\\,TARVOLE-VEHICULES,");
    QTest::newRow("plain") << QStringLiteral("KG-361-VP") << QStringList{before + "KG-361-VP"};
    // Nothing is quoted: the tool has to put the registration together.
    QTest::newRow("blanks") << QStringLiteral("2107 RC 59") << QStringList{before + "2107", "RC", "59"};
    QTest::newRow("comma") << QStringLiteral("AB,12") << QStringList{before + "AB,12"};
    QTest::newRow("empty") << QString() << QStringList{before};
}

void DocumentsTest::TheToolGetsFolderModuleAndRegistration() {
    QFETCH(const QString, registration);
    QFETCH(const QStringList, arguments);
    PlaceTool();
    PlaceDatabase("STOCK/FOLIANT.MDB");
    Box("CTX_IMMAT")->SetText(registration);
    support::BoxAnswerer boxes;
    Press("Cmd_Images");
    QCOMPARE(SeenArguments(), arguments);
    QVERIFY(boxes.Shown().empty());
}

void DocumentsTest::NobodyWaitsForTheTool() {
    PlaceTool();
    PlaceDatabase("STOCK/FOLIANT.MDB");
    Press("Cmd_Images");
    // Back already, while the tool stays until it is told to go.
    QVERIFY(Await("tool.seen"));
    QVERIFY(!fs::exists("tool.done"));
    PressKey(Qt::Key_F8);
    QCOMPARE(Tabs()->Tab(), kListTab);
}

void DocumentsTest::WithoutAStockFolderTheCurrentOneIsLookedIn() {
    PlaceTool();
    PlaceDatabase("STOCK/FOLIANT.MDB");
    shell::TheSession().CHEMIN_STOCK.clear();
    support::BoxAnswerer boxes;
    Press("Cmd_Images");
    CompareOnlyBox(boxes, kMissing, kNoIcon);
    PlaceDatabase("VEH/FOLIANT.MDB");
    Press("Cmd_Images");
    QCOMPARE(SeenArguments(), QStringList{",TARVOLE-VEHICULES,KG-361-VP"});
}

void DocumentsTest::AKeyOpensTheDocuments() {
    support::BoxAnswerer boxes;
    PressKey(Qt::Key_M, Qt::ControlModifier);
    CompareOnlyBox(boxes, kMissing, kNoIcon);
}

void DocumentsTest::AToolThatCannotBeStartedEndsTheProgram() {
    fs::create_directories(program_->Files().File("PROG"));
    PlaceDatabase("PROG/VFoliant.exe");
    PlaceDatabase("STOCK/FOLIANT.MDB");
    const int endsBefore = forms::CatchEndOfProcess(true);
    support::BoxAnswerer boxes;
    Press("Cmd_Images");
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QVERIFY(boxes.Shown().front().text.startsWith(QStringLiteral("Erreur d'exécution 5")));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    DocumentsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "documents_test.moc"
