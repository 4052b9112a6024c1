// A vehicle's sheet in the running program, and the operator who asks for it.
#pragma once

#include <memory>

#include <QList>

#include <reports/report_request.h>

#include "report_watcher.h"
#include "vehicle_form_fixture.h"

namespace quardele::tests {

inline constexpr const char* kPreview = "Cmd_Imprimer_0";
inline const QString kConfirmation = QStringLiteral("Confirmation");

/// A change of a vehicle before the form reads it.
void SetVehicle(const QString& registration, const char16_t* field, const QString& value);
/// What the site has set for a user field: "LIB", its label, "LNG" or "DEC".
void SetParameter(int number, const char* suffix, const basic::Variant& value);
void SetLabel(int number, const QString& label);

/// The numbers of the request's formulas that have a text.
[[nodiscard]] QList<int> SlotsInUse();

/// Printers of this machine are none of the tests' business: call before the application is made.
void HidePrinters();

/// What the tests of the sheet share: a program of its own for each of them.
class SheetFixture : public QObject {
 protected:
    void StartProgram();
    void EndProgram();

    void Open(const QString& registration);
    /// A report file of the test's own, in the program's folder.
    void PlaceReport(const QByteArray& bytes) const;
    void ExpectOnlyBoxes(const QStringList& texts);
    /// The preview fails with an error that begins so.
    void ExpectFailure(const QString& beginning);

    std::unique_ptr<RunningProgram> program_;
    std::unique_ptr<support::BoxAnswerer> boxes_;
    reports::test::ReportWatcher watcher_;
};

}  // namespace quardele::tests
