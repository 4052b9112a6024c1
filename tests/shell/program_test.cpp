// The real program as a process of its own, off screen, started from a folder as an operator would.
#include <QProcess>
#include <QTest>

#include <support/installation.h>

using namespace quardele;

namespace {

constexpr int kPatienceMs = 60000;

struct Run {
    bool finished = false;
    QProcess::ExitStatus status = QProcess::CrashExit;
    int exitCode = -1;
    QStringList said;  ///< one line per window and box that came on screen
};

/// Runs the program in a folder of the machine; boxes are answered, the menu entry is triggered at the end.
Run RunProgram(const std::filesystem::path& folder, const QString& trigger = {}) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(QUARDELE_PROBE_FOLDER));
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("quardele_probe"));
    environment.insert(QStringLiteral("QUARDELE_PROBE_TRIGGER"), trigger);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setWorkingDirectory(QString::fromStdString(folder.string()));
    process.start(QStringLiteral(QUARDELE_PROGRAM), QStringList());

    Run run;
    run.finished = process.waitForFinished(kPatienceMs);
    if (!run.finished) {
        process.kill();
        process.waitForFinished();
    }
    run.status = process.exitStatus();
    run.exitCode = process.exitCode();
    run.said = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    return run;
}

}  // namespace

class ProgramTest : public QObject {
    Q_OBJECT

 private slots:
    void StartsOnAnInstallationAndQuits();
    void ClosingTheWindowEndsTheProcess();
    void AFolderWithoutDatabaseGivesTheMessageAndEnds();
    void ADamagedDataDatabaseGivesItsMessagesAndEnds();
};

void ProgramTest::StartsOnAnInstallationAndQuits() {
    const support::Installation installation;
    const Run run = RunProgram(installation.File("VEH"), QStringLiteral("M_QUIT"));
    QVERIFY(run.finished);
    QCOMPARE(run.status, QProcess::NormalExit);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.said, QStringList{QStringLiteral("window: Gestion des véhicules   V9.5.05") +
                                   QString(26, u' ') + QStringLiteral("C:\\QUARDELE\\DATA\\")});
}

void ProgramTest::ClosingTheWindowEndsTheProcess() {
    const support::Installation installation;
    const Run run = RunProgram(installation.File("VEH"), QStringLiteral("close"));
    QVERIFY(run.finished);
    QCOMPARE(run.status, QProcess::NormalExit);
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.said.size(), 1);
}

void ProgramTest::AFolderWithoutDatabaseGivesTheMessageAndEnds() {
    const support::Installation installation;
    const std::filesystem::path folder = installation.DriveC() / "AILLEURS" / "VEH";
    std::filesystem::create_directories(folder);
    const Run run = RunProgram(folder);
    QVERIFY(run.finished);
    QCOMPARE(run.status, QProcess::NormalExit);
    QCOMPARE(run.said, QStringList{QStringLiteral("box: La base de données DBPATH.MDB est introuvable !")});
}

void ProgramTest::ADamagedDataDatabaseGivesItsMessagesAndEnds() {
    const support::Installation installation;
    std::filesystem::resize_file(installation.File("DATA/talmeon.mdb"), 100);
    const Run run = RunProgram(installation.File("VEH"));
    QVERIFY(run.finished);
    QCOMPARE(run.status, QProcess::NormalExit);
    QCOMPARE(run.said.size(), 2);
    QVERIFY2(run.said[0].startsWith(QStringLiteral("box: control appli: (2) : ")), qPrintable(run.said[0]));
    QVERIFY2(run.said[1].startsWith(QStringLiteral("box: Une mise à jour de structure")),
             qPrintable(run.said[1]));
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "program_test.moc"
