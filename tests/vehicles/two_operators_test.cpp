// Two operators, each with the form open in a process of their own, on one file.
#include <QProcess>

#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

const QString kToyota = QStringLiteral("KG-361-VP");
const QString kDacia = QStringLiteral("2107 RC 59");
const QString kNew = QStringLiteral("ZY-001-AA");

constexpr int kPeriod = 2;

/// The other one; started in the current folder, which is the installation's.
class Colleague {
 public:
    Colleague() {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral(QUARDELE_SECOND_OPERATOR), QStringList());
        if (!process_.waitForStarted()) {
            qFatal("no second operator");
        }
    }
    ~Colleague() {
        process_.closeWriteChannel();
        process_.waitForFinished();
    }
    Colleague(const Colleague&) = delete;
    Colleague& operator=(const Colleague&) = delete;

    /// What was asked for, or the texts of boxes.
    QString Do(const QStringList& words) {
        process_.write(words.join(u'\t').toUtf8() + '\n');
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead()) {
                qFatal("the second operator does not answer to %s", qPrintable(words.join(u' ')));
            }
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }
    void Open(const QString& registration) { Do({QStringLiteral("record"), registration}); }
    void Type(const QString& box, const QString& text) { Do({QStringLiteral("type"), box, text}); }
    void TypeVisit(int column, int row, const QString& text) {
        Do({QStringLiteral("visit"), QString::number(column), QString::number(row), text});
    }
    QString Press(const QString& button) { return Do({QStringLiteral("press"), button}); }
    QString Box(const QString& name) { return Do({QStringLiteral("box"), name}); }

 private:
    QProcess process_;
};

}  // namespace

class TwoOperatorsTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup();

    void NeighbouringRecordsAreBothSaved();
    void AFieldThatTheOtherChangedIsToldAndSavedAtTheSecondTry();
    void AChangeWhileOneTypesIsTold();
    void ChangesOfDifferentFieldsAreBothKept();
    void ARecordThatTheOtherDeletedIsTold();
    void ARecordInAFailedSaveIsLockedForTheOther();
    void ANewRegistrationIsGivenOnce();
    void VisitsOfNeighbouringRecordsAreBothSaved();
    void NewVisitsOfBothAreKept();
    void ACellThatTheOtherChangedIsToldAndSavedAtTheSecondTry();
    void AVisitOnlyTheOtherChangedIsNotWrittenOver();

 private:
    [[nodiscard]] QString Stored(const QString& registration, const char* column) const;
    [[nodiscard]] std::vector<StoredRow> StoredVisits(const QString& registration) const;
    /// Presses the button that saves; gives the texts of the boxes.
    [[nodiscard]] static QString Save();

    std::unique_ptr<RunningProgram> program_;
    std::unique_ptr<Colleague> colleague_;
};

void TwoOperatorsTest::init() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    OpenRecordOf(kToyota);
    colleague_ = std::make_unique<Colleague>();
}

void TwoOperatorsTest::cleanup() {
    colleague_.reset();
    program_.reset();
}

QString TwoOperatorsTest::Stored(const QString& registration, const char* column) const {
    const std::vector<StoredRow> rows =
        StoredRows(program_->DataFile(), "TVEH", QStringLiteral("TVEH_IMMAT"), registration);
    return rows.size() == 1 ? rows[0].at(QString::fromLatin1(column))
                            : QStringLiteral("%1 rows").arg(rows.size());
}

std::vector<StoredRow> TwoOperatorsTest::StoredVisits(const QString& registration) const {
    return StoredRows(program_->DataFile(), "TVEH_DETAIL", QStringLiteral("TVEH_DETAIL_Immat"), registration);
}

QString TwoOperatorsTest::Save() {
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    return TakeTexts(boxes);
}

void TwoOperatorsTest::NeighbouringRecordsAreBothSaved() {
    colleague_->Open(kDacia);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    colleague_->Type(QStringLiteral("CTX_MARQUE"), QStringLiteral("PEUGEOT"));
    QCOMPARE(Save(), QString());
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("RENAULT"));
    QCOMPARE(Stored(kDacia, "TVEH_MARQUE"), QStringLiteral("PEUGEOT"));
}

void TwoOperatorsTest::AFieldThatTheOtherChangedIsToldAndSavedAtTheSecondTry() {
    colleague_->Open(kToyota);
    colleague_->Type(QStringLiteral("CTX_MARQUE"), QStringLiteral("PEUGEOT"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    const QString told = Save();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3197 : ")), qPrintable(told));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
    QVERIFY(Box("CTX_MARQUE")->DataChanged());
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("PEUGEOT"));

    QCOMPARE(Save(), QString());
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("RENAULT"));
}

void TwoOperatorsTest::AChangeWhileOneTypesIsTold() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    colleague_->Open(kToyota);
    colleague_->Type(QStringLiteral("CTX_MARQUE"), QStringLiteral("PEUGEOT"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    const QString told = Save();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3197 : ")), qPrintable(told));
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("PEUGEOT"));
    Press("Cmd_Annul");
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("PEUGEOT"));
}

void TwoOperatorsTest::ChangesOfDifferentFieldsAreBothKept() {
    colleague_->Open(kToyota);
    colleague_->Type(QStringLiteral("CTX_ComplIdent"), QStringLiteral("Land Cruiser"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    QCOMPARE(Save(), QString());
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("RENAULT"));
    QCOMPARE(Stored(kToyota, "TVEH_ComplIdent"), QStringLiteral("Land Cruiser"));
}

void TwoOperatorsTest::ARecordThatTheOtherDeletedIsTold() {
    colleague_->Open(kToyota);
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    QVERIFY(colleague_->Press(QStringLiteral("Cmd_Delete")).contains(QStringLiteral("suppression")));
    const QString told = Save();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3167 : ")), qPrintable(told));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
}

void TwoOperatorsTest::ARecordInAFailedSaveIsLockedForTheOther() {
    colleague_->Open(kToyota);
    TypeOver(Box("CTX_IMMAT"), kDacia);
    QVERIFY(Save().startsWith(QStringLiteral("Cmd_Update Err. 3022 : ")));
    colleague_->Type(QStringLiteral("CTX_MARQUE"), QStringLiteral("PEUGEOT"));
    const QString told = colleague_->Press(QStringLiteral("Cmd_Update"));
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3260 : ")), qPrintable(told));
    QCOMPARE(colleague_->Box(QStringLiteral("CTX_MARQUE")), QStringLiteral("PEUGEOT"));
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("TOYOTA"));

    Press("Cmd_Annul");
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    QCOMPARE(Stored(kToyota, "TVEH_MARQUE"), QStringLiteral("PEUGEOT"));
}

void TwoOperatorsTest::ANewRegistrationIsGivenOnce() {
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), kNew);
    colleague_->Press(QStringLiteral("Cmd_ADD"));
    colleague_->Type(QStringLiteral("CTX_IMMAT"), kNew);
    colleague_->Type(QStringLiteral("CTX_MARQUE"), QStringLiteral("PEUGEOT"));
    QCOMPARE(Save(), QString());
    const QString told = colleague_->Press(QStringLiteral("Cmd_Update"));
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3022 : ")), qPrintable(told));
    QCOMPARE(colleague_->Box(QStringLiteral("CTX_MARQUE")), QStringLiteral("PEUGEOT"));

    colleague_->Type(QStringLiteral("CTX_IMMAT"), QStringLiteral("ZY-002-AA"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    QCOMPARE(Stored(kNew, "TVEH_MARQUE"), QString());
    QCOMPARE(Stored(QStringLiteral("ZY-002-AA"), "TVEH_MARQUE"), QStringLiteral("PEUGEOT"));
}

void TwoOperatorsTest::VisitsOfNeighbouringRecordsAreBothSaved() {
    colleague_->Open(kDacia);
    TypeVisit(kPeriod, 1, QStringLiteral("36"));
    colleague_->TypeVisit(kPeriod, 1, QStringLiteral("6"));
    QCOMPARE(Save(), QString());
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    QCOMPARE(StoredVisits(kToyota)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("36"));
    QCOMPARE(StoredVisits(kDacia)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("6"));
}

void TwoOperatorsTest::NewVisitsOfBothAreKept() {
    constexpr int kDate = 3;
    colleague_->Open(kToyota);
    colleague_->TypeVisit(kDate, 3, QStringLiteral("30/08/2025"));
    colleague_->TypeVisit(1, 4, QStringLiteral("BAT"));
    TypeVisit(kDate, 3, QStringLiteral("30/08/2025"));
    TypeVisit(1, 4, QStringLiteral("FRE"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    QCOMPARE(Save(), QString());
    QStringList codes;
    for (const StoredRow& visit : StoredVisits(kToyota)) {
        codes.append(visit.at(QStringLiteral("TVEH_DETAIL_TypTrav")));
    }
    codes.sort();
    QCOMPARE(codes.join(u' '), QStringLiteral("BAT CT FRE LIM VID"));
}

void TwoOperatorsTest::ACellThatTheOtherChangedIsToldAndSavedAtTheSecondTry() {
    colleague_->Open(kToyota);
    colleague_->TypeVisit(kPeriod, 1, QStringLiteral("36"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    TypeVisit(kPeriod, 1, QStringLiteral("6"));
    const QString told = Save();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3197 : ")), qPrintable(told));
    QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("6"));
    QCOMPARE(StoredVisits(kToyota)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("36"));

    QCOMPARE(Save(), QString());
    QCOMPARE(StoredVisits(kToyota)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("6"));
}

void TwoOperatorsTest::AVisitOnlyTheOtherChangedIsNotWrittenOver() {
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("24"));
    colleague_->Open(kToyota);
    colleague_->TypeVisit(kPeriod, 1, QStringLiteral("36"));
    QCOMPARE(colleague_->Press(QStringLiteral("Cmd_Update")), QString());
    // Every visit on screen is rewritten, the one that was not touched included.
    TypeVisit(kPeriod, 3, QStringLiteral("6"));
    QCOMPARE(Save(), QString());
    QCOMPARE(StoredVisits(kToyota)[0].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("36"));
    QCOMPARE(StoredVisits(kToyota)[1].at(QStringLiteral("TVEH_DETAIL_PERIOD")), QStringLiteral("6"));
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("36"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TwoOperatorsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "two_operators_test.moc"
