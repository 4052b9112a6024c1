// Size and place of the vehicle form and of what grows with it, on screens of several sizes; what can be read
// on them.
#include <QHeaderView>
#include <QTabBar>

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

void CompareReadable() {
    QCOMPARE(UnreadableTexts(), QString());
    QCOMPARE(ControlsThatReachOut(), QString());
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
    void EveryTextIsReadable_data();
    void EveryTextIsReadable();
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

void FormLayoutTest::EveryTextIsReadable_data() {
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("800 x 600") << 800 << 600;
    QTest::newRow("1366 x 768") << 1366 << 768;
    QTest::newRow("1920 x 1080") << 1920 << 1080;
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

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    FormLayoutTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "form_layout_test.moc"
