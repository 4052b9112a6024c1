// The workstation's local parameters, read from quardele.ini of the parent of the current folder.
#include <filesystem>

#include <QFile>
#include <QTest>

#include <basic/runtime_error.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/calendar_settings.h>
#include <shell/session.h>
#include <support/boxes.h>
#include <support/installation.h>

#include "local_params.h"

using namespace quardele;

namespace {

void Write(const support::Installation& installation, const QByteArray& content) {
    QFile file(QString::fromStdString(installation.File("quardele.ini").string()));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
}

}  // namespace

class LocalParamsTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void ReadsTheInstallation();
    void WithoutAFileTheDefaultsStand();
    void AnEmptyLineEndsTheReading_data();
    void AnEmptyLineEndsTheReading();
    void TheCalendarIsTheLastLineRead_data();
    void TheCalendarIsTheLastLineRead();
    void AnyValueThatEndsInOffSwitchesThePictureOff_data();
    void AnyValueThatEndsInOffSwitchesThePictureOff();
    void APictureStandsInDoubleQuotes_data();
    void APictureStandsInDoubleQuotes();
    void ASiteNameLosesItsBlanks_data();
    void ASiteNameLosesItsBlanks();
    void TheFileIsInTheWesternCodePage();
    void ACurrencyWithoutValueLeavesTheOneBefore_data();
    void ACurrencyWithoutValueLeavesTheOneBefore();
    void EachStartBeginsWithTheDefaults();
    void SiteAndCalendarKeepWhatTheyHave();
    void AFileInAnotherFolderIsNotRead();
    // Last: the file stays open for the rest of the process.
    void AFailureIsShownAndKeepsWhatWasRead();
};

void LocalParamsTest::init() {
    shell::TheSession() = {};
    services::TheCalendarSettings() = {};
}

void LocalParamsTest::ReadsTheInstallation() {
    const support::Installation installation;
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, false);
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, QStringLiteral("EUR"));
    QCOMPARE(shell::TheSession().PARAM_SITE, QStringLiteral("PARIS"));
    QCOMPARE(services::TheCalendarSettings().PARAM_CALENDRIER, 1);
}

void LocalParamsTest::WithoutAFileTheDefaultsStand() {
    const support::Installation installation;
    std::filesystem::remove(installation.File("quardele.ini"));
    support::BoxAnswerer boxes;
    shell::Init_Params_Locaux();
    QVERIFY(boxes.Shown().empty());
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, true);
    QCOMPARE(services::TheCalendarSettings().PARAM_CALENDRIER, 0);
}

void LocalParamsTest::AnEmptyLineEndsTheReading_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("pictureOff");
    QTest::newRow("empty file") << QByteArray() << false;
    QTest::newRow("first line") << QByteArray("\r\nMIRE=OFF\r\n") << false;
    QTest::newRow("line of blanks") << QByteArray("SITE=A\r\n   \r\nMIRE=OFF\r\n") << false;
    QTest::newRow("line of a tab") << QByteArray("\t\r\nMIRE=OFF\r\n") << true;
    QTest::newRow("behind the key") << QByteArray("MIRE=OFF\r\n\r\nSITE=A\r\n") << true;
    QTest::newRow("no end of line") << QByteArray("SITE=A\r\nMIRE=OFF") << true;
}

void LocalParamsTest::AnEmptyLineEndsTheReading() {
    QFETCH(const QByteArray, content);
    QFETCH(const bool, pictureOff);
    const support::Installation installation;
    Write(installation, content);
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, !pictureOff);
}

void LocalParamsTest::TheCalendarIsTheLastLineRead_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("calendar");
    QTest::newRow("last line") << QByteArray("SITE=A\r\nCALENDRIER=1\r\n") << 1;
    QTest::newRow("line behind it") << QByteArray("CALENDRIER=1\r\n[SUITE]\r\n") << 0;
    QTest::newRow("blank line behind it") << QByteArray("CALENDRIER=1\r\n\r\nSITE=A\r\n") << 1;
    QTest::newRow("blanks") << QByteArray("  calendrier = 1 \r\n") << 1;
    QTest::newRow("longer key") << QByteArray("CALENDRIERX=1\r\n") << 1;
    QTest::newRow("no value") << QByteArray("CALENDRIER=\r\n") << 0;
    QTest::newRow("no equal sign") << QByteArray("CALENDRIER\r\n") << 0;
    QTest::newRow("line before it") << QByteArray("CALENDRIER=2\r\nCALENDRIER=3\r\n") << 3;
    QTest::newRow("undone by a key that is ignored") << QByteArray("CALENDRIER=1\r\nSITE=\r\n") << 0;
    QTest::newRow("blanks inside the key") << QByteArray("C A L E N D R I E R = 1 0\r\n") << 10;
    QTest::newRow("end of a Mac line") << QByteArray("SITE=A\rCALENDRIER=1\r") << 1;
    QTest::newRow("end of a Unix line") << QByteArray("SITE=A\nCALENDRIER=1\n") << 1;
    QTest::newRow("lowest") << QByteArray("CALENDRIER=-32768\r\n") << -32768;
    QTest::newRow("half to even") << QByteArray("CALENDRIER=2,5\r\n") << 2;
}

void LocalParamsTest::TheCalendarIsTheLastLineRead() {
    QFETCH(const QByteArray, content);
    QFETCH(const int, calendar);
    const support::Installation installation;
    Write(installation, content);
    shell::Init_Params_Locaux();
    QCOMPARE(int{services::TheCalendarSettings().PARAM_CALENDRIER}, calendar);
}

void LocalParamsTest::AnyValueThatEndsInOffSwitchesThePictureOff_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<bool>("active");
    QTest::newRow("OFF") << QByteArray("MIRE=OFF") << false;
    QTest::newRow("blanks") << QByteArray("MIRE = OFF") << false;
    QTest::newRow("small letters") << QByteArray("mire=off") << false;
    QTest::newRow("ends in OFF") << QByteArray("Mire=turn Off") << false;
    QTest::newRow("behind a quote") << QByteArray("MIRE =\"off") << false;
    QTest::newRow("not at the end") << QByteArray("MIRE=OFF.") << true;
    QTest::newRow("key behind blanks") << QByteArray("   MIRE=OFF   ") << false;
    QTest::newRow("ON") << QByteArray("MIRE=ON") << true;
    QTest::newRow("two blanks") << QByteArray("MIRE  =OFF") << true;
    QTest::newRow("other module") << QByteArray("MIREVEH=OFF") << true;
}

void LocalParamsTest::AnyValueThatEndsInOffSwitchesThePictureOff() {
    QFETCH(const QByteArray, line);
    QFETCH(const bool, active);
    const support::Installation installation;
    Write(installation, line);
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, active);
}

void LocalParamsTest::APictureStandsInDoubleQuotes_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("picture");
    QTest::newRow("quoted") << QByteArray("MIREVEH=\"C:\\Images\\mire.bmp\"") << "C:\\Images\\mire.bmp";
    QTest::newRow("blanks kept") << QByteArray("mireveh =\" deux mots \"") << " deux mots ";
    QTest::newRow("text before the quotes") << QByteArray("MIREVEH=voir \"a.bmp\"") << "a.bmp";
    QTest::newRow("quotes inside") << QByteArray("MIREVEH=\"a\" \"b\"") << "a\" \"b";
    QTest::newRow("nothing between quotes") << QByteArray("MIREVEH=\"\"") << "";
    QTest::newRow("ignored after a good one") << QByteArray("MIREVEH=\"a\"\r\nMIREVEH=b") << "a";
    QTest::newRow("emptied after a good one") << QByteArray("MIREVEH=\"a\"\r\nMIREVEH=\"\"") << "";
    QTest::newRow("no quotes") << QByteArray("MIREVEH=C:\\mire.bmp") << "";
    QTest::newRow("one quote at the end") << QByteArray("MIREVEH=C:\\mire.bmp\"") << "";
    QTest::newRow("one quote inside") << QByteArray("MIREVEH=\"C:\\mire.bmp") << "";
    QTest::newRow("letters of the Western code page") << QByteArray("MIREVEH=\"\xE9t\xE9.bmp\"") << "été.bmp";
    QTest::newRow("another module") << QByteArray("MIREXYZ=\"x.bmp\"") << "";
}

void LocalParamsTest::APictureStandsInDoubleQuotes() {
    QFETCH(const QByteArray, line);
    QFETCH(const QString, picture);
    const support::Installation installation;
    Write(installation, line);
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_VEH, picture);
}

void LocalParamsTest::ASiteNameLosesItsBlanks_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("site");
    QTest::newRow("inner blank") << QByteArray("SITE=PAR IS") << "PARIS";
    QTest::newRow("blanks around the sign") << QByteArray("Site  =  Lyon") << "Lyon";
    QTest::newRow("no value") << QByteArray("SITE=") << "";
    QTest::newRow("no value after a good one") << QByteArray("SITE=A\r\nSITE=") << "A";
    QTest::newRow("second equal sign") << QByteArray("SITE=A=B") << "A=B";
}

void LocalParamsTest::ASiteNameLosesItsBlanks() {
    QFETCH(const QByteArray, line);
    QFETCH(const QString, site);
    const support::Installation installation;
    Write(installation, line);
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().PARAM_SITE, site);
}

void LocalParamsTest::TheFileIsInTheWesternCodePage() {
    const support::Installation installation;
    Write(installation, QByteArray("DEVCAL=\x80\r\nSITE=C\x9CUR\xE9\x8C\r\n"));
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, QStringLiteral("€"));
    QCOMPARE(shell::TheSession().PARAM_SITE, QStringLiteral("CœURéŒ"));
}

void LocalParamsTest::ACurrencyWithoutValueLeavesTheOneBefore_data() {
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("currency");
    QTest::newRow("nothing behind the sign") << QByteArray("DEVCAL=EUR\r\nDEVCAL=\r\n") << "EUR";
    QTest::newRow("trimmed") << QByteArray("devcal =  EUR \r\n") << "EUR";
    QTest::newRow("blanks inside") << QByteArray("DEVCAL=F F\r\n") << "F F";
    QTest::newRow("two blanks before the sign") << QByteArray("DEVCAL  =EUR\r\n") << "";
}

void LocalParamsTest::ACurrencyWithoutValueLeavesTheOneBefore() {
    QFETCH(const QByteArray, content);
    QFETCH(const QString, currency);
    const support::Installation installation;
    Write(installation, content);
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, currency);
}

void LocalParamsTest::EachStartBeginsWithTheDefaults() {
    const support::Installation installation;
    Write(installation, "MIRE=OFF\r\nMIREVEH=\"a\"\r\nDEVCAL=EUR\r\n");
    shell::Init_Params_Locaux();
    Write(installation, "[SUITE]\r\n");
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, true);
    QCOMPARE(shell::TheSession().MIRE_VEH, QString());
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, QString());
}

void LocalParamsTest::SiteAndCalendarKeepWhatTheyHave() {
    const support::Installation installation;
    Write(installation, "SITE=LYON\r\nCALENDRIER=2\r\n");
    shell::Init_Params_Locaux();
    std::filesystem::remove(installation.File("quardele.ini"));
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().PARAM_SITE, QStringLiteral("LYON"));
    QCOMPARE(services::TheCalendarSettings().PARAM_CALENDRIER, 2);
    // A line of any kind undoes the calendar.
    Write(installation, "[SUITE]\r\n");
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().PARAM_SITE, QStringLiteral("LYON"));
    QCOMPARE(services::TheCalendarSettings().PARAM_CALENDRIER, 0);
}

/// Neither beside the program nor at the root of the drive.
void LocalParamsTest::AFileInAnotherFolderIsNotRead() {
    const support::Installation installation;
    for (const std::filesystem::path& folder : {installation.File("VEH"), installation.DriveC()}) {
        std::filesystem::copy(installation.File("quardele.ini"), folder / "quardele.ini");
    }
    std::filesystem::remove(installation.File("quardele.ini"));
    shell::Init_Params_Locaux();
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, true);
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, QString());
}

void LocalParamsTest::AFailureIsShownAndKeepsWhatWasRead() {
    const support::Installation installation;
    Write(installation, "MIRE=OFF\r\nCALENDRIER=deux\r\nDEVCAL=EUR\r\n");
    support::BoxAnswerer boxes;
    shell::Init_Params_Locaux();
    QCOMPARE(boxes.TakeTexts(),
             std::vector<QString>{QStringLiteral("Procedure Init_Params_Locaux : ") +
                                  forms::ToQString(basic::DescriptionOf(basic::error::kTypeMismatch))});
    QCOMPARE(shell::TheSession().MIRE_ACTIVE, false);
    QCOMPARE(shell::TheSession().PARAM_DEVCAL, QString());

    shell::Init_Params_Locaux();
    QCOMPARE(boxes.TakeTexts(),
             std::vector<QString>{QStringLiteral("Procedure Init_Params_Locaux : ") +
                                  forms::ToQString(basic::DescriptionOf(basic::error::kFileAlreadyOpen))});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    LocalParamsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "local_params_test.moc"
