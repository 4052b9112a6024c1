// Size and place of the vehicle form and of what grows with it, on screens of several sizes; what can be read
// on them.
#include <QHeaderView>
#include <QTabBar>

#include <forms/control_font.h>
#include <forms/control_kind.h>

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

/// Headings break between words.
QString LongestWord(const QString& heading) {
    const QStringList words = QString(heading).replace(u'\n', u' ').split(u' ');
    return *std::max_element(words.begin(), words.end(), [](const QString& one, const QString& other) {
        return one.size() < other.size();
    });
}

/// What of a text would be cut off or shortened.
QString Unreadable(const QString& name, const QString& text, const QFontMetrics& font, const QSize& room) {
    for (const QString& line : text.split(u'\n')) {
        if (font.horizontalAdvance(line) > room.width() || font.height() > room.height()) {
            return QStringLiteral("%1: \"%2\" ").arg(name, text);
        }
    }
    return {};
}

/// Labels, texts of buttons and headings of columns on screen now.
QString UnreadableTexts() {
    QString found;
    for (const forms::Label* label : Form().Surface()->findChildren<forms::Label*>()) {
        if (label->isVisible() && label->x() >= 0) {
            found += Unreadable(label->objectName(), label->Caption(), label->fontMetrics(),
                                label->contentsRect().size());
        }
    }
    for (const forms::Grid* grid : Form().Surface()->findChildren<forms::Grid*>()) {
        const QHeaderView* const heading = grid->horizontalHeader();
        QFont font = heading->font();
        if (grid->HeadingPixels() > 0) {
            font.setPixelSize(grid->HeadingPixels());
        }
        font.setBold(grid->HeadingBold());
        for (int column = 0; grid->isVisible() && column < heading->count(); ++column) {
            if (!heading->isSectionHidden(column)) {
                const QString text = grid->model()->headerData(column, Qt::Horizontal).toString();
                found += Unreadable(grid->objectName(), LongestWord(text), QFontMetrics(font),
                                    QSize(heading->sectionSize(column), heading->height()));
            }
        }
    }
    return found;
}

/// Controls on screen now that reach out of their container, or out of the form.
QString ControlsThatReachOut() {
    QString found;
    for (const QWidget* control : Form().Controls()) {
        const bool parked = control->x() < 0;
        const bool inside = control->parentWidget()->rect().contains(control->geometry());
        if (control->isVisible() && !parked && !inside) {
            found += control->objectName() + u' ';
        }
    }
    return found;
}

/// What stands in front of the others on purpose.
bool Floats(const QWidget& control) {
    const auto* const frame = qobject_cast<const forms::Frame*>(&control);
    return frame != nullptr && frame->IsFloating();
}

bool CanOverlap(const QWidget& one, const QWidget& other) {
    const bool parked = one.x() < 0 || other.x() < 0;
    return one.isVisible() && other.isVisible() && !parked && !Floats(one) && !Floats(other) &&
           one.parentWidget() == other.parentWidget() && forms::KindOf(&one) != forms::ControlKind::TabPage &&
           forms::KindOf(&other) != forms::ControlKind::TabPage;
}

/// Pairs of controls on screen now that stand on each other. A label, whose text does not fill its height,
/// may reach some pixels under its neighbours.
QString ControlsThatOverlap() {
    constexpr int kLabelRoom = 3;
    const auto placeOf = [](const QWidget& control) {
        const bool label = qobject_cast<const forms::Label*>(&control) != nullptr;
        return label ? control.geometry().adjusted(0, kLabelRoom, 0, -kLabelRoom) : control.geometry();
    };
    QString found;
    const std::vector<QWidget*> controls = Form().Controls();
    for (auto one = controls.begin(); one != controls.end(); ++one) {
        for (auto other = one + 1; other != controls.end(); ++other) {
            if (CanOverlap(**one, **other) && placeOf(**one).intersects(placeOf(**other))) {
                found += (*one)->objectName() + u'/' + (*other)->objectName() + u' ';
            }
        }
    }
    return found;
}

/// Boxes of one line on screen now that are too low for their text.
QString BoxesTooLow() {
    QString found;
    for (const forms::TextBox* box : Form().Surface()->findChildren<forms::TextBox*>()) {
        if (box->isVisible() && box->fontMetrics().height() > box->height()) {
            found += box->objectName() + u' ';
        }
    }
    return found;
}

void CompareReadable() {
    QCOMPARE(UnreadableTexts(), QString());
    QCOMPARE(ControlsThatReachOut(), QString());
    QCOMPARE(ControlsThatOverlap(), QString());
    QCOMPARE(BoxesTooLow(), QString());
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
    void EveryTextIsReadable_data();
    void EveryTextIsReadable();
    void OnASmallScreenEveryTextOfTheMaximizedFormIsReadable();
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
    forms::Screen::SetSizeForTests(15 * width, 15 * height);
    RunningProgram program;
    program.OpenVehicles();
    QCoreApplication::processEvents();
    const QTabBar* const tabs = Tabs()->tabBar();
    for (int tab = 0; tab < tabs->count(); ++tab) {
        QVERIFY(tabs->fontMetrics().horizontalAdvance(tabs->tabText(tab)) <= tabs->tabRect(tab).width());
    }
    QVERIFY(tabs->tabRect(kRecordTab).right() < Control<QWidget>("Pic_Boutons_ToolBar")->x());
    CompareReadable();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QCoreApplication::processEvents();
    CompareReadable();
}

/// A screen of 1366 x 768 at 150 % is lower than the one that the forms were drawn for.
void FormLayoutTest::OnASmallScreenEveryTextOfTheMaximizedFormIsReadable() {
    constexpr int kWidth = 15 * 910;
    constexpr int kHeight = 15 * 512;
    forms::Screen::SetSizeForTests(kWidth, kHeight);
    RunningProgram program;
    program.OpenVehicles();
    MainWindow().SetWidth(kWidth);
    MainWindow().SetHeight(kHeight);
    Form().SetWindowState(WindowState::Maximized);
    QCoreApplication::processEvents();
    CompareReadable();
    OpenRecordOf(QStringLiteral("KG-361-VP"));
    QCoreApplication::processEvents();
    CompareReadable();
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    FormLayoutTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "form_layout_test.moc"
