// The boxes of the shell with the translation raised: which parts of them pass through it. Brackets stand
// around what has passed.
#include <filesystem>
#include <fstream>
#include <functional>

#include <QAction>
#include <QTest>

#include <basic/runtime_error.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <shell/f_evolution.h>
#include <shell/main_window.h>
#include <shell/session.h>
#include <support/installation.h>

#include "database_edits.h"
#include "start.h"

using namespace quardele;
using support::BoxesWithoutAccents;
using tests::MainWindow;

namespace {

struct Case {
    const char* name;
    QStringList boxes;
    /// Makes the start go wrong.
    std::function<void(const support::Installation&)> spoil;
};

constexpr auto kPaths = u"C:\\QUARDELE\\dbpath.mdb";
constexpr auto kData = u"C:\\QUARDELE\\DATA\\talmeon.mdb";

/// What the patch tells of the columns that it has added; no part of it passes.
QString Patched(const QString& columns) {
    return QStringLiteral("Une mise à jour de structure des données a été effectuée.\n") + columns +
           QStringLiteral("\n\nL'application doit être redémarrée...");
}

QString Described(int error, basic::TextView name) {
    return forms::ToQString(basic::Describe(error, name));
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases{
        {"no path database",
         {QStringLiteral("[La base de données DBPATH.MDB est introuvable !]")},
         [](const auto& installation) { std::filesystem::remove(installation.File("dbpath.mdb")); }},
        {"no row of the data database",
         {QStringLiteral("[Cette application ne peut pas fonctionner sans TALMEON]")},
         [](const auto&) {
             tests::SetField(kPaths, u"TPATH", u"TPATH_NUM = 2", u"TPATH_NUM", std::int16_t{12});
         }},
        {"another version",
         {QStringLiteral("[Ce programme est en version] 9.5 [et la base de données en version] 9.4")},
         [](const auto&) { tests::SetField(kData, u"TPAR", u"TPAR_Ver = '9.5'", u"TPAR_Ver", u"9.4"); }},
        {"no data database",
         {QStringLiteral("control appli: (2) : ") + Described(basic::error::kFileMissing, kData),
          Patched(QString())},
         [](const auto& installation) { std::filesystem::remove(installation.File("DATA/talmeon.mdb")); }},
        {"a missing column",
         {Patched(QStringLiteral("- Ajout champ TVEH_Note2 - Table : TVEH\n"))},
         [](const auto& installation) {
             tests::ReplaceInFile(installation.File("DATA/talmeon.mdb"), u"TVEH_Note2", u"TVEH_Autre");
         }},
    };
    return cases;
}

}  // namespace

class TranslatedStartTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase();
    void cleanup() { tests::StopProgram(); }

    void TheBoxesOfAStartThatFails_data();
    void TheBoxesOfAStartThatFails();
    void TheBoxOfTheHiddenEntry();
    void TheBoxesOfAMissingChangeLog();
    // Last: the file of local parameters stays open for the rest of the process.
    void TheBoxOfABadLocalParameter();
};

void TranslatedStartTest::initTestCase() {
    forms::CatchEndOfProcess(true);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
}

void TranslatedStartTest::TheBoxesOfAStartThatFails_data() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < static_cast<int>(Cases().size()); ++index) {
        QTest::newRow(Cases()[static_cast<std::size_t>(index)].name) << index;
    }
}

void TranslatedStartTest::TheBoxesOfAStartThatFails() {
    QFETCH(const int, index);
    const Case& failure = Cases()[static_cast<std::size_t>(index)];
    const support::Installation installation;
    support::RaiseMarksFor(failure.boxes);
    failure.spoil(installation);
    const std::vector<QString> shown = tests::GoOnStarting().boxes;
    QCOMPARE(BoxesWithoutAccents(QStringList(shown.begin(), shown.end())),
             BoxesWithoutAccents(failure.boxes));
}

void TranslatedStartTest::TheBoxOfTheHiddenEntry() {
    const support::Installation installation;
    QVERIFY(!tests::StartProgram().ended);
    const QStringList size{
        QStringLiteral("H: %1\nW: %2").arg(MainWindow().Height()).arg(MainWindow().Width())};
    support::RaiseMarksFor(size);
    support::BoxAnswerer boxes;
    emit MainWindow().M_PARAM->triggered();
    QCOMPARE(support::TakeWithoutAccents(boxes), size);
}

void TranslatedStartTest::TheBoxesOfAMissingChangeLog() {
    const support::Installation installation;
    QVERIFY(!tests::StartProgram().ended);
    const QString description = Described(basic::error::kFileMissing, u"c:\\quardele\\EvolutionV95.MDB");
    std::filesystem::remove(installation.File("EvolutionV95.MDB"));
    shell::TheSession().NUMAPPLI_COURANT = 10;
    support::RaiseMarksFor({description});
    support::BoxAnswerer boxes;
    forms::Instance<shell::F_EVOLUTION>().Show();
    // Each of the two data controls has wanted the file.
    QCOMPARE(support::TakeWithoutAccents(boxes), BoxesWithoutAccents({description, description}));
}

void TranslatedStartTest::TheBoxOfABadLocalParameter() {
    const support::Installation installation;
    const QStringList failure{QStringLiteral("Procedure Init_Params_Locaux : ") +
                              forms::ToQString(basic::DescriptionOf(basic::error::kTypeMismatch))};
    std::ofstream(installation.File("quardele.ini")) << "CALENDRIER=deux\r\n";
    support::RaiseMarksFor(failure);
    const std::vector<QString> shown = tests::GoOnStarting().boxes;
    QCOMPARE(BoxesWithoutAccents(QStringList(shown.begin(), shown.end())), BoxesWithoutAccents(failure));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TranslatedStartTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translated_start_test.moc"
