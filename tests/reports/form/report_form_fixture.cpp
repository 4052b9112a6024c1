#include "report_form_fixture.h"

#include <QFile>
#include <QLineEdit>
#include <QTimer>

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

void ReportForm::AnswerFileDialog(QFileDialog& dialog) {
    ++pdfAsked_;
    proposedPdf_ = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
    if (pdfPath_.isEmpty()) {
        dialog.reject();
        return;
    }
    auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    name->setText(pdfPath_);
    QTest::keyClick(name, Qt::Key_Return);
}

void ReportForm::Watch(bool& seen, const std::function<void(F_RPT&)>& look) {
    QWidget* const front = QApplication::activeModalWidget();
    if (auto* const dialog = qobject_cast<QFileDialog*>(front)) {
        inFront_ = 0;
        AnswerFileDialog(*dialog);
        return;
    }
    if (seen || !forms::IsLoaded<F_RPT>() || front != forms::Instance<F_RPT>().Window()) {
        inFront_ = 0;
        return;
    }
    // A box that was just answered may still be in its loop.
    constexpr int kCertain = 3;
    if (++inFront_ < kCertain) {
        return;
    }
    seen = true;
    // Out of this handler, so that dialogs that come up meanwhile are seen.
    const auto lookAndClose = [&look] {
        F_RPT& form = forms::Instance<F_RPT>();
        if (look) {
            look(form);
        }
        if (forms::IsLoaded<F_RPT>()) {
            form.Unload();
        }
    };
    QMetaObject::invokeMethod(qApp, lookAndClose, Qt::QueuedConnection);
}

bool ReportForm::Show(const std::function<void(F_RPT&)>& look) {
    bool seen = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] { Watch(seen, look); });
    watch.start(5);
    forms::Instance<F_RPT>().Show(forms::ShowMode::Modal);
    return seen;
}

QStringList ReportForm::Pages(const F_RPT& form) {
    const std::shared_ptr<const engine::Document> document = form.CRViewer91->Shown();
    QStringList pages = document == nullptr ? QStringList() : engine::test::PagesOf(*document);
    return pages.replaceInStrings(QStringLiteral("\n"), QStringLiteral(" "));
}

}  // namespace quardele::reports::test
