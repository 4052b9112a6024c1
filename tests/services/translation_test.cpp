// Translation of texts and forms, with the switch off as in this edition and raised as in a translated one.
#include <QHeaderView>
#include <QMainWindow>
#include <QTest>

#include <forms/controls.h>
#include <forms/grid.h>
#include <forms/runtime.h>
#include <services/translation.h>
#include <support/boxes.h>
#include <support/installation.h>

using namespace quardele;
using services::TRAD;

namespace {

const QString kEmptySelection = QStringLiteral("Sélection vide.");
const QString kEmptySelectionCzech = QStringLiteral("Výběr je prázdný.");

class TranslatedForm : public forms::Form {
    Q_OBJECT
 public:
    TranslatedForm() : Form(QStringLiteral("TRADUITE"), forms::FormKind::Dialog) {
        Surface()->resize(400, 300);
        Surface()->setWindowTitle(QStringLiteral("Confirmation"));
        label = new forms::Label(Surface());
        label->SetCaption(kEmptySelection);
        button = new forms::Button(Surface());
        button->setToolTip(QStringLiteral("Confirmation"));
        button->setText(QStringLiteral("Confirmation"));
        box = new forms::TextBox(Surface());
        box->SetText(kEmptySelection);
        box->setToolTip(kEmptySelection);
        forms::SetTag(box, kEmptySelection);
        frame = new forms::Frame(Surface());
        frame->SetCaption(kEmptySelection);
        tabs = new forms::TabControl(Surface());
        tabs->addTab(new QWidget, QStringLiteral("Confirmation"));
        grid = new forms::Grid(Surface());
        grid->SetColumnLines({QStringLiteral("Confirmation||10|text"), QStringLiteral("Code||10|text")});
        for (QWidget* control : std::initializer_list<QWidget*>{label, button, box, frame, tabs, grid}) {
            control->setObjectName(QString::fromLatin1(control->metaObject()->className()));
        }
        SetTag(kEmptySelection);
    }

    forms::Label* label;
    forms::Button* button;
    forms::TextBox* box;
    forms::Frame* frame;
    forms::TabControl* tabs;
    forms::Grid* grid;
};

QString Heading(forms::Grid& grid, int column) {
    grid.SetRow(0);
    grid.SetCol(column);
    return grid.Text();
}

}  // namespace

class TranslationTest : public QObject {
    Q_OBJECT

 private slots:
    void init();
    void cleanup();
    void WithTheSwitchOffATextComesBackAsItWent();
    void WithTheSwitchOffNoTableIsNeeded();
    void ATextOfTheTableIsTranslated();
    void ATextThatTheTableLacksComesBack_data();
    void ATextThatTheTableLacksComesBack();
    void BlanksAroundATextStay();
    void ATextOfBlanksIsLookedUpAsTheEmptyText();
    void CaseDoesNotMatter();
    void TextsThatShareTheirFirstTwentyCharactersAreToldApart();
    void ALongTextIsFoundByItsWhole();
    void PlainLeavesTheTranslationAsItIsStored();
    void AFailureIsShownAndGivesTheTextBack();
    void WithTheSwitchOffAFormStaysFrench();
    void AFormIsTranslatedControlByControl();
    void AFormTakesTheFontOfTheTranslation();

 private:
    void RaiseSwitch();
    void SetTranslation(basic::TextView text, basic::TextView translation);
    std::unique_ptr<support::Installation> installation_;
};

void TranslationTest::init() {
    installation_ = std::make_unique<support::Installation>();
}

void TranslationTest::cleanup() {
    if (forms::IsLoaded<TranslatedForm>()) {
        forms::Instance<TranslatedForm>().Unload();
    }
    services::Translation() = {};
    installation_.reset();
}

/// What the start-up of a translated edition does.
void TranslationTest::RaiseSwitch() {
    const auto database =
        dao::DBEngine::Instance().Workspaces(0).OpenDatabase(u"C:\\QUARDELE\\DATA\\BDTRAD.MDB");
    services::TranslationSettings& settings = services::Translation();
    settings.TranslationTable = database->OpenRecordset(u"TTRAD", dao::RecordsetType::Table);
    settings.TranslationTable->SetIndex(u"T_ABREGE");
    settings.TranslationOn = true;
}

void TranslationTest::SetTranslation(basic::TextView text, basic::TextView translation) {
    dao::Recordset& table = *services::Translation().TranslationTable;
    table.Seek(u"=", {basic::Left(text, 20)});
    QVERIFY(!table.NoMatch());
    table.Edit();
    table.SetValue(u"t_trad", translation);
    table.Update();
}

void TranslationTest::WithTheSwitchOffATextComesBackAsItWent() {
    QCOMPARE(TRAD(QStringLiteral("  Sélection vide. ")), QStringLiteral("  Sélection vide. "));
    QCOMPARE(TRAD(kEmptySelection, services::Plain), kEmptySelection);
}

void TranslationTest::WithTheSwitchOffNoTableIsNeeded() {
    support::BoxAnswerer boxes;
    QCOMPARE(services::Translation().TranslationTable, nullptr);
    QCOMPARE(TRAD(kEmptySelection), kEmptySelection);
    QVERIFY(boxes.Shown().empty());
}

void TranslationTest::ATextOfTheTableIsTranslated() {
    RaiseSwitch();
    QCOMPARE(TRAD(kEmptySelection), kEmptySelectionCzech);
    QCOMPARE(TRAD(QStringLiteral("Confirmation")), QStringLiteral("Potvrzení"));
}

void TranslationTest::ATextThatTheTableLacksComesBack_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("before the first row") << "A";
    QTest::newRow("behind the last row") << "Zone";
    QTest::newRow("between rows") << "Bordereau";
    QTest::newRow("same key, another text") << "Enregistrez ou annulez demain";
    QTest::newRow("start of a text of the table") << "Sélection";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("empty") << "";
}

void TranslationTest::ATextThatTheTableLacksComesBack() {
    QFETCH(const QString, text);
    RaiseSwitch();
    support::BoxAnswerer boxes;
    QCOMPARE(TRAD(text), text);
    QVERIFY(boxes.Shown().empty());
}

void TranslationTest::BlanksAroundATextStay() {
    RaiseSwitch();
    QCOMPARE(TRAD(QStringLiteral("  Sélection vide. ")), QStringLiteral("  Výběr je prázdný. "));
}

/// Its blanks stand before and behind the translation, each time all of them.
void TranslationTest::ATextOfBlanksIsLookedUpAsTheEmptyText() {
    RaiseSwitch();
    dao::Recordset& table = *services::Translation().TranslationTable;
    table.Seek(u">=", {basic::Text()});
    QVERIFY(!table.NoMatch());
    table.Edit();
    table.SetValue(u"T_VALEUR", basic::Null{});
    table.SetValue(u"t_trad", basic::Text(u"nic"));
    table.Update();
    QCOMPARE(TRAD(QStringLiteral("  ")), QStringLiteral("  nic  "));
    QCOMPARE(TRAD(QString()), QStringLiteral("nic"));
}

void TranslationTest::CaseDoesNotMatter() {
    RaiseSwitch();
    QCOMPARE(TRAD(QStringLiteral("CONFIRMATION")), QStringLiteral("Potvrzení"));
}

void TranslationTest::TextsThatShareTheirFirstTwentyCharactersAreToldApart() {
    RaiseSwitch();
    QCOMPARE(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie")),
             QStringLiteral("Nejprve uložte nebo zrušte zadání"));
    QCOMPARE(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie !")),
             QStringLiteral("Nejprve uložte nebo zrušte zadání!"));
}

void TranslationTest::ALongTextIsFoundByItsWhole() {
    RaiseSwitch();
    QCOMPARE(TRAD(QStringLiteral("Aucune relance à effectuer")), QStringLiteral("Žádné upomínky"));
}

void TranslationTest::PlainLeavesTheTranslationAsItIsStored() {
    RaiseSwitch();
    // A letter that the Central European character set lacks.
    SetTranslation(u"Confirmation", u"Да č");
    QCOMPARE(TRAD(QStringLiteral("Confirmation"), services::Plain), QStringLiteral("Да č"));
    QCOMPARE(TRAD(QStringLiteral("Confirmation")), QStringLiteral("?? č"));
}

void TranslationTest::AFailureIsShownAndGivesTheTextBack() {
    services::Translation().TranslationOn = true;
    support::BoxAnswerer boxes;
    QCOMPARE(TRAD(kEmptySelection), kEmptySelection);
    const std::vector<QString> texts = boxes.TakeTexts();
    QCOMPARE(texts.size(), std::size_t{1});
    QVERIFY2(texts.front().startsWith(QStringLiteral("Proc. TRAD : ")), qPrintable(texts.front()));
}

void TranslationTest::WithTheSwitchOffAFormStaysFrench() {
    auto& form = forms::Instance<TranslatedForm>();
    services::TranslateForm(form);
    QCOMPARE(form.Caption(), QStringLiteral("Confirmation"));
    QCOMPARE(form.label->Caption(), kEmptySelection);
}

void TranslationTest::AFormIsTranslatedControlByControl() {
    auto& form = forms::Instance<TranslatedForm>();
    RaiseSwitch();
    services::TranslateForm(form);
    QCOMPARE(form.Caption(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.label->Caption(), kEmptySelectionCzech);
    QCOMPARE(form.button->text(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.button->toolTip(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.box->toolTip(), kEmptySelectionCzech);
    QCOMPARE(forms::Tag(form.box), kEmptySelectionCzech);
    QCOMPARE(form.frame->Caption(), kEmptySelectionCzech);
    QCOMPARE(form.tabs->TabCaption(0), QStringLiteral("Potvrzení"));
    QCOMPARE(Heading(*form.grid, 1), QStringLiteral("Potvrzení"));
    QCOMPARE(Heading(*form.grid, 2), QStringLiteral("Code"));
    // Neither what the operator types nor the form's own mark is a text of the program.
    QCOMPARE(form.box->Text(), kEmptySelection);
    QCOMPARE(form.Tag(), kEmptySelection);
}

void TranslationTest::AFormTakesTheFontOfTheTranslation() {
    auto& form = forms::Instance<TranslatedForm>();
    RaiseSwitch();
    services::Translation().TranslationFont = QStringLiteral("DejaVu Serif");
    services::TranslateForm(form);
    const forms::Grid& grid = *form.grid;
    for (const QWidget* control : std::initializer_list<const QWidget*>{
             form.label, form.button, form.box, form.frame, form.tabs, &grid, grid.horizontalHeader()}) {
        QCOMPARE(control->font().family(), QStringLiteral("DejaVu Serif"));
    }
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TranslationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translation_test.moc"
