// Where the dialogs of the tools stand.
#include "list_program.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

constexpr int kMake = 2;
constexpr int kTwipsPerPixel = 15;

}  // namespace

class PlacementTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void EveryDialogStandsInTheMiddleOfTheWorkArea_data();
    void EveryDialogStandsInTheMiddleOfTheWorkArea();
    void ARightClickAtTheLeftEdgeCentresTheSearch();
    void ARightClickAtTheUpperEdgeCentresTheSearch();
    void HalfATwipOfAnAnchorGoesToTheEvenNumber_data();
    void HalfATwipOfAnAnchorGoesToTheEvenNumber();

 private:
    static bool IsCentred(const forms::Form& dialog) {
        const shell::Session& session = shell::TheSession();
        const int left = (MainWindow().Width() - dialog.ScaleWidth()) / 2;
        const int top = (session.WorkAreaHeight - dialog.ScaleHeight()) / 2 + session.WorkAreaTop;
        // A window stands on whole pixels.
        return std::abs(dialog.Left() - left) < kTwipsPerPixel &&
               std::abs(dialog.Top() - top) < kTwipsPerPixel;
    }
    static void RightClick(int x, int y, const std::function<void()>& work) {
        QVERIFY(InDialog(
            [=] {
                listtools::GridRightClick(Form(), *Grid("DBG_Liste"), *Data("DBD_TVEH"), 0, kMake, 3, x, y);
            },
            work));
    }

    std::unique_ptr<ListProgram> program_;
};

void PlacementTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
    GoToColumn(*Vehicles().grid, kMake);
}

void PlacementTest::EveryDialogStandsInTheMiddleOfTheWorkArea_data() {
    QTest::addColumn<int>("tool");
    QTest::addColumn<int>("areaTop");
    for (const int areaTop : {0, 1200}) {
        QTest::addRow("selection, area from %d", areaTop) << kSelectionTool << areaTop;
        QTest::addRow("search, area from %d", areaTop) << kSearchTool << areaTop;
        QTest::addRow("sort, area from %d", areaTop) << kSortTool << areaTop;
    }
}

void PlacementTest::EveryDialogStandsInTheMiddleOfTheWorkArea() {
    QFETCH(int, tool);
    QFETCH(int, areaTop);
    shell::TheSession().WorkAreaTop = areaTop;
    shell::TheSession().WorkAreaHeight = 9000;
    QVERIFY(InDialog([&] { listtools::GridToolAction(tool, *Vehicles().grid, Vehicles().data); },
                     [] {
                         const forms::Form& dialog = forms::Forms::Item(forms::Forms::Count() - 1);
                         QVERIFY(IsCentred(dialog));
                         QCOMPARE(dialog.Window()->minimumSize(), dialog.Window()->maximumSize());
                     }));
}

void PlacementTest::ARightClickAtTheLeftEdgeCentresTheSearch() {
    Form().SetTop(600);
    RightClick(0, 900, [] {
        QCOMPARE(listtools::Anchor().DialogAnchorY, 1200);
        QVERIFY(IsCentred(SearchDialog()));
    });
}

void PlacementTest::ARightClickAtTheUpperEdgeCentresTheSearch() {
    Form().SetTop(0);
    RightClick(1500, 0, [] {
        QCOMPARE(listtools::Anchor().DialogAnchorX, 1500);
        QCOMPARE(listtools::Anchor().DialogAnchorY, 0);
        QVERIFY(IsCentred(SearchDialog()));
    });
}

void PlacementTest::HalfATwipOfAnAnchorGoesToTheEvenNumber_data() {
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("anchor");
    QTest::newRow("up") << 615 << 1208;
    QTest::newRow("down") << 645 << 1222;
}

void PlacementTest::HalfATwipOfAnAnchorGoesToTheEvenNumber() {
    QFETCH(int, top);
    QFETCH(int, anchor);
    Form().SetTop(top);
    QCOMPARE(Form().Top(), top);
    RightClick(1500, 900, [=] { QCOMPARE(listtools::Anchor().DialogAnchorY, anchor); });
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    PlacementTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "placement_test.moc"
