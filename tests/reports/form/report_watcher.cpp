#include "report_watcher.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "report_folder.h"

namespace quardele::reports::test {

void ReportWatcher::AnswerFileDialog(QFileDialog& dialog) {
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

void ReportWatcher::Accept(QDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

bool ReportWatcher::AnswerDialog(QWidget* front) {
    if (auto* const file = qobject_cast<QFileDialog*>(front)) {
        AnswerFileDialog(*file);
        return true;
    }
    if (qobject_cast<QPrintDialog*>(front) == nullptr && qobject_cast<QPageSetupDialog*>(front) == nullptr) {
        return false;
    }
    dialogs_.push_back(front->objectName());
    answerDialog_(static_cast<QDialog&>(*front));
    return true;
}

void ReportWatcher::Glance(bool& seen, const std::function<void(F_RPT&)>& look) {
    QWidget* const front = QApplication::activeModalWidget();
    if (AnswerDialog(front) || seen || !forms::IsLoaded<F_RPT>() ||
        front != forms::Instance<F_RPT>().Window()) {
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

bool ReportWatcher::Watch(const std::function<void()>& show, const std::function<void(F_RPT&)>& look) {
    bool seen = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] { Glance(seen, look); });
    timer.start(5);
    show();
    return seen;
}

QStringList ReportWatcher::Pages(const F_RPT& form) {
    const std::shared_ptr<const engine::Document> document = form.CRViewer91->Shown();
    QStringList pages = document == nullptr ? QStringList() : engine::test::PagesOf(*document);
    return pages.replaceInStrings(QStringLiteral("\n"), QStringLiteral(" "));
}

}  // namespace quardele::reports::test
