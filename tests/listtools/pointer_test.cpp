// The busy pointer of the tools: shown while one works, gone behind it and before what is not its work.
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

enum Comparison { StartsWith, Equal, Different, Greater, Less, Contains };

constexpr int kNormal = 0;
constexpr int kBusy = 11;

constexpr int kRegistration = 1;
constexpr int kMake = 2;
constexpr int kDate = 5;

}  // namespace

class PointerTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheSortIsBusyWhileItFillsTheList();
    void TheSortIsBusyUntilItsFailureWasTold();
    void TheSelectionIsBusyWhileItFillsTheList();
    void TheSelectionIsBusyUntilAnEmptyListWasTold();
    void TheSelectionIsBusyUntilARefusalWasTold();
    void TheSelectionIsNoLongerBusyWhenItTellsAFailure();
    void TheSearchIsBusyWhileItMoves();
    void TheSearchIsBusyUntilAMissWasTold();
    void TheSearchIsBusyUntilItsFailureWasTold();
    void TheExportIsBusyWhileItWrites();
    void TheExportIsNotBusyWhenTheOperatorDeclines();

 private:
    /// Pointers seen when another record became current.
    void WatchRecords() {
        connect(Vehicles().data, &forms::DataControl::Reposition, this,
                [this] { moving_.append(forms::Screen::MousePointer()); });
    }
    void Sort() {
        QVERIFY(
            InDialog([] { PressTool(Vehicles(), kSortTool); }, [] { Click(SortDialog().Cmd_GoClasser); }));
    }
    void Search(const QString& value) {
        QVERIFY(InDialog([] { listtools::GridToolAction(kSearchTool, *Vehicles().grid, Vehicles().data); },
                         [&] {
                             moving_.clear();
                             SearchFor(value);
                             QCOMPARE(forms::Screen::MousePointer(), kNormal);
                         }));
    }

    std::unique_ptr<ListProgram> program_;
    QList<int> moving_;
    QList<int> atBoxes_;
};

void PointerTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
    moving_.clear();
    atBoxes_.clear();
    program_->boxes.LookAtBoxes([this] { atBoxes_.append(forms::Screen::MousePointer()); });
    GoToColumn(*Vehicles().grid, kMake);
}

void PointerTest::TheSortIsBusyWhileItFillsTheList() {
    WatchRecords();
    Sort();
    QVERIFY(!moving_.isEmpty());
    QCOMPARE(moving_.front(), kBusy);
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSortIsBusyUntilItsFailureWasTold() {
    ReplaceColumn(*Vehicles().grid, kMake, QStringLiteral("Absente|TVEH_ABSENTE|8|text|locked"));
    GoToColumn(*Vehicles().grid, kMake);
    Sort();
    QCOMPARE(atBoxes_, QList<int>{kBusy});
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSelectionIsBusyWhileItFillsTheList() {
    WatchRecords();
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("DACIA"));
    QVERIFY(!moving_.isEmpty());
    QVERIFY(moving_.contains(kBusy));
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSelectionIsBusyUntilAnEmptyListWasTold() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("nulle part"));
    QCOMPARE(atBoxes_, QList<int>{kBusy});
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSelectionIsBusyUntilARefusalWasTold() {
    SelectOn(Vehicles(), kDate, Contains, QStringLiteral("2"));
    QCOMPARE(atBoxes_, QList<int>{kBusy});
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSelectionIsNoLongerBusyWhenItTellsAFailure() {
    SelectOn(Vehicles(), kMake, Equal, QStringLiteral("L'OREE"));
    SelectOn(Vehicles(), kDate, Equal, QStringLiteral("hier"));
    QCOMPARE(atBoxes_, (QList<int>{kNormal, kNormal}));
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheSearchIsBusyWhileItMoves() {
    WatchRecords();
    GoToColumn(*Vehicles().grid, kRegistration);
    Search(QStringLiteral("KG-361-VP"));
    QCOMPARE(moving_, QList<int>{kBusy});
}

void PointerTest::TheSearchIsBusyUntilAMissWasTold() {
    Search(QStringLiteral("nulle part"));
    QCOMPARE(atBoxes_, QList<int>{kBusy});
}

void PointerTest::TheSearchIsBusyUntilItsFailureWasTold() {
    Search(QStringLiteral("L'OREE"));
    QCOMPARE(atBoxes_, QList<int>{kBusy});
}

void PointerTest::TheExportIsBusyWhileItWrites() {
    QList<int> writing;
    connect(Vehicles().grid, &forms::Grid::DataFill, this,
            [&] { writing.append(forms::Screen::MousePointer()); });
    PressTool(Vehicles(), kExcelTool);
    QVERIFY(!writing.isEmpty());
    QCOMPARE(writing.count(kBusy), writing.size());
    QCOMPARE(atBoxes_, (QList<int>{kNormal, kNormal}));
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

void PointerTest::TheExportIsNotBusyWhenTheOperatorDeclines() {
    program_->boxes.AnswerNo();
    PressTool(Vehicles(), kExcelTool);
    QCOMPARE(atBoxes_, QList<int>{kNormal});
    QCOMPARE(forms::Screen::MousePointer(), kNormal);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    PointerTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "pointer_test.moc"
