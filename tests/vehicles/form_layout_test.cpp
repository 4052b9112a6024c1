// Size and place of the vehicle form and of what grows with it, on screens of several sizes; what can be read
// on them.
#include <QMainWindow>
#include <QTabBar>

#include <forms/control_font.h>
#include <support/readable.h>

#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;
using forms::WindowState;

namespace {

/// The rule of the layout, in twips; a control is whole pixels.
void CompareLayout() {
    const int tabHeight = Tabs()->TabHeight();
    const int barHeight = forms::Height(Control<QWidget>("Frm_Boutons_Barre"));
    const auto near = [](int actual, int expected) { return std::abs(actual - expected) <= 15; };
    const forms::Grid* const list = Grid("DBG_Liste");
    QVERIFY(near(forms::Width(Tabs()), Form().Width() - 200));
    QVERIFY(near(forms::Height(Tabs()), Form().Height() - barHeight - tabHeight - 200));
    QVERIFY(near(forms::Height(list), forms::Height(Tabs()) - tabHeight - 200));
    QVERIFY(near(forms::Width(list), forms::Width(Tabs()) - 200));
}

/// A screen of the tests, and the program on it.
struct ScreenProgram {
    ScreenProgram(int width, int height) : name(QStringLiteral("fiche-%1x%2").arg(width).arg(height)) {
        forms::Screen::SetSizeForTests(15 * width, 15 * height);
        program = std::make_unique<RunningProgram>();
        program->OpenVehicles();
    }

    /// Nothing on it is cut off or stands on something else; a picture is kept for a reader.
    void CompareReadable(const char* state) const {
        QCoreApplication::processEvents();
        QCOMPARE(support::WhatCannotBeRead(Form()), QString());
        support::KeepPicture(*MainWindow().Window(), name + u'-' + QLatin1String(state));
    }

    QString name;
    std::unique_ptr<RunningProgram> program;
};

double WidthOfColumn(forms::Grid& grid, int column) {
    grid.SetCol(column);
    return grid.ColHidden() ? 0 : grid.ColWidth();
}

/// Of those that are seen; characters.
double WidthOfColumns(forms::Grid& grid) {
    double characters = 0;
    for (int column = 1; column <= grid.MaxCols(); ++column) {
        characters += WidthOfColumn(grid, column);
    }
    return characters;
}

/// The scaling factor of the form on a screen.
double FactorOn(int screenHeight) {
    constexpr int kStoredHeight = 11500;
    constexpr int kFreeHeight = 500;
    const double factor = static_cast<double>(15 * screenHeight - kFreeHeight) / kStoredHeight;
    return screenHeight > 768 ? factor : 1;
}

}  // namespace

class FormLayoutTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void cleanup() { forms::Screen::SetSizeForTests(0, 0); }
    void TheFormFitsTheMainWindow_data();
    void TheFormFitsTheMainWindow();
    void AResizeLaysTheFormOutAgain();
    void AMaximizedFormIsLaidOut();
    void AMinimizedFormIsNot();
    void TheButtonsStayAtTheBottom();
    void TheTabOrderIsTheReadingOrder();
    void TheRecordGrowsWithTheScreen_data();
    void TheRecordGrowsWithTheScreen();
    void TheColumnsOfAGridGrowAsItHasRoom_data();
    void TheColumnsOfAGridGrowAsItHasRoom();
    void EveryTextIsReadable_data();
    void EveryTextIsReadable();
    void OnASmallScreenEveryTextOfTheMaximizedFormIsReadable();
    void EveryTextOfAFloatingFrameIsReadable_data();
    void EveryTextOfAFloatingFrameIsReadable();
};

void FormLayoutTest::TheFormFitsTheMainWindow_data() {
    QTest::addColumn<int>("screenWidth");
    QTest::addColumn<int>("screenHeight");
    QTest::addColumn<bool>("asWideAsTheMainWindow");
    QTest::newRow("800 x 600") << 12000 << 9000 << false;
    QTest::newRow("1366 x 768") << 20490 << 11520 << true;
}

void FormLayoutTest::TheFormFitsTheMainWindow() {
    QFETCH(const int, screenWidth);
    QFETCH(const int, screenHeight);
    QFETCH(const bool, asWideAsTheMainWindow);
    forms::Screen::SetSizeForTests(screenWidth, screenHeight);
    RunningProgram program;
    program.OpenVehicles();
    QCOMPARE(Form().Height(), MainWindow().Height() - MainWindow().PIC_STATUS->Height() - 1500);
    QCOMPARE(Form().Width() == MainWindow().Width(), asWideAsTheMainWindow);
    CompareLayout();
}

void FormLayoutTest::AResizeLaysTheFormOutAgain() {
    RunningProgram program;
    program.OpenVehicles();
    Form().SetHeight(Form().Height() - 900);
    Form().SetWidth(Form().Width() - 900);
    CompareLayout();
}

void FormLayoutTest::AMaximizedFormIsLaidOut() {
    RunningProgram program;
    program.OpenVehicles();
    const int width = forms::Width(Tabs());
    Form().SetWindowState(WindowState::Maximized);
    QVERIFY(forms::Width(Tabs()) != width);
    CompareLayout();
}

void FormLayoutTest::AMinimizedFormIsNot() {
    RunningProgram program;
    program.OpenVehicles();
    const int height = forms::Height(Tabs());
    const int width = forms::Width(Tabs());
    Form().SetWindowState(WindowState::Minimized);
    QCOMPARE(forms::Height(Tabs()), height);
    QCOMPARE(forms::Width(Tabs()), width);
}

void FormLayoutTest::TheButtonsStayAtTheBottom() {
    RunningProgram program;
    program.OpenVehicles();
    const QWidget* const bar = Control<QWidget>("Frm_Boutons_Barre");
    const auto atTheBottom = [bar] {
        return bar->geometry().bottom() == bar->parentWidget()->rect().bottom() && bar->x() == 0 &&
               bar->width() == bar->parentWidget()->width();
    };
    QVERIFY(atTheBottom());
    Form().SetHeight(Form().Height() - 900);
    QVERIFY(atTheBottom());
}

void FormLayoutTest::TheTabOrderIsTheReadingOrder() {
    RunningProgram program;
    program.OpenVehicles();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QStringList reached;
    for (int step = 0; step < 30; ++step) {
        const QString name = forms::Screen::ActiveControl()->objectName();
        if (reached.contains(name)) {
            break;
        }
        reached.append(name);
        // Out of the visits too: between their cells it is Enter and the arrows that move.
        PressKey(Qt::Key_Tab);
    }
    const QStringList expected{
        "CTX_IMMAT",    "CTX_MARQUE",  "CTX_ComplIdent", "CTX_CODCLI",     "DBG_DETAIL",     "CTX_USER_1",
        "CTX_USER_2",   "CTX_USER_3",  "CTX_USER_4",     "CTX_USER_6",     "CTX_USER_7",     "CTX_USER_8",
        "CTX_USER_10",  "CTX_Note1",   "CTX_Note2",      "Cmd_Images",     "Cmd_ADD",        "CMD_REFRESH",
        "Cmd_Delete",   "Cmd_Annul",   "Cmd_Update",     "Cmd_Imprimer_0", "Cmd_Imprimer_1", "Cmd_Imprimer_2",
        "CMD_HistoVis", "Cmd_Quitter", "SST_ONGLET"};
    QCOMPARE(reached, expected);
}

void FormLayoutTest::TheRecordGrowsWithTheScreen_data() {
    EveryTextIsReadable_data();
}

/// The factor, to a pixel, on one control of each kind; what is out of sight stays there.
void FormLayoutTest::TheRecordGrowsWithTheScreen() {
    QFETCH(const int, width);
    QFETCH(const int, height);
    forms::Screen::SetSizeForTests(15 * width, 15 * height);
    RunningProgram program;
    program.OpenVehicles();
    const double factor = FactorOn(height);
    const auto near = [factor](int actual, double designed) {
        return std::abs(actual - designed * factor) <= 1.5;
    };
    const forms::TextBox* const box = Box("CTX_MARQUE");
    QVERIFY(near(box->x(), 128) && near(box->width(), 332) && near(box->height(), 20));
    // Its lower edge stays where the scaling of its top has put it.
    QVERIFY(std::abs(box->y() - (32 * factor - 20 * (factor - 1))) <= 1.5);
    QVERIFY(std::abs(forms::FontSize(box) - 9 * factor) < 0.1);
    const auto* const label = Control<forms::Label>("CTL_MARQUE");
    QVERIFY(near(label->y(), 30) && near(label->height(), 20));
    const auto* const notes = Control<forms::MemoBox>("CTX_Note1");
    QVERIFY(near(notes->y(), 242) && near(notes->height(), 76));
    QCOMPARE(Button("Cmd_ADD")->size(), QSize(32, 32));
    QCOMPARE(forms::Height(Control<QWidget>("Pic_Boutons_1")), 32 * 15);
    QVERIFY(near(Tabs()->StripPixels(), 32));
    QCOMPARE(UserBox(16)->x(), -5000);
    QCOMPARE(UserLabel(22)->x(), -5000);
}

void FormLayoutTest::TheColumnsOfAGridGrowAsItHasRoom_data() {
    EveryTextIsReadable_data();
}

/// Columns that have a hundredth of room to spare grow with the form, others as far as they fill their grid,
/// and those that do not find room stay.
void FormLayoutTest::TheColumnsOfAGridGrowAsItHasRoom() {
    struct Columns {
        const char* grid;
        double characters;
        int pixels;  ///< of the grid
        bool haveRoom;
    };
    QFETCH(const int, width);
    QFETCH(const int, height);
    const ScreenProgram screen(width, height);
    const double factor = FactorOn(height);
    // As the form is designed.
    for (const Columns& columns :
         {Columns{"DBG_DETAIL", 41.99, 452, true}, Columns{"DBG_TypTrav", 31, 280, true},
          Columns{"DBG_HISTO", 83, 696, false}}) {
        const double filled = (columns.pixels * 15 * factor - 250) / 121.75;
        const double grown = columns.haveRoom ? columns.characters * factor : filled;
        const double expected = factor == 1 ? columns.characters : grown;
        const double shown = WidthOfColumns(*Grid(columns.grid));
        QVERIFY2(std::abs(shown - expected) < 0.2, columns.grid);
    }
    // The list has more columns than room at any size.
    QCOMPARE(WidthOfColumn(*Grid("DBG_Liste"), 1), 14.25);
    QCOMPARE(WidthOfColumn(*Grid("DBG_Liste"), 4), 18.0);
}

void FormLayoutTest::EveryTextIsReadable_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("800 x 600") << 800 << 600;
    QTest::newRow("1024 x 768") << 1024 << 768;
    QTest::newRow("1366 x 768") << 1366 << 768;
    QTest::newRow("1280 x 1024") << 1280 << 1024;
    QTest::newRow("1440 x 900") << 1440 << 900;
    QTest::newRow("1920 x 1080") << 1920 << 1080;
    QTest::newRow("1920 x 1200") << 1920 << 1200;
    QTest::newRow("2560 x 1440") << 2560 << 1440;
}

void FormLayoutTest::EveryTextIsReadable() {
    QFETCH(const int, width);
    QFETCH(const int, height);
    const ScreenProgram screen(width, height);
    QCoreApplication::processEvents();
    const QTabBar* const tabs = Tabs()->tabBar();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        QVERIFY(tabs->fontMetrics().horizontalAdvance(tabs->tabText(tab)) <= tabs->tabRect(tab).width());
    }
    QVERIFY(tabs->tabRect(kRecordTab).right() < Control<QWidget>("Pic_Boutons_ToolBar")->x());
    screen.CompareReadable("liste");
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    screen.CompareReadable("detail");
}

void FormLayoutTest::EveryTextOfAFloatingFrameIsReadable_data() {
    EveryTextIsReadable_data();
}

void FormLayoutTest::EveryTextOfAFloatingFrameIsReadable() {
    QFETCH(const int, width);
    QFETCH(const int, height);
    const ScreenProgram screen(width, height);
    Form().OpenQuickSearch();
    QVERIFY(Shown(Control<QWidget>("Frm_ChercheVeh")));
    screen.CompareReadable("recherche");
    PressKey(Qt::Key_Escape);
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    Press("CMD_HistoVis");
    QVERIFY(Shown(Control<QWidget>("FRM_HISTO")));
    screen.CompareReadable("historique");
    Control<QWidget>("FRM_DETAIL")->show();
    screen.CompareReadable("affaire");
    Control<QWidget>("FRM_DETAIL")->hide();
    Control<QWidget>("FRM_SelDate")->show();
    screen.CompareReadable("date");
    Control<QWidget>("FRM_SelDate")->hide();
    Control<QWidget>("FRM_HISTO")->hide();
    TypeVisit(1, 1, QStringLiteral("ZZZ"));
    QVERIFY(Shown(Control<QWidget>("Frm_TypTrav")));
    screen.CompareReadable("types");
}

/// A screen of 1366 x 768 at 150 % is lower than the one that the forms were drawn for.
void FormLayoutTest::OnASmallScreenEveryTextOfTheMaximizedFormIsReadable() {
    constexpr int kWidth = 910;
    constexpr int kHeight = 512;
    const ScreenProgram screen(kWidth, kHeight);
    MainWindow().SetWidth(15 * kWidth);
    MainWindow().SetHeight(15 * kHeight);
    Form().SetWindowState(WindowState::Maximized);
    screen.CompareReadable("liste");
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    screen.CompareReadable("detail");
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    FormLayoutTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "form_layout_test.moc"
