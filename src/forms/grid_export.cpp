// A grid in a file of Excel.
#include <basic/paths.h>
#include <basic/runtime_error.h>
#include <forms/grid.h>
#include <forms/strings.h>

#include "grid_private.h"
#include "grid_workbook.h"
#include "save_file.h"

namespace quardele::forms {
namespace {

/// A log that cannot be written has nobody to be told to: the caller learns of the export's failure anyway.
void Log(const QString& logFile, const QString& failure) {
    if (logFile.isEmpty()) {
        return;
    }
    try {
        SaveFile(basic::NativePath(ToText(logFile)), logFile,
                 [&](std::ostream& out) { out << failure.toStdString() << '\n'; });
    } catch (const basic::RuntimeError& error) {
        qWarning("%s", qUtf8Printable(ToQString(error.Description())));
    }
}

}  // namespace

bool Grid::ExportToExcel(const QString& fileName, const QString& sheetName, const QString& logFile) {
    d_->exportFailure.clear();
    d_->notice->TakeBack();
    try {
        model_->FindAllRows();
        const auto book = WorkbookOf(*this, *model_, sheetName);
        SaveFile(basic::NativePath(ToText(fileName)), fileName, [&](std::ostream& out) { book->Write(out); });
        return true;
    } catch (const basic::RuntimeError& error) {
        d_->exportFailure = ToQString(error.Description());
        qWarning("%s", qUtf8Printable(d_->exportFailure));
        d_->notice->Tell(d_->exportFailure);
        Log(logFile, d_->exportFailure);
        return false;
    }
}

QString Grid::ExportFailure() const {
    return d_->exportFailure;
}

}  // namespace quardele::forms
