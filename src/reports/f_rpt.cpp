#include <reports/f_rpt.h>

#include <algorithm>

#include <forms/control.h>
#include <forms/events.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <forms/strings.h>
#include <reports/report_request.h>
#include <services/translation.h>

#include "literals.h"
#include "ui_f_rpt.h"

namespace quardele::reports {

using services::TRAD;

namespace {

constexpr int kKeyEscape = 27;
constexpr int kNormalPointer = 0;

enum OutputModes { kView = 0, kPrint = 1, kPrintAfterSetup = 2 };

}  // namespace

F_RPT::F_RPT() : Form(QStringLiteral("F_RPT"), forms::FormKind::Dialog) {
    Ui::F_RPT layout;
    layout.setupUi(Surface());
    CRViewer91 = layout.CRViewer91;
    forms::On(CRViewer91, &engine::ReportViewer::TextNotFound, this, [](const QString& text) {
        forms::MsgBox(TRAD(QStringLiteral("« %1 » ne se trouve pas dans l'état.")).arg(text),
                      forms::BoxButtons::Ok, forms::BoxIcon::Information);
    });
}

F_RPT::~F_RPT() = default;

void F_RPT::Form_Load() {
    services::TranslateForm(*this);
}

/// Texts are translated before the caller's own come in: those stand as they are.
void F_RPT::Form_Activate() {
    forms::Screen::SetMousePointer(kNormalPointer);
    if (TheReportRequest().ReportFile.isEmpty()) {
        Unload();
        return;
    }
    if (forms::MsgBox(TRAD(QStringLiteral("Confirmation")), forms::BoxButtons::YesNo) ==
        forms::BoxAnswer::No) {
        Unload();
        return;
    }
    forms::SetWidth(CRViewer91, ScaleWidth());
    forms::SetHeight(CRViewer91, ScaleHeight());
    CRViewer91->Zoom(engine::ReportViewer::kFitWidth);
    OpenReport();
    CRViewer91->SetReportSource(report_);
    converter_ = std::make_unique<services::CharsetConverter>();
    converter_->SetSourceCharset(QStringLiteral("utf-8"));
    TranslateTexts();
    TranslateFormulas();
    SetTableLocations();
    SetFormulas();
    if (!TheReportRequest().SelectionFormula.isEmpty()) {
        report_->SetRecordSelectionFormula(TheReportRequest().SelectionFormula);
    }
    SetSortFields();
    Output();
}

void F_RPT::OpenReport() {
    if (application_ == nullptr) {
        application_ = std::make_unique<engine::Application>();
    }
    report_ = application_->OpenReport(forms::App::Path() + u'\\' + TheReportRequest().ReportFile);
}

void F_RPT::TranslateTexts() {
    for (const auto& section : report_->Sections()) {
        for (const auto& object : section->ReportObjects()) {
            if (object->Kind() != engine::ObjectKind::Text) {
                continue;
            }
            auto& text = static_cast<engine::TextObject&>(*object);
            text.Font().name = services::Translation().TranslationFont;
            text.Font().charset = services::Translation().TranslationCharset;
            text.SetText(TRAD(text.Text(), services::Plain));
        }
    }
}

void F_RPT::TranslateFormulas() {
    const auto translate = [](const basic::Text& literal) {
        return forms::ToText(TRAD(forms::ToQString(literal)));
    };
    for (const auto& formula : report_->FormulaFields()) {
        if (formula->Kind() == engine::FieldKind::Formula) {
            const basic::Text translated = WithTranslatedLiterals(forms::ToText(formula->Text()), translate);
            if (translated != forms::ToText(formula->Text())) {
                formula->SetText(forms::ToQString(translated));
            }
        }
    }
}

void F_RPT::SetTableLocations() {
    const ReportRequest& request = TheReportRequest();
    const engine::Collection<engine::Table>& tables = report_->Database().Tables();
    for (int i = 1; i <= 6; ++i) {
        const QString& location = request.TableLocation(i);
        const QString& name = request.TableName(i);
        if (location.isEmpty()) {
            continue;
        }
        for (const auto& table : tables) {
            if (!name.isEmpty() && table->Name() == name) {
                table->SetLocation(location);
            }
        }
        if (name.isEmpty() && i <= tables.Count()) {
            tables.Item(i).SetLocation(location);
        }
    }
}

void F_RPT::SetFormulas() {
    const ReportRequest& request = TheReportRequest();
    const engine::Collection<engine::FormulaField>& formulas = report_->FormulaFields();
    for (int i = 1; i <= 60; ++i) {
        const QString& text = request.FormulaText(i);
        const QString& name = request.FormulaName(i);
        if (text.isEmpty()) {
            continue;
        }
        if (name.isEmpty()) {
            formulas.Item(i).SetText(text);
            continue;
        }
        const auto named = std::find_if(formulas.begin(), formulas.end(),
                                        [&name](const auto& formula) { return formula->Name() == name; });
        if (named != formulas.end()) {
            (*named)->SetText(text);
        }
    }
}

/// At most one field of each table for each name.
void F_RPT::SetSortFields() {
    for (int i = 1; i <= 6; ++i) {
        const QString name = TheReportRequest().SortField(i).toUpper();
        if (name.isEmpty()) {
            continue;
        }
        for (const auto& table : report_->Database().Tables()) {
            const engine::Collection<engine::DatabaseField> fields = table->Fields();
            const auto found = std::find_if(fields.begin(), fields.end(), [&name](const auto& field) {
                return field->Name().toUpper() == name;
            });
            if (found != fields.end()) {
                report_->RecordSortFields().Add(**found, engine::SortDirection::Ascending);
            }
        }
    }
}

void F_RPT::Output() {
    switch (TheReportRequest().OutputMode) {
        case kView:
            CRViewer91->ViewReport();
            break;
        case kPrint:
            report_->PrintOut(false);
            Unload();
            break;
        case kPrintAfterSetup:
            report_->PrinterSetup(Window());
            report_->PrintOut(true);
            Unload();
            break;
        default:
            break;
    }
}

void F_RPT::Form_KeyDown(int& keyCode, int shift) {
    if (keyCode == kKeyEscape && shift == 0) {
        keyCode = 0;
        Unload();
    }
}

/// Names and mode stay.
void F_RPT::Form_Unload(bool& /*cancel*/) {
    ReportRequest& request = TheReportRequest();
    request.ReportFile.clear();
    request.SelectionFormula.clear();
    request.TableLocation = {};
    request.FormulaText = {};
    for (int i = 1; i <= 6; ++i) {
        request.SortField(i).clear();
    }
    CRViewer91->SetReportSource(nullptr);
    report_.reset();
}

}  // namespace quardele::reports
