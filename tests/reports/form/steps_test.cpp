// What the report form does with a request, step by step.
#include <forms/control.h>
#include <forms/strings.h>
#include <services/translation.h>
#include <support/translation.h>

#include "report_form_fixture.h"

namespace quardele::reports {

using test::ReportForm;

namespace {

const QString kAll = QStringLiteral("AA-111-AA BB-222-BB CC-333-CC DD-444-DD EE-555-EE");

/// A form to come back from.
class OtherForm : public forms::Form {
 public:
    OtherForm() : Form(QStringLiteral("OtherForm"), forms::FormKind::Dialog) { Surface()->resize(100, 100); }
};

}  // namespace

class StepsTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        form_ = std::make_unique<ReportForm>();
        form_->Place(QString::fromUtf16(test::kVehicles));
    }
    void cleanup() { form_.reset(); }

    void ARequestWithoutAFileShowsNoBoxAndUnloads() {
        TheReportRequest().ReportFile.clear();
        TheReportRequest().SelectionFormula = QStringLiteral("true");
        TheReportRequest().FormulaText(7) = QStringLiteral("1");
        QVERIFY(!form_->Show());
        QVERIFY(form_->boxes.Shown().empty());
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().SelectionFormula.isEmpty() && TheReportRequest().FormulaText(7).isEmpty());
    }

    void TheOperatorIsAskedForAConfirmation() {
        QVERIFY(form_->Show());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(form_->boxes.Shown()[0].text, QStringLiteral("Confirmation"));
        QCOMPARE(form_->boxes.Shown()[0].button, QStringLiteral("Oui"));
    }

    void TheQuestionIsTranslated() {
        const QStringList question{QStringLiteral("[Confirmation]")};
        support::RaiseMarksFor(question, form_->MakeTranslations());
        QVERIFY(form_->Show());
        QCOMPARE(support::TakeWithoutAccents(form_->boxes), question);
    }

    void NoUnloadsTheFormAndEmptiesTheRequest() {
        TheReportRequest().SelectionFormula = QStringLiteral("false");
        TheReportRequest().ReportFile = QStringLiteral("absent.rpt");
        form_->boxes.AnswerNo();
        QVERIFY(!form_->Show());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
        QVERIFY(!forms::IsLoaded<F_RPT>());
        QVERIFY(TheReportRequest().ReportFile.isEmpty());
        QVERIFY(TheReportRequest().SelectionFormula.isEmpty());
    }

    void ThePointerIsNormalWhenTheBoxIsShown() {
        forms::Screen::SetMousePointer(11);
        int pointer = -1;
        form_->boxes.LookAtBoxes([&] { pointer = forms::Screen::MousePointer(); });
        form_->Show();
        QCOMPARE(pointer, 0);
    }

    void TheViewerFillsTheFormAndFitsThePagesWidth() {
        QVERIFY(form_->Show([](F_RPT& form) {
            QCOMPARE(forms::Width(form.CRViewer91), form.ScaleWidth());
            QCOMPARE(forms::Height(form.CRViewer91), form.ScaleHeight());
            QCOMPARE(form.CRViewer91->ZoomLevel(), 1);
            const QSize before = form.CRViewer91->size();
            form.SetWidth(form.Width() + 1500);
            QCOMPARE(form.CRViewer91->size(), before);
        }));
    }

    void TheWidthFitsAgainWhenTheFormIsActivatedAgain() {
        QVERIFY(form_->Show([&](F_RPT& form) {
            form.CRViewer91->Zoom(200);
            ActivateAgain();
            QCOMPARE(form.CRViewer91->ZoomLevel(), 1);
        }));
    }

    void AModeThatShowsNothingLeavesNoPagesOfTheLastActivation() {
        QVERIFY(form_->Show([&](F_RPT& form) {
            TheReportRequest().OutputMode = 3;
            ActivateAgain();
            QVERIFY(form.CRViewer91->Shown() == nullptr);
            QCOMPARE(form.CRViewer91->CurrentPage(), 0);
            QVERIFY(!form.CRViewer91->findChild<QWidget*>(QStringLiteral("Cmd_Imprimer"))->isEnabled());
        }));
    }

    void TheReportIsShown() {
        QVERIFY(form_->Show([](F_RPT& form) {
            QCOMPARE(ReportForm::Pages(form), QStringList(QStringLiteral("Parc Liste Liste suite ") + kAll));
            QCOMPARE(form.CRViewer91->CurrentPage(), 1);
        }));
    }

    void TextsTakeTheTranslationsFontAlsoWhenItIsOff() {
        services::Translation().TranslationFont = QStringLiteral("Liberation Serif");
        services::Translation().TranslationCharset = 238;
        QVERIFY(form_->Show([](F_RPT& form) {
            const auto objects = form.CRViewer91->ReportSource()->Sections().Item(1).ReportObjects();
            auto& text = dynamic_cast<engine::TextObject&>(objects.Item(1));
            QCOMPARE(text.Font().name, QStringLiteral("Liberation Serif"));
            QCOMPARE(text.Font().charset, 238);
            const auto& field = dynamic_cast<engine::FieldObject&>(objects.Item(2));
            QCOMPARE(field.look.font.name, QString());
        }));
    }

    void WithTheTranslationOnTextsAndLiteralsAreTranslatedButNotWhatTheCallerInjects() {
        support::RaiseTranslation({{u"Liste", u"List"}, {u"Parc", u"Fleet"}}, form_->MakeTranslations());
        TheReportRequest().FormulaName(1) = QStringLiteral("{@SUITE}");
        TheReportRequest().FormulaText(1) = QStringLiteral("\"Liste\" & '!'");
        QVERIFY(form_->Show([](F_RPT& form) {
            QCOMPARE(ReportForm::Pages(form).value(0).section(u' ', 0, 3),
                     QStringLiteral("Fleet List List Liste!"));
        }));
    }

    /// A text keeps letters that no Windows code page of its language has; a literal goes through the
    /// conversion that all other texts go through.
    void TextsAreTranslatedPlainAndLiteralsAsUsual() {
        const QString translation = QStringLiteral("Seña");
        support::RaiseTranslation({{u"Parc", u"Seña"}}, form_->MakeTranslations());
        form_->Place(
            QStringLiteral("<formulas><formula name=\"F\">\"Parc\"</formula></formulas>"
                           "<reportHeader><section><text width=\"4000\">Parc</text><field y=\"400\" "
                           "width=\"4000\" value=\"{@F}\"/></section></reportHeader>"));
        const QString usual = services::TRAD(QStringLiteral("Parc"));
        QVERIFY2(usual != translation, "the conversion does nothing");
        QVERIFY(form_->Show([&](F_RPT& form) {
            QCOMPARE(ReportForm::Pages(form), QStringList(translation + u' ' + usual));
        }));
    }

    void WithTheTranslationOffNoFormulaIsRewritten() {
        QVERIFY(form_->Show([](F_RPT& form) {
            QCOMPARE(form.CRViewer91->ReportSource()->FormulaFields().Item(1).Text(),
                     QStringLiteral("\"Liste\" & ' ' & \"Liste\""));
        }));
    }

    void ATableTakesItsLocationByName() {
        const QString other = OtherData();
        TheReportRequest().TableName(3) = QStringLiteral("TVEH");
        TheReportRequest().TableLocation(3) = other;
        QVERIFY(form_->Show([&](F_RPT& form) {
            QCOMPARE(ReportForm::Pages(form), QStringList(QStringLiteral("Parc Liste Liste suite AUTRE")));
        }));
    }

    void TheNameOfATableIsComparedExactly() {
        TheReportRequest().TableName(1) = QStringLiteral("tveh");
        TheReportRequest().TableLocation(1) = OtherData();
        QVERIFY(form_->Show([](F_RPT& form) { QVERIFY(ReportForm::Pages(form).value(0).endsWith(kAll)); }));
    }

    void ATableTakesItsLocationByPosition() {
        TheReportRequest().TableLocation(1) = OtherData();
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(ReportForm::Pages(form).value(0).endsWith(QStringLiteral("AUTRE")));
        }));
    }

    void ALocationForATableThatTheReportLacksIsSkipped() {
        TheReportRequest().TableLocation(2) = QStringLiteral("Z:\\absent.mdb");
        QVERIFY(form_->Show([](F_RPT& form) { QVERIFY(ReportForm::Pages(form).value(0).endsWith(kAll)); }));
    }

    void FormulasTakeTheirTextsByNameAndByPosition() {
        TheReportRequest().FormulaText(1) = QStringLiteral("'un'");
        TheReportRequest().FormulaName(60) = QStringLiteral("{@SUITE}");
        TheReportRequest().FormulaText(60) = QStringLiteral("'deux'");
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(ReportForm::Pages(form).value(0).startsWith(QStringLiteral("Parc un deux ")));
        }));
    }

    void AFormulaThatTheReportLacksIsSkipped() {
        TheReportRequest().FormulaName(1) = QStringLiteral("{@ABSENTE}");
        TheReportRequest().FormulaText(1) = QStringLiteral("'x'");
        TheReportRequest().FormulaName(2) = QStringLiteral("SUITE");
        TheReportRequest().FormulaText(2) = QStringLiteral("'y'");
        TheReportRequest().FormulaName(3) = QStringLiteral("{@suite}");
        TheReportRequest().FormulaText(3) = QStringLiteral("'z'");
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(ReportForm::Pages(form).value(0).startsWith(QStringLiteral("Parc Liste Liste suite ")));
        }));
    }

    void TheSelectionFormulaSelects() {
        TheReportRequest().SelectionFormula = QStringLiteral("{TVEH.IMMAT}='CC-333-CC'");
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(ReportForm::Pages(form).value(0).endsWith(QStringLiteral("suite CC-333-CC")));
        }));
    }

    void SortFieldsSortAscendingInAnyCaseAndUnknownOnesAreSkipped() {
        form_->Place(QString::fromUtf16(test::kVehicles)
                         .remove(QStringLiteral("<sort><by field=\"{TVEH.IMMAT}\"/></sort>")));
        TheReportRequest().SortField(2) = QStringLiteral("absent");
        TheReportRequest().SortField(3) = QStringLiteral("marque");
        TheReportRequest().SortField(6) = QStringLiteral("Km");
        QVERIFY(form_->Show([](F_RPT& form) {
            QVERIFY(ReportForm::Pages(form).value(0).endsWith(
                QStringLiteral("BB-222-BB CC-333-CC DD-444-DD AA-111-AA EE-555-EE")));
        }));
    }

    void ASortFieldIsAddedForEachTableThatHasItFromTheCallersDataFile() {
        form_->folder.MakeData(QStringLiteral("DEUX.MDB"),
                               {QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20), RANG LONG)"),
                                QStringLiteral("CREATE TABLE TCLI (CODE TEXT(20), RANG LONG)"),
                                QStringLiteral("INSERT INTO TVEH VALUES ('A', 2)"),
                                QStringLiteral("INSERT INTO TVEH VALUES ('B', 1)")});
        form_->Place(
            QStringLiteral("<tables><table name=\"TVEH\"/><table name=\"TCLI\"/><link from=\"{TVEH.IMMAT}\" "
                           "to=\"{TCLI.CODE}\"/></tables><details><section><field width=\"900\" "
                           "value=\"{TVEH.IMMAT}\"/></section></details>"));
        TheReportRequest().TableLocation(1) = form_->folder.WindowsPath(QStringLiteral("DEUX.MDB"));
        TheReportRequest().SortField(3) = QStringLiteral("rang");
        QVERIFY(form_->Show([](F_RPT& form) {
            const engine::SortFields& fields = form.CRViewer91->ReportSource()->RecordSortFields();
            QCOMPARE(fields.Count(), 2);
            QCOMPARE(fields.Item(1).table, QStringLiteral("TVEH"));
            QCOMPARE(fields.Item(2).table, QStringLiteral("TCLI"));
            QCOMPARE(static_cast<int>(fields.Item(2).direction), 0);
            QCOMPARE(ReportForm::Pages(form), QStringList(QStringLiteral("B A")));
        }));
    }

    void ASecondTableTakesItsLocationByPositionAndByName() {
        form_->Place(QStringLiteral("<tables><table name=\"TVEH\"/><table name=\"TCLI\"/></tables>"));
        TheReportRequest().TableLocation(2) = QStringLiteral("Z:\\deux.mdb");
        TheReportRequest().TableName(3) = QStringLiteral("TCLI");
        TheReportRequest().TableName(4) = QStringLiteral("TVEH");
        TheReportRequest().TableLocation(4) = QStringLiteral("Z:\\un.mdb");
        TheReportRequest().OutputMode = 3;
        QVERIFY(form_->Show([](F_RPT& form) {
            const auto& tables = form.CRViewer91->ReportSource()->Database().Tables();
            QCOMPARE(tables.Item(1).Location(), QStringLiteral("Z:\\un.mdb"));
            QCOMPARE(tables.Item(2).Location(), QStringLiteral("Z:\\deux.mdb"));
        }));
    }

    void UnloadEmptiesTheRequestButForNamesAndMode() {
        ReportRequest& request = TheReportRequest();
        request.SelectionFormula = QStringLiteral("true");
        request.OutputMode = 3;
        const QString other = OtherData();
        request.SortField(0) = QStringLiteral("zéro");
        for (int i = 1; i <= 6; ++i) {
            request.TableLocation(i) = other;
            request.TableName(i) = QStringLiteral("T%1").arg(i);
            request.SortField(i) = QStringLiteral("KM");
        }
        for (int i = 1; i <= 60; ++i) {
            request.FormulaText(i) = QStringLiteral("1");
            request.FormulaName(i) = QStringLiteral("{@F%1}").arg(i);
        }
        QVERIFY(form_->Show());
        QVERIFY(request.ReportFile.isEmpty() && request.SelectionFormula.isEmpty());
        QCOMPARE(request.OutputMode, std::int16_t{3});
        QCOMPARE(request.SortField(0), QStringLiteral("zéro"));
        for (int i = 1; i <= 6; ++i) {
            QCOMPARE(request.TableLocation(i), QString());
            QCOMPARE(request.TableName(i), QStringLiteral("T%1").arg(i));
            QCOMPARE(request.SortField(i), QString());
        }
        for (int i = 1; i <= 60; ++i) {
            QCOMPARE(request.FormulaText(i), QString());
            QCOMPARE(request.FormulaName(i), QStringLiteral("{@F%1}").arg(i));
        }
    }

    void TheReportIsReleased() {
        std::weak_ptr<engine::Report> report;
        QVERIFY(form_->Show([&](F_RPT& form) { report = form.CRViewer91->ReportSource(); }));
        QVERIFY(report.expired());
    }

    void BeingActivatedAgainItAsksAndLoadsAgain() {
        std::shared_ptr<engine::Report> before;
        std::shared_ptr<engine::Report> after;
        QVERIFY(form_->Show([&](F_RPT& form) {
            before = form.CRViewer91->ReportSource();
            ActivateAgain();
            after = form.CRViewer91->ReportSource();
        }));
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{2});
        QVERIFY(before != after);
    }

    void EscapeClosesTheForm() {
        QVERIFY(form_->Show([](F_RPT& form) {
            QTest::keyClick(form.CRViewer91->focusProxy(), Qt::Key_Escape);
            QVERIFY(!forms::IsLoaded<F_RPT>());
            QVERIFY(TheReportRequest().ReportFile.isEmpty());
        }));
    }

    void ClosingTheWindowEmptiesTheRequest() {
        QVERIFY(form_->Show([](F_RPT& form) {
            form.Window()->close();
            QVERIFY(!forms::IsLoaded<F_RPT>());
            QVERIFY(TheReportRequest().ReportFile.isEmpty());
        }));
    }

 private:
    static void ActivateAgain() {
        forms::Instance<OtherForm>().Show();
        forms::Instance<OtherForm>().Unload();
    }

    QString OtherData() {
        form_->folder.MakeData(
            QStringLiteral("AUTRE.MDB"),
            {QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20), MARQUE TEXT(20), KM LONG)"),
             QStringLiteral("INSERT INTO TVEH VALUES ('AUTRE', 'x', 1)")});
        return form_->folder.WindowsPath(QStringLiteral("AUTRE.MDB"));
    }

    std::unique_ptr<ReportForm> form_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::StepsTest>(argc, argv);
}

#include "steps_test.moc"
