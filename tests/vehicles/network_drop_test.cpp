// The folder of the data file goes out of reach while the form is open, and comes back.
#include "stored_rows.h"
#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

namespace fs = std::filesystem;

const QString kToyota = QStringLiteral("KG-361-VP");

constexpr int kPeriod = 2;

/// While it lives nobody finds the folder.
class OutOfReach {
 public:
    explicit OutOfReach(fs::path folder) : folder_(std::move(folder)), away_(folder_) {
        away_ += "-away";
        fs::rename(folder_, away_);
    }
    ~OutOfReach() { fs::rename(away_, folder_); }
    OutOfReach(const OutOfReach&) = delete;
    OutOfReach& operator=(const OutOfReach&) = delete;

 private:
    fs::path folder_;
    fs::path away_;
};

}  // namespace

class NetworkDropTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void ASaveIsToldAndWorksOnceTheFileIsBack();
    void ANewVehicleWithVisitsIsToldAndWorksOnceTheFileIsBack();
    void TypedVisitsStayOnScreen();
    void ADeleteIsAnUnhandledErrorAndTheVehicleStays();

 private:
    [[nodiscard]] std::vector<StoredRow> Stored(const char* table, const char* column,
                                                const QString& registration) const {
        return StoredRows(program_->DataFile(), table, QString::fromLatin1(column), registration);
    }
    /// Presses the button that saves while the file is out of reach; gives the texts of the boxes. The row
    /// cannot be locked then, which is all that the engine can tell.
    [[nodiscard]] QString SaveWithoutTheFile() const;

    std::unique_ptr<RunningProgram> program_;
};

void NetworkDropTest::init() {
    SKIP_WITHOUT_INDEPENDENT_READER();
    program_ = std::make_unique<RunningProgram>();
    program_->OpenVehicles();
    OpenRecordOf(kToyota);
}

QString NetworkDropTest::SaveWithoutTheFile() const {
    const OutOfReach away(program_->DataFile().parent_path());
    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    return TakeTexts(boxes);
}

void NetworkDropTest::ASaveIsToldAndWorksOnceTheFileIsBack() {
    TypeOver(Box("CTX_MARQUE"), QStringLiteral("RENAULT"));
    const QString told = SaveWithoutTheFile();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3024 : ")), qPrintable(told));
    QCOMPARE(Box("CTX_MARQUE")->Text(), QStringLiteral("RENAULT"));
    QVERIFY(Box("CTX_MARQUE")->DataChanged());
    QCOMPARE(Stored("TVEH", "TVEH_IMMAT", kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")),
             QStringLiteral("TOYOTA"));

    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Stored("TVEH", "TVEH_IMMAT", kToyota).at(0).at(QStringLiteral("TVEH_MARQUE")),
             QStringLiteral("RENAULT"));
}

void NetworkDropTest::ANewVehicleWithVisitsIsToldAndWorksOnceTheFileIsBack() {
    const QString registration = QStringLiteral("ZY-001-AA");
    Press("Cmd_ADD");
    TypeOver(Box("CTX_IMMAT"), registration);
    ClickBehindVisits();
    TypeIntoCell(QStringLiteral("CT"));
    const QString told = SaveWithoutTheFile();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3024 : ")), qPrintable(told));
    QCOMPARE(Box("CTX_IMMAT")->Text(), registration);
    QCOMPARE(Cell("DBG_DETAIL", 1, 1), QStringLiteral("CT"));
    QVERIFY(Stored("TVEH", "TVEH_IMMAT", registration).empty());

    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(Stored("TVEH", "TVEH_IMMAT", registration).size(), std::size_t{1});
    QCOMPARE(Stored("TVEH_DETAIL", "TVEH_DETAIL_Immat", registration).size(), std::size_t{1});
}

void NetworkDropTest::TypedVisitsStayOnScreen() {
    TypeVisit(kPeriod, 1, QStringLiteral("36"));
    const QString told = SaveWithoutTheFile();
    QVERIFY2(told.startsWith(QStringLiteral("Cmd_Update Err. 3024 : ")), qPrintable(told));
    QVERIFY(Grid("DBG_DETAIL")->ChangeMade());
    QCOMPARE(Cell("DBG_DETAIL", kPeriod, 1), QStringLiteral("36"));

    support::BoxAnswerer boxes;
    Press("Cmd_Update");
    CompareBoxes(boxes, {});
    QCOMPARE(
        Stored("TVEH_DETAIL", "TVEH_DETAIL_Immat", kToyota).at(0).at(QStringLiteral("TVEH_DETAIL_PERIOD")),
        QStringLiteral("36"));
}

void NetworkDropTest::ADeleteIsAnUnhandledErrorAndTheVehicleStays() {
    support::BoxAnswerer boxes;
    const int endsBefore = forms::CatchEndOfProcess(true);
    {
        const OutOfReach away(program_->DataFile().parent_path());
        PressKey(Qt::Key_D, Qt::ControlModifier);
    }
    QCOMPARE(boxes.Shown().size(), std::size_t{2});
    const QString& text = boxes.Shown().back().text;
    QVERIFY2(text.startsWith(QStringLiteral("Erreur d'exécution 3024")), qPrintable(text));
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(Stored("TVEH", "TVEH_IMMAT", kToyota).size(), std::size_t{1});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    NetworkDropTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "network_drop_test.moc"
