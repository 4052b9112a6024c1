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
        QVERIFY(!form_->Show());
        QVERIFY(form_->boxes.Shown().empty());
        QVERIFY(!forms::IsLoaded<F_RPT>());
    }

    void TheOperatorIsAskedForAConfirmation() {
        QVERIFY(form_->Show());
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{1});
        QCOMPARE(form_->boxes.Shown()[0].text, QStringLiteral("Confirmation"));
        QCOMPARE(form_->boxes.Shown()[0].button, QStringLiteral("Oui"));
    }

    void TheQuestionIsTranslated() {
        const QStringList question{QStringLiteral("[Confirmation]")};
        support::RaiseMarksFor(question, MakeTranslations());
        QVERIFY(form_->Show());
        QCOMPARE(support::TakeWithoutAccents(form_->boxes), question);
    }

    void NoUnloadsTheFormAndEmptiesTheRequest() {
        TheReportRequest().SelectionFormula = QStringLiteral("false");
        form_->boxes.AnswerNo();
        QVERIFY(!form_->Show());
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
        support::RaiseTranslation({{u"Liste", u"List"}, {u"Parc", u"Fleet"}}, MakeTranslations());
        TheReportRequest().FormulaName(1) = QStringLiteral("{@SUITE}");
        TheReportRequest().FormulaText(1) = QStringLiteral("\"Liste\" & '!'");
        QVERIFY(form_->Show([](F_RPT& form) {
            QCOMPARE(ReportForm::Pages(form).value(0).section(u' ', 0, 3),
                     QStringLiteral("Fleet List List Liste!"));
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

    void UnloadEmptiesTheRequestButForNamesAndMode() {
        ReportRequest& request = TheReportRequest();
        request.SelectionFormula = QStringLiteral("true");
        request.OutputMode = 0;
        request.TableLocation(6) = OtherData();
        request.TableName(6) = QStringLiteral("T");
        request.FormulaText(60) = QStringLiteral("1");
        request.FormulaName(60) = QStringLiteral("{@F}");
        request.SortField(0) = QStringLiteral("zéro");
        request.SortField(6) = QStringLiteral("KM");
        QVERIFY(form_->Show());
        QVERIFY(request.ReportFile.isEmpty() && request.SelectionFormula.isEmpty());
        QVERIFY(request.TableLocation(6).isEmpty() && request.FormulaText(60).isEmpty() &&
                request.SortField(6).isEmpty());
        QCOMPARE(request.TableName(6), QStringLiteral("T"));
        QCOMPARE(request.FormulaName(60), QStringLiteral("{@F}"));
        QCOMPARE(request.SortField(0), QStringLiteral("zéro"));
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
            forms::Instance<OtherForm>().Show();
            forms::Instance<OtherForm>().Unload();
            after = form.CRViewer91->ReportSource();
        }));
        QCOMPARE(form_->boxes.Shown().size(), std::size_t{2});
        QVERIFY(before != after);
    }

    void EscapeClosesTheForm() {
        QVERIFY(form_->Show([](F_RPT& form) {
            QTest::keyClick(form.CRViewer91->focusProxy(), Qt::Key_Escape);
            QVERIFY(!forms::IsLoaded<F_RPT>());
        }));
    }

 private:
    QString OtherData() {
        form_->folder.MakeData(
            QStringLiteral("AUTRE.MDB"),
            {QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20), MARQUE TEXT(20), KM LONG)"),
             QStringLiteral("INSERT INTO TVEH VALUES ('AUTRE', 'x', 1)")});
        return form_->folder.WindowsPath(QStringLiteral("AUTRE.MDB"));
    }

    /// Beside the program there is a table without rows.
    basic::Text MakeTranslations() {
        const QString file = QStringLiteral("TRAD.MDB");
        form_->folder.MakeData(
            file,
            {QStringLiteral("CREATE TABLE TTRAD (T_ABREGE TEXT(20), T_VALEUR TEXT(255), t_trad TEXT(255))"),
             QStringLiteral("CREATE INDEX T_ABREGE ON TTRAD (T_ABREGE)")});
        return forms::ToText(form_->folder.WindowsPath(file));
    }

    std::unique_ptr<ReportForm> form_;
};

}  // namespace quardele::reports

int main(int argc, char* argv[]) {
    return quardele::reports::test::Run<quardele::reports::StepsTest>(argc, argv);
}

#include "steps_test.moc"
