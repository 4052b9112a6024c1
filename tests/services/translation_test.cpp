// Translation of texts and forms, with the switch off as in this edition and raised as in a translated one.
#include <QAction>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTabBar>
#include <QTest>

#include <basic/runtime_error.h>
#include <forms/combo.h>
#include <forms/controls.h>
#include <forms/drop_down.h>
#include <forms/grid.h>
#include <forms/mdi_form.h>
#include <forms/option_button.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <services/charset_converter.h>
#include <services/translation.h>
#include <support/boxes.h>
#include <support/installation.h>
#include <support/translation.h>

using namespace quardele;
using services::TRAD;
using support::RaiseTranslation;

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
        button->SetCellTag(kEmptySelection);
        plainButton = new QPushButton(kEmptySelection, Surface());
        plainButton->setToolTip(kEmptySelection);
        option = new forms::OptionButton(Surface());
        option->setText(kEmptySelection);
        option->setToolTip(kEmptySelection);
        check = new forms::CheckBox(Surface());
        check->setText(kEmptySelection);
        check->setToolTip(kEmptySelection);
        list = new forms::DropDown(Surface());
        list->addItem(kEmptySelection);
        list->setToolTip(kEmptySelection);
        columns = new forms::ListCombo(Surface());
        columns->setToolTip(kEmptySelection);
        picture = new forms::PictureBox(Surface());
        picture->setToolTip(kEmptySelection);
        frame = new forms::Frame(Surface());
        frame->SetCaption(kEmptySelection);
        frame->setToolTip(kEmptySelection);
        tabs = new forms::TabControl(Surface());
        tabs->addTab(new QWidget, QStringLiteral("Confirmation"));
        grid = new forms::Grid(Surface());
        grid->SetColumnLines({QStringLiteral("Confirmation||10|text"), QStringLiteral("Code||10|text")});
        grid->SetToolTipText(kEmptySelection);
        grid->SetMaxRows(1);
        for (QWidget* control : std::initializer_list<QWidget*>{
                 label, button, plainButton, option, check, list, columns, picture, box, frame, tabs, grid}) {
            control->setObjectName(QString::fromLatin1(control->metaObject()->className()));
        }
        for (QWidget* control : std::initializer_list<QWidget*>{label, button, plainButton, option, check,
                                                                list, frame, picture, grid}) {
            forms::SetTag(control, kEmptySelection);
        }
        SetTag(kEmptySelection);
    }

    forms::Label* label;
    forms::Button* button;
    QPushButton* plainButton;
    forms::OptionButton* option;
    forms::CheckBox* check;
    forms::DropDown* list;
    forms::ListCombo* columns;
    forms::PictureBox* picture;
    forms::TextBox* box;
    forms::Frame* frame;
    forms::TabControl* tabs;
    forms::Grid* grid;
};

/// A main window with a menu.
class TranslatedMain : public forms::MdiForm {
    Q_OBJECT
 public:
    TranslatedMain() : MdiForm(QStringLiteral("PRINCIPALE")) {
        Window()->setWindowTitle(QStringLiteral("Confirmation"));
        entry = MainWindow()->menuBar()->addAction(kEmptySelection);
        separator = MainWindow()->menuBar()->addSeparator();
        separator->setText(QStringLiteral("-"));
        AdoptLayout();
    }

    QAction* entry;
    QAction* separator;
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
    void NoTextIsKeptFromOneCallToTheNext();
    void BlanksAroundATextStay();
    void ATextOfBlanksIsLookedUpAsTheEmptyText();
    void CaseDoesNotMatter();
    void TextsThatShareTheirFirstTwentyCharactersAreToldApart();
    void ALongTextIsFoundByItsWhole();
    void TheKeyIsTheFirstTwentyCharacters();
    void RowsThatShareAKeyAreReadUntilTheTextIsFound();
    void BehindTheLastRowTheTextComesBack();
    void ARowOfALaterKeyEndsTheSearch();
    void ARowWithoutATextIsReadOver();
    void BytesOfUtf8BecomeCharacters();
    void AFailedConversionLeavesTheTranslationAsItIsStored();
    void PlainLeavesTheTranslationAsItIsStored();
    void AFailureIsShownAndGivesTheTextBack();
    void WithTheSwitchOffAFormStaysFrench();
    void AFormIsTranslatedControlByControl();
    void AFormTakesTheFontOfTheTranslation();
    void WhatTheKindsDoNotNameStaysFrench();
    void AnEmptyTextIsNotLookedUp();
    void AMenuIsTranslatedButForItsLines();

 private:
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
    if (forms::IsLoaded<TranslatedMain>()) {
        forms::Instance<TranslatedMain>().Unload();
    }
    services::Translation() = {};
    services::CharsetConverter::Instance().SetSourceCharset(QStringLiteral("utf-8"));
    installation_.reset();
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
    RaiseTranslation();
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
    RaiseTranslation();
    support::BoxAnswerer boxes;
    QCOMPARE(TRAD(text), text);
    QVERIFY(boxes.Shown().empty());
}

void TranslationTest::NoTextIsKeptFromOneCallToTheNext() {
    RaiseTranslation();
    QCOMPARE(TRAD(QStringLiteral("Confirmation")), QStringLiteral("Potvrzení"));
    SetTranslation(u"Confirmation", u"Potvrdit");
    QCOMPARE(TRAD(QStringLiteral("Confirmation")), QStringLiteral("Potvrdit"));
}

void TranslationTest::BlanksAroundATextStay() {
    RaiseTranslation();
    QCOMPARE(TRAD(QStringLiteral("  Sélection vide. ")), QStringLiteral("  Výběr je prázdný. "));
}

/// Its blanks stand before and behind the translation, each time all of them.
void TranslationTest::ATextOfBlanksIsLookedUpAsTheEmptyText() {
    RaiseTranslation({{basic::Text(), basic::Text(), u"nic"}, {u"Code", u"Code", u"Kód"}});
    QCOMPARE(TRAD(QStringLiteral("  ")), QStringLiteral("  nic  "));
    QCOMPARE(TRAD(QString()), QStringLiteral("nic"));
}

void TranslationTest::CaseDoesNotMatter() {
    RaiseTranslation();
    QCOMPARE(TRAD(QStringLiteral("CONFIRMATION")), QStringLiteral("Potvrzení"));
}

void TranslationTest::TextsThatShareTheirFirstTwentyCharactersAreToldApart() {
    RaiseTranslation();
    QCOMPARE(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie")),
             QStringLiteral("Nejprve uložte nebo zrušte zadání"));
    QCOMPARE(TRAD(QStringLiteral("Enregistrez ou annulez d'abord votre saisie !")),
             QStringLiteral("Nejprve uložte nebo zrušte zadání!"));
}

void TranslationTest::ALongTextIsFoundByItsWhole() {
    RaiseTranslation();
    QCOMPARE(TRAD(QStringLiteral("Aucune relance à effectuer")), QStringLiteral("Žádné upomínky"));
}

void TranslationTest::TheKeyIsTheFirstTwentyCharacters() {
    RaiseTranslation({{u"12345678901234567890", u"123456789012345678901", u"dlouhý"},
                      {u"1234567890123456789", u"1234567890123456789", u"krátký"}});
    QCOMPARE(TRAD(QStringLiteral(" 123456789012345678901")), QStringLiteral(" dlouhý"));
}

void TranslationTest::RowsThatShareAKeyAreReadUntilTheTextIsFound() {
    RaiseTranslation({{u"Enregistrez ou annul", u"Enregistrez ou annulez A", u"a"},
                      {u"Enregistrez ou annul", u"Enregistrez ou annulez B", u"b"},
                      {u"Enregistrez ou annul", u"Enregistrez ou annulez C", u"c"}});
    QCOMPARE(TRAD(QStringLiteral("Enregistrez ou annulez C")), QStringLiteral("c"));
    QCOMPARE(TRAD(QStringLiteral("enregistrez ou annulez b")), QStringLiteral("b"));
}

void TranslationTest::BehindTheLastRowTheTextComesBack() {
    const QString text = QStringLiteral("Enregistrez ou annulez D");
    RaiseTranslation({{u"Enregistrez ou annul", u"Enregistrez ou annulez A", u"a"},
                      {u"Enregistrez ou annul", u"Enregistrez ou annulez B", u"b"}});
    support::BoxAnswerer boxes;
    QCOMPARE(TRAD(text), text);
    QVERIFY(boxes.Shown().empty());
}

/// Even where the text stands further on, under a key that is not its own.
void TranslationTest::ARowOfALaterKeyEndsTheSearch() {
    RaiseTranslation({{u"Code", u"Code postal", u"PSČ"}, {u"Date", u"Code", u"Kód"}});
    QCOMPARE(TRAD(QStringLiteral("Code")), QStringLiteral("Code"));
    // A row of the same key whose text is another one does not.
    RaiseTranslation({{u"Code", u"Code postal", u"PSČ"}, {u"Code", u"Code", u"Kód"}});
    QCOMPARE(TRAD(QStringLiteral("Code")), QStringLiteral("Kód"));
}

void TranslationTest::ARowWithoutATextIsReadOver() {
    RaiseTranslation({{u"Code", basic::Null{}, u"nic"}, {u"Code", u"Code", u"Kód"}});
    QCOMPARE(TRAD(QStringLiteral("Code")), QStringLiteral("Kód"));
    RaiseTranslation({{basic::Null{}, basic::Null{}, u"nic"}});
    QCOMPARE(TRAD(QStringLiteral("  ")), QStringLiteral("  "));
}

void TranslationTest::BytesOfUtf8BecomeCharacters() {
    const QString bytes = QString::fromLatin1(QStringLiteral("Výběr").toUtf8());
    RaiseTranslation({{u"Code", u"Code", forms::ToText(bytes)}});
    QCOMPARE(TRAD(QStringLiteral("Code ")), QStringLiteral("Výběr "));
    QCOMPARE(TRAD(QStringLiteral("Code"), services::Plain), bytes);
}

void TranslationTest::AFailedConversionLeavesTheTranslationAsItIsStored() {
    RaiseTranslation();
    services::CharsetConverter::Instance().SetSourceCharset(QStringLiteral("no-such-charset"));
    SetTranslation(u"Confirmation", u"Potvrdit");
    support::BoxAnswerer boxes;
    QCOMPARE(TRAD(QStringLiteral(" Confirmation")), QStringLiteral(" Potvrdit"));
    QCOMPARE(boxes.TakeTexts(),
             std::vector<QString>{QStringLiteral("Proc. TRAD : ") +
                                  forms::ToQString(basic::DescriptionOf(basic::error::kInvalidCall))});
    // The translation of a form sets the converter right.
    services::TranslateForm(forms::Instance<TranslatedForm>());
    QCOMPARE(services::CharsetConverter::Instance().SourceCharset(), QStringLiteral("utf-8"));
}

void TranslationTest::PlainLeavesTheTranslationAsItIsStored() {
    RaiseTranslation();
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
    RaiseTranslation();
    services::TranslateForm(form);
    QCOMPARE(form.Caption(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.label->Caption(), kEmptySelectionCzech);
    QCOMPARE(form.button->text(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.button->toolTip(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.button->CellTag(), kEmptySelectionCzech);
    QCOMPARE(form.plainButton->text(), kEmptySelectionCzech);
    QCOMPARE(form.plainButton->toolTip(), kEmptySelectionCzech);
    QCOMPARE(form.option->text(), kEmptySelectionCzech);
    QCOMPARE(form.option->toolTip(), kEmptySelectionCzech);
    QCOMPARE(form.check->text(), kEmptySelectionCzech);
    QCOMPARE(form.list->toolTip(), kEmptySelectionCzech);
    QCOMPARE(form.grid->ToolTipText(), kEmptySelectionCzech);
    for (const QWidget* control : std::initializer_list<const QWidget*>{
             form.label, form.button, form.plainButton, form.option, form.check, form.list, form.box}) {
        QCOMPARE(forms::Tag(control), kEmptySelectionCzech);
    }
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
    RaiseTranslation();
    services::Translation().TranslationFont = QStringLiteral("DejaVu Serif");
    services::TranslateForm(form);
    const forms::Grid& grid = *form.grid;
    for (const QWidget* control :
         std::initializer_list<const QWidget*>{form.label, form.button, form.box, form.frame, form.tabs,
                                               form.tabs->tabBar(), &grid, grid.horizontalHeader()}) {
        QCOMPARE(control->font().family(), QStringLiteral("DejaVu Serif"));
    }
}

void TranslationTest::WhatTheKindsDoNotNameStaysFrench() {
    auto& form = forms::Instance<TranslatedForm>();
    form.grid->SetRow(1);
    form.grid->SetCol(1);
    form.grid->SetText(kEmptySelection);
    RaiseTranslation();
    services::TranslateForm(form);
    QCOMPARE(form.check->toolTip(), kEmptySelection);
    QCOMPARE(form.frame->toolTip(), kEmptySelection);
    QCOMPARE(form.columns->toolTip(), kEmptySelection);
    QCOMPARE(form.picture->toolTip(), kEmptySelection);
    QCOMPARE(form.list->itemText(0), kEmptySelection);
    for (const QWidget* control :
         std::initializer_list<const QWidget*>{form.frame, form.picture, form.grid}) {
        QCOMPARE(forms::Tag(control), kEmptySelection);
    }
    form.grid->SetRow(1);
    form.grid->SetCol(1);
    QCOMPARE(form.grid->Text(), kEmptySelection);
}

void TranslationTest::AnEmptyTextIsNotLookedUp() {
    auto& form = forms::Instance<TranslatedForm>();
    form.label->SetCaption(QString());
    form.frame->SetCaption(QString());
    form.label->setToolTip(QString());
    RaiseTranslation({{basic::Text(), basic::Text(), u"nic"}});
    services::TranslateForm(form);
    QCOMPARE(form.label->Caption(), QString());
    QCOMPARE(form.label->toolTip(), QString());
    QCOMPARE(form.frame->Caption(), QString());
}

void TranslationTest::AMenuIsTranslatedButForItsLines() {
    auto& form = forms::Instance<TranslatedMain>();
    RaiseTranslation({{u"-", u"-", u"nic"},
                      {u"Confirmation", u"Confirmation", u"Potvrzení"},
                      {u"Sélection vide.", u"Sélection vide.", u"Výběr je prázdný."}});
    services::TranslateForm(form);
    QCOMPARE(form.Caption(), QStringLiteral("Potvrzení"));
    QCOMPARE(form.entry->text(), kEmptySelectionCzech);
    QCOMPARE(form.separator->text(), QStringLiteral("-"));
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    TranslationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "translation_test.moc"
