#include "report_form_fixture.h"

#include <QFile>

#include <forms/strings.h>
#include <services/translation.h>

namespace quardele::reports::test {

const char16_t* const kVehicles =
    u"<sort><by field=\"{TVEH.IMMAT}\"/></sort>"
    u"<formulas><formula name=\"TITRE\">\"Liste\" &amp; ' ' &amp; \"Liste\"</formula><formula "
    u"name=\"SUITE\">'suite'</formula></formulas>"
    u"<pageHeader><section height=\"600\"><text width=\"4000\" height=\"300\" font=\"Noto Sans\">Parc</text>"
    u"<field y=\"300\" width=\"4000\" height=\"300\" value=\"{@TITRE} &amp; ' ' &amp; "
    u"{@SUITE}\"/></section></pageHeader>"
    u"<details><section height=\"300\"><field width=\"4000\" height=\"300\" "
    u"value=\"{TVEH.IMMAT}\"/></section></details>";

ReportForm::ReportForm()
    : reportPath_(QCoreApplication::applicationDirPath() +
                  QStringLiteral("/ESSAI-%1.RPT").arg(QCoreApplication::applicationPid())) {
    folder.MakeVehicles();
    TheReportRequest() = {};
}

ReportForm::~ReportForm() {
    QFile::remove(reportPath_);
    services::Translation() = {};
    TheReportRequest() = {};
}

void ReportForm::Place(const QString& elements) {
    PlaceBytes(folder.Xml(elements).toUtf8());
}

void ReportForm::PlaceBytes(const QByteArray& bytes) {
    QFile file(reportPath_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
    TheReportRequest().ReportFile = QStringLiteral("ESSAI-%1.RPT").arg(QCoreApplication::applicationPid());
}

basic::Text ReportForm::MakeTranslations() const {
    const QString name = QStringLiteral("TRAD.MDB");
    folder.MakeData(name, {QStringLiteral("CREATE TABLE TTRAD (T_ABREGE TEXT(20), T_VALEUR TEXT(255), "
                                          "t_trad TEXT(255))"),
                           QStringLiteral("CREATE INDEX T_ABREGE ON TTRAD (T_ABREGE)")});
    return forms::ToText(folder.WindowsPath(name));
}

bool ReportForm::Show(const std::function<void(F_RPT&)>& look) {
    return watcher_.Watch([] { forms::Instance<F_RPT>().Show(forms::ShowMode::Modal); }, look);
}

}  // namespace quardele::reports::test
