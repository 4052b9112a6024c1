// Adaptation of a form to the screen, as arithmetic on a small form with a control of each kind.
#include <QMainWindow>
#include <QPushButton>
#include <QTest>

#include <forms/combo.h>
#include <forms/control.h>
#include <forms/control_font.h>
#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/grid.h>
#include <forms/mdi_form.h>
#include <forms/option_button.h>
#include <forms/runtime.h>
#include <services/screen_adaptation.h>

using namespace quardele;
using services::AdjustForm;
using services::AdjustWelcomeForm;
using services::kAskWindowState;
using services::kFitToMainWindow;
using services::kScaleToMainWindow;

namespace {

constexpr int kPixel = 15;
constexpr int kFormWidth = 600 * kPixel;
constexpr int kFormHeight = 400 * kPixel;
constexpr double kPoints = 9;
constexpr double kRatio = 1.5;

class MainForm : public forms::MdiForm {
    Q_OBJECT
 public:
    MainForm() : MdiForm(QStringLiteral("PRINCIPALE")) { AdoptLayout(); }
};

class SmallForm : public forms::Form {
    Q_OBJECT
 public:
    SmallForm() : Form(QStringLiteral("PETITE"), forms::FormKind::Dialog) {
        Surface()->resize(kFormWidth / kPixel, kFormHeight / kPixel);
        Surface()->setWindowTitle(QStringLiteral("Petite"));
        anchor = new forms::Label(Surface());
        anchor->setObjectName(QStringLiteral("CTL_ANCRE"));
        anchor->setGeometry(20, 10, 100, 20);
        added = std::exchange(toAdd, nullptr);
        if (added != nullptr) {
            added->setParent(Surface());
        }
    }

    /// The control of the next instance, besides the label that every one has.
    static QWidget* toAdd;

    forms::Label* anchor;
    QWidget* added;
};

QWidget* SmallForm::toAdd = nullptr;

template <class T>
T* Make(const char* name, const QRect& place, QWidget* container = nullptr) {
    auto* const control = new T(container);
    control->setObjectName(QString::fromLatin1(name));
    control->setGeometry(place);
    return control;
}

SmallForm& Small() {
    return forms::Instance<SmallForm>();
}

/// A form with one control more.
template <class T>
T* SmallWith(T* control) {
    SmallForm::toAdd = control;
    Small();
    return control;
}

/// The main window, `ratio` times as large as the form.
void SetMainWindow(double ratioOfHeight, double ratioOfWidth = 2) {
    auto& main = forms::Instance<MainForm>();
    main.SetWidth(static_cast<int>(kFormWidth * ratioOfWidth));
    main.SetHeight(static_cast<int>(kFormHeight * ratioOfHeight));
}

void SetScreen(int width, int height) {
    services::ScreenAtStart() = {width * kPixel, height * kPixel};
}

/// All that the adaptation could have changed.
QString Picture() {
    const SmallForm& form = Small();
    const QRect label = form.anchor->geometry();
    return QStringLiteral("%1 %2 %3 %4 / %5 %6 %7 %8 / %9")
        .arg(form.Left())
        .arg(form.Top())
        .arg(form.Width())
        .arg(form.Height())
        .arg(label.x())
        .arg(label.y())
        .arg(label.width())
        .arg(label.height())
        .arg(forms::FontSize(form.anchor));
}

/// Runs the adaptation and says whether it changed nothing.
template <class Adjusting>
bool LeavesAlone(const Adjusting& adjust) {
    const QString before = Picture();
    adjust();
    return Picture() == before;
}

/// The control as a form of 1.5 times its size leaves it.
template <class T>
T* Adapted(T* control) {
    SmallWith(control);
    static_cast<void>(AdjustForm(Small(), kFitToMainWindow));
    return control;
}

QString Corner(forms::Grid& grid) {
    grid.SetCol(0);
    grid.SetRow(0);
    return grid.Text();
}

double ColumnWidth(forms::Grid& grid, int column) {
    grid.SetCol(column);
    return grid.ColWidth();
}

forms::Grid* GridOfColumns(const QStringList& columns) {
    auto* const grid = Make<forms::Grid>("DBG_LISTE", QRect(20, 40, 300, 100));
    grid->SetColumnLines(columns);
    return grid;
}

}  // namespace

class ScreenAdaptationTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void cleanup();

    // Modes and results.
    void OnAScreenOf600LinesNothingHappens_data();
    void OnAScreenOf600LinesNothingHappens();
    void AMinimizedFormIsLeftAlone_data();
    void AMinimizedFormIsLeftAlone();
    void AskingForTheStateChangesNothing();
    void TheResultIsTheStateOfTheForm_data();
    void TheResultIsTheStateOfTheForm();
    void OnAScreenOf768LinesTheFormTakesTheWidthAlone();
    void OnHigherScreensTheFormGrows();
    void AFormLargerThanTheMainWindowIsLeftAlone();
    void AFormAsHighAsTheMainWindowIsPlacedOnly();
    void OtherModesScaleTheControlsAlone_data();
    void OtherModesScaleTheControlsAlone();

    // Kinds.
    void ALabelGrowsInEverything();
    void ABoxOfOneLineGrowsWithItsFontAndKeepsItsLowerEdge();
    void AMemoGrowsInEverything();
    void ChoicesGrowInEverything();
    void AFrameGrowsAndLeavesTheFontsInside();
    void APictureBoxKeepsItsFont();
    void APictureButtonKeepsItsSizeAndIsCentred();
    void ACommandButtonGrowsInEverything();
    void ADropDownTakesItsHeightFromItsFont();
    void AListOfColumnsGrowsInEverything();
    void ATabControlsStripGrows();
    void ColumnsWithRoomGrowWithTheGrid();
    void ColumnsWithoutRoomFillTheGrid();
    void AHundredthOfRoomIsTheLeast_data();
    void AHundredthOfRoomIsTheLeast();
    void ColumnsThatOverflowStay();
    void ARowHeaderCountsAndGrows();
    void HiddenColumnsDoNotCount();

    // Names and places.
    void ANameThatBeginsWithZKeepsItsFont();
    void AListNamedWithZKeepsItsFontsAndItsRows();
    void ASmallZIsALetterLikeOthers();
    void ABoxNamedWithZActsOnTheHeightBeforeIt();
    void ABoxNamedWithZAloneIsScaledOnly();
    void BlocksOfButtonsStayAtTheTop_data();
    void BlocksOfButtonsStayAtTheTop();
    void FramesOfButtonsStayInTheMiddle();
    void AParkedControlStaysOutOfSight();
    void AControlIsParkedFrom500TwipsOn();
    void AParkedButtonIsParkedLikeOthers();

    // The welcome form.
    void TheWelcomeFormFillsTheWidth();
    void TheWelcomeFormIsNotStretchedOnAWideScreen();
    void TheWelcomeFormGrowsOnAScreenOf768LinesToo();
    void AWelcomeFormWiderThanTheMainWindowIsLeftAlone();
    void TheWelcomeFormKnowsTheOtherModes();
};

void ScreenAdaptationTest::init() {
    SetScreen(1600, 1200);
    SetMainWindow(kRatio);
}

void ScreenAdaptationTest::cleanup() {
    if (forms::IsLoaded<SmallForm>()) {
        Small().Unload();
    }
    forms::Instance<MainForm>().Unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    services::ScreenAtStart() = {};
}

void ScreenAdaptationTest::OnAScreenOf600LinesNothingHappens_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("fit") << int{kFitToMainWindow};
    QTest::newRow("ask") << int{kAskWindowState};
    QTest::newRow("scale") << int{kScaleToMainWindow};
    QTest::newRow("other") << 0;
}

void ScreenAdaptationTest::OnAScreenOf600LinesNothingHappens() {
    QFETCH(const int, mode);
    SetScreen(800, 600);
    Small().SetWindowState(forms::WindowState::Minimized);
    QVERIFY(LeavesAlone([mode] { QCOMPARE(AdjustForm(Small(), static_cast<std::int16_t>(mode)), 0); }));
}

void ScreenAdaptationTest::AMinimizedFormIsLeftAlone_data() {
    OnAScreenOf600LinesNothingHappens_data();
}

void ScreenAdaptationTest::AMinimizedFormIsLeftAlone() {
    QFETCH(const int, mode);
    Small().SetWindowState(forms::WindowState::Minimized);
    QVERIFY(LeavesAlone([mode] { QCOMPARE(AdjustForm(Small(), static_cast<std::int16_t>(mode)), -2); }));
}

void ScreenAdaptationTest::AskingForTheStateChangesNothing() {
    QVERIFY(LeavesAlone([] { QCOMPARE(AdjustForm(Small(), kAskWindowState), 0); }));
    Small().SetWindowState(forms::WindowState::Maximized);
    QVERIFY(LeavesAlone([] { QCOMPARE(AdjustForm(Small(), kAskWindowState), 2); }));
}

void ScreenAdaptationTest::TheResultIsTheStateOfTheForm_data() {
    QTest::addColumn<int>("mode");
    QTest::newRow("fit") << int{kFitToMainWindow};
    QTest::newRow("scale") << int{kScaleToMainWindow};
    QTest::newRow("other") << 0;
}

void ScreenAdaptationTest::TheResultIsTheStateOfTheForm() {
    QFETCH(const int, mode);
    Small().SetWindowState(forms::WindowState::Maximized);
    QCOMPARE(AdjustForm(Small(), static_cast<std::int16_t>(mode)), 2);
    QVERIFY(Small().anchor->geometry() != QRect(20, 10, 100, 20));
    Small().Unload();
    Small().SetWindowState(forms::WindowState::Maximized);
    QCOMPARE(AdjustWelcomeForm(Small(), static_cast<std::int16_t>(mode)), 2);
    QVERIFY(Small().anchor->geometry() != QRect(20, 10, 100, 20));
}

void ScreenAdaptationTest::OnAScreenOf768LinesTheFormTakesTheWidthAlone() {
    SetScreen(1366, 768);
    Small().SetLeft(300);
    Small().SetTop(450);
    QCOMPARE(AdjustForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Left(), 0);
    QCOMPARE(Small().Top(), 0);
    QCOMPARE(Small().Width(), 2 * kFormWidth);
    QCOMPARE(Small().Height(), kFormHeight);
    QCOMPARE(Small().anchor->geometry(), QRect(20, 10, 100, 20));
    QCOMPARE(forms::FontSize(Small().anchor), kPoints);
}

void ScreenAdaptationTest::OnHigherScreensTheFormGrows() {
    services::ScreenAtStart() = {1366 * kPixel, 11521};
    QCOMPARE(AdjustForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Left(), 0);
    QCOMPARE(Small().Top(), 0);
    QCOMPARE(Small().Width(), 2 * kFormWidth);
    QCOMPARE(Small().Height(), static_cast<int>(kRatio * kFormHeight));
    QCOMPARE(Small().anchor->geometry(), QRect(30, 15, 150, 30));
}

void ScreenAdaptationTest::AFormLargerThanTheMainWindowIsLeftAlone() {
    SetMainWindow(0.99);
    Small().SetLeft(300);
    Small().SetTop(450);
    QVERIFY(LeavesAlone([] { QCOMPARE(AdjustForm(Small(), kFitToMainWindow), -1); }));
}

void ScreenAdaptationTest::AFormAsHighAsTheMainWindowIsPlacedOnly() {
    SetMainWindow(1);
    QCOMPARE(AdjustForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Width(), 2 * kFormWidth);
    QCOMPARE(Small().anchor->geometry(), QRect(20, 10, 100, 20));
}

void ScreenAdaptationTest::OtherModesScaleTheControlsAlone_data() {
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRect>("label");
    QTest::addColumn<double>("points");
    // The main window is three quarters of the screen.
    QTest::newRow("2") << 2 << QRect(15, 8, 75, 15) << kPoints * 0.75;
    QTest::newRow("0") << 0 << QRect(27, 13, 133, 27) << kPoints * 4 / 3;
    QTest::newRow("1") << 1 << QRect(27, 13, 133, 27) << kPoints * 4 / 3;
    QTest::newRow("-3") << -3 << QRect(27, 13, 133, 27) << kPoints * 4 / 3;
}

void ScreenAdaptationTest::OtherModesScaleTheControlsAlone() {
    QFETCH(const int, mode);
    QFETCH(const QRect, label);
    QFETCH(const double, points);
    Small().SetLeft(300);
    Small().SetTop(450);
    QCOMPARE(AdjustForm(Small(), static_cast<std::int16_t>(mode)), 0);
    QCOMPARE(Small().anchor->geometry(), label);
    QCOMPARE(forms::FontSize(Small().anchor), points);
    QCOMPARE(Small().Left(), 300);
    QCOMPARE(Small().Height(), kFormHeight);
}

void ScreenAdaptationTest::ALabelGrowsInEverything() {
    const auto* label = Adapted(Make<forms::Label>("CTL_IMMAT", QRect(40, 60, 80, 22)));
    QCOMPARE(label->geometry(), QRect(60, 90, 120, 33));
    QCOMPARE(forms::FontSize(label), kPoints * kRatio);
}

void ScreenAdaptationTest::ABoxOfOneLineGrowsWithItsFontAndKeepsItsLowerEdge() {
    const auto* box = Adapted(Make<forms::TextBox>("CTX_IMMAT", QRect(40, 60, 80, 20)));
    QCOMPARE(box->geometry(), QRect(60, 90 - 10, 120, 30));
    QCOMPARE(forms::FontSize(box), kPoints * kRatio);
}

void ScreenAdaptationTest::AMemoGrowsInEverything() {
    const auto* memo = Adapted(Make<forms::MemoBox>("CTX_Note1", QRect(40, 60, 80, 50)));
    QCOMPARE(memo->geometry(), QRect(60, 90, 120, 75));
    QCOMPARE(forms::FontSize(memo), kPoints * kRatio);
}

void ScreenAdaptationTest::ChoicesGrowInEverything() {
    const auto* check = Adapted(Make<forms::CheckBox>("CHK_PDF", QRect(40, 60, 80, 22)));
    QCOMPARE(check->geometry(), QRect(60, 90, 120, 33));
    QCOMPARE(forms::FontSize(check), kPoints * kRatio);
    Small().Unload();
    const auto* option = Adapted(Make<forms::OptionButton>("FND3_OPT", QRect(40, 60, 80, 22)));
    QCOMPARE(option->geometry(), QRect(60, 90, 120, 33));
    QCOMPARE(forms::FontSize(option), kPoints * kRatio);
}

void ScreenAdaptationTest::AFrameGrowsAndLeavesTheFontsInside() {
    auto* const frame = Make<forms::Frame>("FRM_DETAIL", QRect(40, 60, 200, 100));
    const auto* label = Make<forms::Label>("CTL_DEDANS", QRect(10, 20, 60, 20), frame);
    const auto* button = Make<forms::Button>("Cmd_DEDANS", QRect(100, 20, 32, 32), frame);
    Adapted(frame);
    QCOMPARE(frame->geometry(), QRect(60, 90, 300, 150));
    QCOMPARE(forms::FontSize(frame), kPoints * kRatio);
    // Once, not once for the frame and once for itself.
    QCOMPARE(label->geometry(), QRect(15, 30, 90, 30));
    QCOMPARE(forms::FontSize(label), kPoints * kRatio);
    QCOMPARE(forms::FontSize(button), kPoints);
}

void ScreenAdaptationTest::APictureBoxKeepsItsFont() {
    const auto* picture = Adapted(Make<forms::PictureBox>("Picture1", QRect(40, 60, 80, 50)));
    QCOMPARE(picture->geometry(), QRect(60, 90, 120, 75));
    QCOMPARE(forms::FontSize(picture), kPoints);
}

void ScreenAdaptationTest::APictureButtonKeepsItsSizeAndIsCentred() {
    const auto* button = Adapted(Make<forms::Button>("Cmd_ADD", QRect(40, 60, 32, 28)));
    QCOMPARE(button->geometry(), QRect(60 + 8, 60, 32, 28));
    QCOMPARE(forms::FontSize(button), kPoints);
}

void ScreenAdaptationTest::ACommandButtonGrowsInEverything() {
    const auto* button = Adapted(Make<QPushButton>("Cmd_SIMPLE", QRect(40, 60, 80, 28)));
    QCOMPARE(button->geometry(), QRect(60, 90, 120, 42));
    QCOMPARE(forms::FontSize(button), kPoints * kRatio);
}

void ScreenAdaptationTest::ADropDownTakesItsHeightFromItsFont() {
    const auto* list = Adapted(Make<forms::DropDown>("BXC_ChoixDate", QRect(40, 60, 80, 24)));
    QCOMPARE(list->geometry(), QRect(60, 90, 120, 36));
    QCOMPARE(forms::FontSize(list), kPoints * kRatio);
}

void ScreenAdaptationTest::AListOfColumnsGrowsInEverything() {
    auto* const list = Make<forms::ListCombo>("DBC_SITE", QRect(40, 60, 80, 24));
    list->SetListFields({QStringLiteral("CODE"), QStringLiteral("NOM")});
    list->SetCol(0);
    list->SetColWidth(600);
    list->SetCol(1);
    list->SetColWidth(1500);
    list->SetListWidth(2400);
    list->SetRowHeight(300);
    list->SetTextTipFontSize(8);
    Adapted(list);
    QCOMPARE(list->geometry(), QRect(60, 90, 120, 36));
    QCOMPARE(forms::FontSize(list), kPoints * kRatio);
    list->SetCol(0);
    QCOMPARE(list->ColWidth(), 900);
    list->SetCol(1);
    QCOMPARE(list->ColWidth(), 2250);
    QCOMPARE(list->ListWidth(), 3600);
    QCOMPARE(list->RowHeight(), 450);
    QCOMPARE(list->TextTipFontSize(), 12.0);
}

void ScreenAdaptationTest::ATabControlsStripGrows() {
    auto* const tabs = Make<forms::TabControl>("SST_ONGLET", QRect(40, 60, 300, 200));
    auto* const page = new QWidget;
    page->setObjectName(QStringLiteral("Onglet"));
    tabs->addTab(page, QStringLiteral("Page"));
    const auto* label = Make<forms::Label>("CTL_PAGE", QRect(20, 30, 100, 20), page);
    Adapted(tabs);
    Small().Show();
    QCOMPARE(tabs->geometry(), QRect(60, 90, 450, 300));
    QCOMPARE(tabs->TabHeight(), 48 * kPixel);
    QCOMPARE(page->mapTo(tabs, QPoint(0, 0)), QPoint(0, 48));
    QCOMPARE(page->size(), QSize(450, 300 - 48));
    QCOMPARE(tabs->tabBar()->tabRect(0).height(), 48 - 2);
    QCOMPARE(label->geometry(), QRect(30, 45, 150, 30));
}

void ScreenAdaptationTest::ColumnsWithRoomGrowWithTheGrid() {
    auto* const grid = Adapted(GridOfColumns({"A||10|text", "B||20|text"}));
    QCOMPARE(grid->geometry(), QRect(30, 60, 450, 150));
    QCOMPARE(ColumnWidth(*grid, 1), 15.0);
    QCOMPARE(ColumnWidth(*grid, 2), 30.0);
    QCOMPARE(Corner(*grid), QStringLiteral("15000"));
    QCOMPARE(grid->FontSize(), 36.0);
    QCOMPARE(forms::FontSize(grid), kPoints);
}

/// 36 characters are 4383 twips: more than the 4250 inside the grid, less than the 6500 afterwards.
void ScreenAdaptationTest::ColumnsWithoutRoomFillTheGrid() {
    auto* const grid = Adapted(GridOfColumns({"A||12|text", "B||24|text"}));
    const double factor = 6500 / 4383.0;
    QCOMPARE(ColumnWidth(*grid, 1), 12 * factor);
    QCOMPARE(ColumnWidth(*grid, 2), 24 * factor);
    QCOMPARE(Corner(*grid), QStringLiteral("14830"));
}

void ScreenAdaptationTest::AHundredthOfRoomIsTheLeast_data() {
    QTest::addColumn<double>("characters");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QString>("corner");
    // Inside the grid are 4250 twips, and 6500 afterwards; a character is 121.75.
    QTest::newRow("1.012 times the columns") << 34.5 << kRatio << QStringLiteral("15000");
    QTest::newRow("1.006 times") << 34.7 << 6500 / (34.7 * 121.75) << QStringLiteral("15385");  // 15385.6
    QTest::newRow("0.99 times") << 35.2 << 6500 / (35.2 * 121.75) << QStringLiteral("15167");   // 15167.1
}

void ScreenAdaptationTest::AHundredthOfRoomIsTheLeast() {
    QFETCH(const double, characters);
    QFETCH(const double, factor);
    QFETCH(const QString, corner);
    auto* const grid = Adapted(GridOfColumns({QStringLiteral("A||%1|text").arg(characters)}));
    QCOMPARE(ColumnWidth(*grid, 1), characters * factor);
    QCOMPARE(Corner(*grid), corner);
}

void ScreenAdaptationTest::ARowHeaderCountsAndGrows() {
    forms::Grid* const grid = GridOfColumns({"A||10|text", "B||10|text"});
    grid->SetRowHeader(true);
    grid->SetCol(0);
    grid->SetColWidth(16);
    Adapted(grid);
    // 36 characters leave no room: with the header they fill the grid. A header is whole pixels.
    const double factor = 6500 / 4383.0;
    const double pixel = 15 / 121.75;
    QVERIFY(std::abs(ColumnWidth(*grid, 1) - 10 * factor) < pixel);
    QVERIFY(std::abs(ColumnWidth(*grid, 0) - 16 * factor) < 2 * pixel);
    QVERIFY(std::abs(Corner(*grid).toInt() - 14830) < 100);
}

void ScreenAdaptationTest::ColumnsThatOverflowStay() {
    auto* const grid = Adapted(GridOfColumns({"A||30|text", "B||30|text"}));
    QCOMPARE(ColumnWidth(*grid, 1), 30.0);
    QCOMPARE(ColumnWidth(*grid, 2), 30.0);
    QCOMPARE(Corner(*grid), QString());
}

void ScreenAdaptationTest::HiddenColumnsDoNotCount() {
    forms::Grid* const grid = GridOfColumns({"A||10|text", "B||90|text"});
    grid->SetCol(2);
    grid->SetColHidden(true);
    Adapted(grid);
    QCOMPARE(ColumnWidth(*grid, 1), 15.0);
    QCOMPARE(ColumnWidth(*grid, 2), 90.0);
}

void ScreenAdaptationTest::ANameThatBeginsWithZKeepsItsFont() {
    const auto* label = Adapted(Make<forms::Label>("ZCTL_TITRE", QRect(40, 60, 80, 22)));
    QCOMPARE(label->geometry(), QRect(60, 90, 120, 33));
    QCOMPARE(forms::FontSize(label), kPoints);
    Small().Unload();
    const auto* check = Adapted(Make<forms::CheckBox>("ZCHK", QRect(40, 60, 80, 22)));
    QCOMPARE(check->geometry(), QRect(60, 90, 120, 33));
    QCOMPARE(forms::FontSize(check), kPoints);
}

void ScreenAdaptationTest::AListNamedWithZKeepsItsFontsAndItsRows() {
    auto* const list = Make<forms::ListCombo>("ZDBC_SITE", QRect(40, 60, 80, 24));
    list->SetListFields({QStringLiteral("CODE")});
    list->SetCol(0);
    list->SetColWidth(600);
    list->SetRowHeight(300);
    list->SetTextTipFontSize(8);
    Adapted(list);
    QCOMPARE(forms::FontSize(list), kPoints);
    QCOMPARE(list->TextTipFontSize(), 8.0);
    QCOMPARE(list->RowHeight(), 300);
    QCOMPARE(list->ColWidth(), 900);
}

void ScreenAdaptationTest::ASmallZIsALetterLikeOthers() {
    QCOMPARE(forms::FontSize(Adapted(Make<forms::Label>("zone", QRect(40, 60, 80, 22)))), kPoints * kRatio);
}

/// The label before it was 20 pixels high and is 30 now; the box stays at 24.
void ScreenAdaptationTest::ABoxNamedWithZActsOnTheHeightBeforeIt() {
    const auto* box = Adapted(Make<forms::TextBox>("ZCTX_TITRE", QRect(40, 60, 80, 24)));
    QCOMPARE(forms::FontSize(box), kPoints);
    QCOMPARE(box->geometry(), QRect(60, 90 - (24 - 30), 120, 24));
}

void ScreenAdaptationTest::ABoxNamedWithZAloneIsScaledOnly() {
    auto* const box = Make<forms::TextBox>("ZCTX_TITRE", QRect(40, 60, 80, 24));
    SmallWith(box);
    Small().anchor->setObjectName(QStringLiteral("ZCTL_ANCRE"));
    static_cast<void>(AdjustForm(Small(), kFitToMainWindow));
    QCOMPARE(box->geometry(), QRect(60, 90, 120, 24));
}

void ScreenAdaptationTest::BlocksOfButtonsStayAtTheTop_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("capitals") << "PIC_BOUTONS_1";
    QTest::newRow("as written in the forms") << "Pic_boutons_2";
}

void ScreenAdaptationTest::BlocksOfButtonsStayAtTheTop() {
    QFETCH(const QString, name);
    const auto* block = Adapted(Make<forms::PictureBox>(qPrintable(name), QRect(40, 60, 100, 32)));
    QCOMPARE(block->geometry(), QRect(60, 60, 150, 32));
}

void ScreenAdaptationTest::FramesOfButtonsStayInTheMiddle() {
    const auto* block = Adapted(Make<forms::Frame>("Frm_boutons_Histo", QRect(40, 60, 100, 36)));
    QCOMPARE(block->geometry(), QRect(60, 90 + 9, 150, 36));
}

void ScreenAdaptationTest::AParkedControlStaysOutOfSight() {
    const auto* label = Adapted(Make<forms::Label>("CTL_USER", QRect(-67, 60, 80, 22)));
    // (-1005 + 75000) x 1.5 - 75000 twips.
    QCOMPARE(forms::Left(label), 2400 * kPixel);
    QVERIFY(!Small().Surface()->rect().intersects(label->geometry()));
}

void ScreenAdaptationTest::AControlIsParkedFrom500TwipsOn() {
    QCOMPARE(Adapted(Make<forms::Label>("CTL_A", QRect(-33, 60, 80, 22)))->x(), -50);
    Small().Unload();
    QCOMPARE(Adapted(Make<forms::Label>("CTL_A", QRect(-34, 60, 80, 22)))->x(), 2449);
    Small().Unload();
    // As far to the left as the scaling measures from, it does not move at all.
    QCOMPARE(Adapted(Make<forms::Label>("CTL_A", QRect(-5000, 60, 80, 22)))->x(), -5000);
}

void ScreenAdaptationTest::AParkedButtonIsParkedLikeOthers() {
    QCOMPARE(Adapted(Make<forms::Button>("Cmd_A", QRect(-34, 60, 32, 32)))->x(), 2449);
}

void ScreenAdaptationTest::TheWelcomeFormFillsTheWidth() {
    SetMainWindow(1, kRatio);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Left(), 0);
    QCOMPARE(Small().Top(), kFormHeight);  // and a twip, which is no pixel
    QCOMPARE(Small().Width(), static_cast<int>(kRatio * kFormWidth));
    QCOMPARE(Small().Height(), static_cast<int>(kRatio * kFormHeight));
    QCOMPARE(Small().anchor->geometry(), QRect(30, 15, 150, 30));
}

/// 1920 x 1080 is three quarters as high as 4:3: a ratio of 2 becomes 1.5.
void ScreenAdaptationTest::TheWelcomeFormIsNotStretchedOnAWideScreen() {
    SetScreen(1920, 1080);
    SetMainWindow(1, 2);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Width(), 2 * kFormWidth);
    QCOMPARE(Small().Height(), static_cast<int>(kRatio * kFormHeight));
    QCOMPARE(Small().anchor->geometry(), QRect(30, 15, 150, 30));
}

void ScreenAdaptationTest::TheWelcomeFormGrowsOnAScreenOf768LinesToo() {
    SetScreen(1024, 768);
    SetMainWindow(1, kRatio);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().anchor->geometry(), QRect(30, 15, 150, 30));
}

void ScreenAdaptationTest::AWelcomeFormWiderThanTheMainWindowIsLeftAlone() {
    SetMainWindow(2, 0.99);
    Small().SetLeft(300);
    Small().SetTop(450);
    QVERIFY(LeavesAlone([] { QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), -1); }));
    // A wide screen may make a form smaller that is not wider than the main window.
    SetScreen(1920, 1080);
    SetMainWindow(1, 1);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), 0);
    QCOMPARE(Small().Height(), static_cast<int>(0.75 * kFormHeight));
    QCOMPARE(Small().anchor->geometry(), QRect(15, 8, 75, 15));
}

void ScreenAdaptationTest::TheWelcomeFormKnowsTheOtherModes() {
    QCOMPARE(AdjustWelcomeForm(Small(), kAskWindowState), 0);
    QCOMPARE(Small().anchor->geometry(), QRect(20, 10, 100, 20));
    QCOMPARE(AdjustWelcomeForm(Small(), kScaleToMainWindow), 0);
    QCOMPARE(Small().anchor->geometry(), QRect(15, 8, 75, 15));
    Small().SetWindowState(forms::WindowState::Minimized);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), -2);
    SetScreen(800, 600);
    QCOMPARE(AdjustWelcomeForm(Small(), kFitToMainWindow), 0);
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    ScreenAdaptationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "screen_adaptation_test.moc"
