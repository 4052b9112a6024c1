#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolTip>

#include <forms/combo.h>
#include <forms/control_font.h>
#include <forms/events.h>

#include "forms_test.h"
#include "memory_rows.h"
#include "rows_model.h"

namespace quardele::forms {

class ComboTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        rows_ = std::make_shared<test::MemoryRows>(
            std::vector{test::TextField(u"TSITE_CODE"), test::TextField(u"TSITE_LIB")});
        rows_->Add({u"BDX", u"Bordeaux"});
        rows_->Add({u"LYO", u"Lyon"});
        rows_->Add({u"PAR", u"Paris"});
        stage_ = std::make_unique<test::Stage>();
        data_ = new DataControl(stage_.get());
        combo_ = new ListCombo(stage_.get());
        combo_->setGeometry(10, 10, 120, 24);
        combo_->SetListFields({QStringLiteral("TSITE_CODE"), QStringLiteral("TSITE_LIB")});
        combo_->SetRowSource(data_);
        data_->SetRecordset(rows_);
        stage_->Open();
    }
    void cleanup() { stage_.reset(); }

    void TheListShowsTheFieldsOfAllRows() {
        const QAbstractItemModel* list = combo_->view()->model();
        QCOMPARE(list->rowCount(), 3);
        QCOMPARE(list->columnCount(), 2);
        QCOMPARE(list->index(1, 1).data().toString(), QStringLiteral("Lyon"));
        QCOMPARE(combo_->Text(), QString());
    }

    void ChoosingARowMakesItTheCurrentRecordAndItsFirstColumnTheText() {
        const QSignalSpy clicks(combo_, &ListCombo::Click);
        combo_->showPopup();
        QTest::keyClick(combo_->view(), Qt::Key_Home);
        QTest::keyClick(combo_->view(), Qt::Key_Down);
        QTest::keyClick(combo_->view(), Qt::Key_Return);
        QCOMPARE(combo_->Text(), QStringLiteral("LYO"));
        QCOMPARE(rows_->AbsolutePosition(), 1L);
        QCOMPARE(clicks.count(), 1);
    }

    void TypingTheTextOfARowMakesItTheCurrentRecord() {
        QTest::keyClicks(combo_->lineEdit(), QStringLiteral("PAR"));
        QCOMPARE(rows_->AbsolutePosition(), 2L);
        QTest::keyClicks(combo_->lineEdit(), QStringLiteral("X"));
        QCOMPARE(combo_->Text(), QStringLiteral("PARX"));
        QCOMPARE(rows_->AbsolutePosition(), 2L);
    }

    void SettingTheTextDoesTheSame() {
        const QSignalSpy changes(combo_, &ListCombo::Change);
        combo_->SetText(QStringLiteral("LYO"));
        QCOMPARE(rows_->AbsolutePosition(), 1L);
        QCOMPARE(changes.count(), 1);
    }

    void ClearEmptiesTheTextAndLeavesTheList() {
        combo_->SetText(QStringLiteral("LYO"));
        combo_->Clear();
        QCOMPARE(combo_->Text(), QString());
        QCOMPARE(combo_->view()->model()->rowCount(), 3);
        QCOMPARE(rows_->AbsolutePosition(), 1L);
    }

    void ARefreshOfTheRowsLeavesTheTextAlone() {
        combo_->SetText(QStringLiteral("ailleurs"));
        data_->SetRecordset(std::make_shared<test::MemoryRows>(rows_->Fields()));
        QCOMPARE(combo_->Text(), QStringLiteral("ailleurs"));
        QCOMPARE(combo_->view()->model()->rowCount(), 0);
    }

    void WithoutARowSourceTheListIsEmpty() {
        combo_->SetRowSource(nullptr);
        QVERIFY(combo_->RowSource() == nullptr);
        QCOMPARE(combo_->view()->model()->rowCount(), 0);
        combo_->SetRowSource(data_);
        QCOMPARE(combo_->view()->model()->rowCount(), 3);
        delete data_;
        QVERIFY(combo_->RowSource() == nullptr);
        QCOMPARE(combo_->view()->model()->rowCount(), 0);
    }

    void ATextThatItsColumnCutsOffHasATip() {
        rows_->Add({u"STE", u"Sainte-Foy-la-Grande & environs"});
        data_->SetRecordset(rows_);
        combo_->SetCol(1);
        combo_->SetColWidth(900);
        combo_->SetListWidth(3000);
        combo_->SetTextTipFontSize(13.5);
        combo_->showPopup();
        HoverOver(3, 1);
        QTRY_VERIFY(QToolTip::isVisible());
        QTextDocument tip;
        tip.setHtml(QToolTip::text());
        QCOMPARE(tip.toPlainText(), QStringLiteral("Sainte-Foy-la-Grande & environs"));
        QTextCursor text(&tip);
        text.movePosition(QTextCursor::End);
        QCOMPARE(text.charFormat().fontPointSize(), 13.5);
        HoverOver(1, 1);
        QTRY_VERIFY(!QToolTip::isVisible());
    }

    void TheTipHasTheSizeOfTheControlUntilItGetsItsOwn() {
        QCOMPARE(combo_->TextTipFontSize(), FontSize(combo_));
        const double before = combo_->TextTipFontSize();
        SetFontSize(combo_, 2 * before);
        QCOMPARE(combo_->TextTipFontSize(), before);
    }

    void TheRowsAreAProperModel() {
        RowsModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.SetRows(rows_, {QStringLiteral("TSITE_CODE"), QStringLiteral("ABSENT")});
        QCOMPARE(model.RowOf(QStringLiteral("PAR")), 2);
        QCOMPARE(model.RowOf(QStringLiteral("par")), -1);
        QCOMPARE(model.RowOf(QString()), -1);
        QCOMPARE(model.index(0, 1).data().toString(), QString());
        model.SetRows(nullptr, {});
        QCOMPARE(model.rowCount(), 0);
    }

 private:
    /// As long as the pointer must rest on an entry before its tip comes.
    void HoverOver(int row, int column) {
        QAbstractItemView* const list = combo_->view();
        const QPoint place = list->visualRect(list->model()->index(row, column)).center();
        QHelpEvent rest(QEvent::ToolTip, place, list->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list->viewport(), &rest);
    }

    std::shared_ptr<test::MemoryRows> rows_;
    std::unique_ptr<test::Stage> stage_;
    DataControl* data_ = nullptr;
    ListCombo* combo_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::ComboTest>(argc, argv);
}
#include "combo_test.moc"
