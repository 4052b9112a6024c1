// The form that shows and prints reports.
#pragma once

#include <memory>

#include <engine/application.h>
#include <engine/report_viewer.h>
#include <forms/form.h>
#include <services/charset_converter.h>

namespace quardele::reports {

/// Shown modally after TheReportRequest() was filled:
///
///   forms::Instance<F_RPT>().Show(forms::ShowMode::Modal);
///
/// Returns when the viewer is closed, printing was started, or the operator declines. What the report engine
/// throws reaches the statement that showed the form, which is then unloaded and the request empty.
class F_RPT : public forms::Form {
    Q_OBJECT
 public:
    F_RPT();
    ~F_RPT() override;

    engine::ReportViewer* CRViewer91 = nullptr;

 protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(bool& cancel) override;
    void Form_KeyDown(int& keyCode, int shift) override;

 private:
    void OpenReport();
    void TranslateTexts();
    void TranslateFormulas();
    void SetTableLocations();
    void SetFormulas();
    void SetSortFields();
    void Output();

    std::unique_ptr<engine::Application> application_;
    std::shared_ptr<engine::Report> report_;
    /// Ready for texts in UTF-8 while a report is open; none comes by now.
    std::unique_ptr<services::CharsetConverter> converter_;
};

}  // namespace quardele::reports
