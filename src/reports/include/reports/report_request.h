// What a caller asks of the report form.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <QString>

#include <basic/runtime_error.h>

namespace quardele::reports {

/// Texts with numbers from First to Last.
template <int First, int Last>
class NumberedTexts {
 public:
    /// Throws RuntimeError 9 outside the numbers.
    [[nodiscard]] QString& operator()(int number) { return texts_[Place(number)]; }
    [[nodiscard]] const QString& operator()(int number) const { return texts_[Place(number)]; }

 private:
    [[nodiscard]] static std::size_t Place(int number) {
        if (number < First || number > Last) {
            throw basic::RuntimeError(basic::error::kSubscript);
        }
        return static_cast<std::size_t>(number - First);
    }

    std::array<QString, static_cast<std::size_t>(Last - First + 1)> texts_;
};

/// Filled before F_RPT is shown, emptied when it unloads but for the names and the mode. An entry whose value
/// is empty is passed over.
struct ReportRequest {
    /// Name of the report file in the program's folder; empty for nothing to show.
    QString ReportFile;
    /// Data file of a table of the report.
    NumberedTexts<1, 6> TableLocation;
    /// The report's name of that table; empty for the table of that number.
    NumberedTexts<1, 6> TableName;
    /// Condition on the records, as report formulas are written.
    QString SelectionFormula;
    /// Fields to sort by, ascending; 0 is not used.
    NumberedTexts<0, 6> SortField;
    /// Text of a formula of the report.
    NumberedTexts<1, 60> FormulaText;
    /// 0 shows the report, 1 prints it, 2 prints it after the printer's setup; others do neither.
    std::int16_t OutputMode = 0;
    /// Name of that formula with its braces; empty for the formula of that number.
    NumberedTexts<1, 60> FormulaName;
};

[[nodiscard]] ReportRequest& TheReportRequest();

}  // namespace quardele::reports
