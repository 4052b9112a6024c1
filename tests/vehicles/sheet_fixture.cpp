#include "sheet_fixture.h"

#include <fstream>

#include <forms/strings.h>
#include <reports/f_rpt.h>

namespace quardele::tests {

using reports::TheReportRequest;

void SetVehicle(const QString& registration, const char16_t* field, const QString& value) {
    SetField(kDataFile, u"TVEH", forms::ToText(QStringLiteral("TVEH_IMMAT = '%1'").arg(registration)), field,
             basic::Variant(forms::ToText(value)));
}

void SetParameter(int number, const char* suffix, const basic::Variant& value) {
    const QString field = QStringLiteral("TPAR_AFFUSER%1_%2").arg(number).arg(QLatin1StringView(suffix));
    SetField(kDataFile, u"TPAR", u"TPAR_Ver = '9.5'", forms::ToText(field), value);
}

void SetLabel(int number, const QString& label) {
    SetParameter(number, "LIB", basic::Variant(forms::ToText(label)));
}

QList<int> SlotsInUse() {
    QList<int> used;
    for (int slot = 1; slot <= 60; ++slot) {
        if (!TheReportRequest().FormulaText(slot).isEmpty()) {
            used.append(slot);
        }
    }
    return used;
}

/// Nobody answers there.
void HidePrinters() {
    qputenv("CUPS_SERVER", "127.0.0.1:9");
}

void SheetFixture::StartProgram() {
    program_ = std::make_unique<RunningProgram>();
    boxes_ = std::make_unique<support::BoxAnswerer>();
    watcher_ = {};
    TheReportRequest() = {};
}

void SheetFixture::EndProgram() {
    forms::App::SetPathForTests(QString());
    boxes_.reset();
    program_.reset();
}

void SheetFixture::Open(const QString& registration) {
    program_->OpenVehicles();
    OpenRecordOf(registration);
}

void SheetFixture::PlaceReport(const QByteArray& bytes) const {
    forms::App::SetPathForTests(QStringLiteral("C:\\QUARDELE\\VEH"));
    std::ofstream(program_->Files().File("VEH/IMPVEH.RPT"), std::ios::binary) << bytes.toStdString();
}

void SheetFixture::ExpectOnlyBoxes(const QStringList& texts) {
    QCOMPARE(TakeTexts(*boxes_), texts.join(u'|'));
}

void SheetFixture::ExpectFailure(const QString& beginning) {
    QVERIFY2(!watcher_.Watch([] { Press(kPreview); }), "the preview stood there");
    QCOMPARE(boxes_->Shown().size(), std::size_t{2});
    QCOMPARE(boxes_->Shown().front().text, kConfirmation);
    const support::ShownBox box = boxes_->Shown().back();
    QCOMPARE(box.text.left(beginning.size()), beginning);
    QCOMPARE(box.icon, kNoIcon);
    QCOMPARE(box.button, QStringLiteral("OK"));
    QVERIFY(!forms::IsLoaded<reports::F_RPT>());
    QVERIFY(TheReportRequest().ReportFile.isEmpty());
    QVERIFY(TheReportRequest().SelectionFormula.isEmpty());
    QCOMPARE(SlotsInUse(), QList<int>());
    boxes_->TakeTexts();
}

}  // namespace quardele::tests
