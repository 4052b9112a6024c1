// The search for a vehicle by its user fields, which no button opens.
#include <QSignalSpy>

#include <forms/strings.h>

#include "list_program.h"
#include "quick_search.h"

using namespace quardele;
using namespace quardele::tests;
using vehicles::QuickSearchCriterion;

namespace {

constexpr int kSerialNumber = 3;
constexpr int kEnergy = 4;
constexpr int kPower = 6;
constexpr int kColour = 7;

const QString kNotFound = QStringLiteral("Elément non trouvé. Fin de la recherche.");

forms::TextBox* SearchBox(int number) {
    return forms::ControlArray<forms::TextBox>(Form().Surface(), QStringLiteral("CTX_USERCHER"))(number);
}

QList<forms::TextBox*> VisibleBoxes() {
    QList<forms::TextBox*> boxes;
    for (int number = 3; number <= 22; ++number) {
        if (Shown(SearchBox(number))) {
            boxes.append(SearchBox(number));
        }
    }
    return boxes;
}

/// The user field of the vehicle that the list stands on.
QString FieldOfCurrent(int number) {
    return UserBox(number)->Text();
}

QString ButtonText() {
    return Button("Cmd_GoCherche")->text();
}

bool FrameShown() {
    return Shown(Control<QWidget>("Frm_ChercheVeh"));
}

}  // namespace

class QuickSearchTest : public QObject {
    Q_OBJECT

 private slots:
    void initTestCase() { PrepareVehicleTests(); }
    void init();
    void cleanup() { program_.reset(); }

    void TheConditionOfEachType_data();
    void TheConditionOfEachType();
    void ConditionsAreJoinedInTheOrderOfTheFields();
    void NothingOpensTheFrame();
    void OpeningEmptiesTheBoxesAndGoesToTheFirst();
    void AMissingLabelHidesItsBox();
    void ASearchNeedsACriterion();
    void TheFirstMatchBecomesTheCurrentVehicle();
    void TheNextClickGoesOn();
    void BehindTheLastMatchThereIsNone();
    void AChangeInAnyBoxStartsAnew();
    void SeveralBoxesMustAllMatch();
    void AnotherTextOfTheButtonMovesNothing();
    void ASearchForADateEndsTheProgram_data();
    void ASearchForADateEndsTheProgram();
    void EnterMovesOn();
    void EnterIsSwallowed();
    void TheFrameOpensInFront();
    void ItsButtonClosesTheFrame();
    void EscapeClosesTheFrame_data();
    void EscapeClosesTheFrame();
    void TheListsOwnSearchStandsReadyToo();

 private:
    std::unique_ptr<ListProgram> program_;
};

void QuickSearchTest::init() {
    program_ = std::make_unique<ListProgram>();
    program_->OpenList();
}

void QuickSearchTest::TheConditionOfEachType_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("condition");
    QTest::newRow("text") << "T"
                          << "Gazole"
                          << "TVEH_USER9='Gazole'";
    QTest::newRow("no type") << ""
                             << "Gazole"
                             << "TVEH_USER9='Gazole'";
    QTest::newRow("apostrophe") << "T"
                                << "l'un"
                                << "TVEH_USER9='l'un'";
    QTest::newRow("number") << "N"
                            << " 12 CV"
                            << "TVEH_USER9='12'";
    QTest::newRow("number with a point") << "N"
                                         << "1.50"
                                         << "TVEH_USER9='1,5'";
    QTest::newRow("number with a comma") << "N"
                                         << "1,50"
                                         << "TVEH_USER9='1'";
    QTest::newRow("no number") << "N"
                               << "CV"
                               << "TVEH_USER9='0'";
    QTest::newRow("date") << "D"
                          << "3/4/26"
                          << "TVEH_USER9=#04/03/2026#";
    QTest::newRow("no date") << "D"
                             << "hier"
                             << "TVEH_USER9=#hier#";
    QTest::newRow("nothing typed") << "N"
                                   << ""
                                   << "";
}

void QuickSearchTest::TheConditionOfEachType() {
    QFETCH(const QString, type);
    QFETCH(const QString, value);
    QFETCH(const QString, condition);
    QCOMPARE(QuickSearchCriterion({{9, type, value}}), condition);
}

void QuickSearchTest::ConditionsAreJoinedInTheOrderOfTheFields() {
    QCOMPARE(QuickSearchCriterion({{3, QStringLiteral("T"), QStringLiteral("VF")},
                                   {4, QStringLiteral("T"), QString()},
                                   {22, QString(), QStringLiteral("x")}}),
             QStringLiteral("TVEH_USER3='VF' AND TVEH_USER22='x'"));
}

void QuickSearchTest::NothingOpensTheFrame() {
    Press("Cmd_ToolBar_1");
    QVERIFY(!FrameShown());
    QCOMPARE(Control<forms::Frame>("Frm_ChercheVeh")->Caption(), QStringLiteral("Recherche avancée"));
    QCOMPARE(Button("Cmd_GoCherche")->toolTip(), QStringLiteral("Effectuer l'échelonnement"));
    QCOMPARE(Button("Cmd_FinCherche")->toolTip(), QStringLiteral("Fermer la fenêtre"));
}

void QuickSearchTest::OpeningEmptiesTheBoxesAndGoesToTheFirst() {
    for (int number = 3; number <= 22; ++number) {
        SearchBox(number)->SetText(QStringLiteral("avant"));
    }
    Button("Cmd_GoCherche")->setText(QStringLiteral("Suivant"));
    Form().OpenQuickSearch();
    QVERIFY(FrameShown());
    for (int number = 3; number <= 22; ++number) {
        QCOMPARE(SearchBox(number)->Text(), QString());
    }
    QCOMPARE(ButtonText(), QStringLiteral("Rechercher"));
    QCOMPARE(forms::Screen::ActiveControl(), SearchBox(kSerialNumber));
}

void QuickSearchTest::AMissingLabelHidesItsBox() {
    QVERIFY(UserLabel(5)->Caption().endsWith(QStringLiteral("- ")));
    QVERIFY(SearchBox(5)->isHidden());
    SearchBox(kSerialNumber)->hide();
    Form().OpenQuickSearch();
    QCOMPARE(forms::Screen::ActiveControl(), SearchBox(kEnergy));
}

void QuickSearchTest::ASearchNeedsACriterion() {
    Form().OpenQuickSearch();
    const QString before = Box("CTX_IMMAT")->Text();
    Press("Cmd_GoCherche");
    CompareOnlyBox(program_->boxes, QStringLiteral("La recherche doit comporter au moins un critère !"),
                   kNoIcon);
    QCOMPARE(Box("CTX_IMMAT")->Text(), before);
    QCOMPARE(ButtonText(), QStringLiteral("Rechercher"));
}

void QuickSearchTest::TheFirstMatchBecomesTheCurrentVehicle() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kSerialNumber), QStringLiteral("VFLJTBF4393544"));
    Press("Cmd_GoCherche");
    QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("KG-361-VP"));
    QCOMPARE(Cell("DBG_Liste", 1, Grid("DBG_Liste")->ActiveRow()), QStringLiteral("KG-361-VP"));
    QCOMPARE(ButtonText(), QStringLiteral("Suivant"));
    QVERIFY(program_->boxes.Shown().empty());
}

void QuickSearchTest::TheNextClickGoesOn() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kEnergy), QStringLiteral("Hybride"));
    QStringList found;
    for (int click = 0; click < 4; ++click) {
        Press("Cmd_GoCherche");
        QCOMPARE(FieldOfCurrent(kEnergy), QStringLiteral("Hybride"));
        found.append(Box("CTX_IMMAT")->Text());
    }
    QStringList inOrder = found;
    inOrder.removeDuplicates();
    QCOMPARE(inOrder.size(), 4);
    QVERIFY(program_->boxes.Shown().empty());
}

void QuickSearchTest::BehindTheLastMatchThereIsNone() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kSerialNumber), QStringLiteral("VFLJTBF4393544"));
    Press("Cmd_GoCherche");
    Press("Cmd_GoCherche");
    CompareOnlyBox(program_->boxes, kNotFound, kNoIcon);
    QCOMPARE(ButtonText(), QStringLiteral("Suivant"));
    QCOMPARE(Box("CTX_IMMAT")->Text(), QStringLiteral("KG-361-VP"));
}

void QuickSearchTest::AChangeInAnyBoxStartsAnew() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kEnergy), QStringLiteral("Hybride"));
    Press("Cmd_GoCherche");
    const QString first = Box("CTX_IMMAT")->Text();
    Press("Cmd_GoCherche");
    QVERIFY(Box("CTX_IMMAT")->Text() != first);
    QVERIFY(VisibleBoxes().size() > 5);
    for (forms::TextBox* const box : VisibleBoxes()) {
        forms::SetFocus(box);
        PressKey(Qt::Key_End);
        QTest::keyClicks(box, QStringLiteral("x"));
        QCOMPARE(ButtonText(), QStringLiteral("Rechercher"));
        PressKey(Qt::Key_Backspace);
        Press("Cmd_GoCherche");
        QCOMPARE(Box("CTX_IMMAT")->Text(), first);
        QCOMPARE(ButtonText(), QStringLiteral("Suivant"));
    }
}

void QuickSearchTest::SeveralBoxesMustAllMatch() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kEnergy), QStringLiteral("Hybride"));
    TypeOver(SearchBox(kPower), QStringLiteral("9 chevaux"));
    Press("Cmd_GoCherche");
    QCOMPARE(FieldOfCurrent(kEnergy), QStringLiteral("Hybride"));
    QCOMPARE(FieldOfCurrent(kPower), QStringLiteral("9"));
    QCOMPARE(ButtonText(), QStringLiteral("Suivant"));
}

void QuickSearchTest::AnotherTextOfTheButtonMovesNothing() {
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kEnergy), QStringLiteral("Hybride"));
    Press("Cmd_GoCherche");
    const QString found = Box("CTX_IMMAT")->Text();
    Button("Cmd_GoCherche")->setText(QStringLiteral("Autre"));
    Press("Cmd_GoCherche");
    QCOMPARE(Box("CTX_IMMAT")->Text(), found);
    QCOMPARE(ButtonText(), QStringLiteral("Suivant"));
}

void QuickSearchTest::ASearchForADateEndsTheProgram_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("error");
    QTest::newRow("no date") << QStringLiteral("hier") << 3077;
    // The fields are texts, which are not compared with days.
    QTest::newRow("a date") << QStringLiteral("03/04/2026") << 3464;
}

void QuickSearchTest::ASearchForADateEndsTheProgram() {
    QFETCH(const QString, typed);
    QFETCH(const int, error);
    program_.reset();
    RunningProgram program;
    SetField(kDataFile, u"TPAR", u"TPAR_Ver = '9.5'", u"TPAR_AFFUSER3_TYP", u"D");
    const int endsBefore = forms::CatchEndOfProcess(true);
    program.OpenVehicles();
    support::BoxAnswerer boxes;
    Form().OpenQuickSearch();
    TypeOver(SearchBox(kSerialNumber), typed);
    Press("Cmd_GoCherche");
    QCOMPARE(forms::CatchEndOfProcess(true), endsBefore + 1);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    QCOMPARE(boxes.Shown().front().icon, QStringLiteral("erreur"));
    QVERIFY2(boxes.Shown().front().text.startsWith(QStringLiteral("Erreur d'exécution %1").arg(error)),
             qPrintable(boxes.Shown().front().text));
}

void QuickSearchTest::EnterMovesOn() {
    Form().OpenQuickSearch();
    PressKey(Qt::Key_Return);
    QCOMPARE(forms::Screen::ActiveControl(), SearchBox(kEnergy));
    QCOMPARE(SearchBox(kSerialNumber)->Text(), QString());
}

void QuickSearchTest::EnterIsSwallowed() {
    Form().OpenQuickSearch();
    const QSignalSpy entered(SearchBox(kSerialNumber), &QLineEdit::returnPressed);
    PressKey(Qt::Key_Return);
    QCOMPARE(entered.count(), 0);
}

void QuickSearchTest::TheFrameOpensInFront() {
    Form().OpenQuickSearch();
    QVERIFY(InFront("Frm_ChercheVeh", "DBG_Liste"));
    Grid("DBG_Liste")->raise();
    Form().OpenQuickSearch();
    QVERIFY(InFront("Frm_ChercheVeh", "DBG_Liste"));
}

void QuickSearchTest::ItsButtonClosesTheFrame() {
    Form().OpenQuickSearch();
    Press("Cmd_FinCherche");
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void QuickSearchTest::EscapeClosesTheFrame_data() {
    QTest::addColumn<QString>("control");
    for (const char* control : {"CTX_USERCHER_3", "Cmd_GoCherche", "Cmd_FinCherche"}) {
        QTest::newRow(control) << QString::fromLatin1(control);
    }
}

void QuickSearchTest::EscapeClosesTheFrame() {
    QFETCH(const QString, control);
    Form().OpenQuickSearch();
    forms::SetFocus(Control<QWidget>(control.toLatin1().constData()));
    PressKey(Qt::Key_Escape);
    QVERIFY(!FrameShown());
    QCOMPARE(forms::Screen::ActiveControl(), Grid("DBG_Liste"));
}

void QuickSearchTest::TheListsOwnSearchStandsReadyToo() {
    GoToColumn(*Vehicles().grid, 2);
    bool isSearch = false;
    QVERIFY(InDialog([] { Form().OpenListSearch(); },
                     [&] { isSearch = forms::IsLoaded<listtools::FCHERCHE>(); }));
    QVERIFY(isSearch);
    QCOMPARE(listtools::TheListToolContext().FieldName, QStringLiteral("TVEH_MARQUE"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    QuickSearchTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "quick_search_test.moc"
