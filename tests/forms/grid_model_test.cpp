#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <basic/date.h>
#include <basic/runtime_error.h>
#include <support/boxes.h>

#include "forms_test.h"
#include "grid_model.h"
#include "memory_rows.h"

namespace quardele::forms {
namespace {

using test::FieldOfType;
using test::MemoryRows;
using test::TextField;

std::shared_ptr<MemoryRows> Visits() {
    auto rows = std::make_shared<MemoryRows>(std::vector{
        TextField(u"CODE"), FieldOfType(u"PERIOD", dao::FieldType::Integer),
        FieldOfType(u"DATVIS", dao::FieldType::Date), FieldOfType(u"DONE", dao::FieldType::Boolean)});
    rows->Add({u"CT", std::int16_t{24}, basic::DateOf(2026, 1, 31), true});
    rows->Add({u"VID", 1.5, basic::DateOf(2026, 1, 31, 8, 30, 0), false});
    rows->Add({u"REV", basic::Null{}, basic::Null{}, basic::Null{}});
    return rows;
}

std::vector<GridColumn> VisitColumns() {
    return ColumnsOf({QStringLiteral("Type|code|13.87|text"),
                      QStringLiteral("Périodicité|PERIOD|8.75|number"),
                      QStringLiteral("Dernière visite|DATVIS|9.25|date|locked"),
                      QStringLiteral("Fait|DONE|4|check"), QStringLiteral("Suite||10|date|locked")});
}

}  // namespace

class GridModelTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        model_ = std::make_unique<GridModel>(nullptr);
        tester_ = std::make_unique<QAbstractItemModelTester>(
            model_.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        model_->SetColumns(VisitColumns());
    }
    void cleanup() {
        tester_.reset();
        model_.reset();
    }

    void ColumnLinesGoThereAndBack() {
        const QStringList lines{
            QStringLiteral("Type de travaux|CODE|13.87|text|||"),
            QStringLiteral("Périodicité|PERIOD|8.75|number|||-99999999..200"),
            QStringLiteral("Dernière\\nvisite|DATVIS|9.25|date|locked||1990-01-01..2100-12-31"),
            QStringLiteral("Détail||6|button||detail|"), QStringLiteral("||10|text|||")};
        const std::vector<GridColumn> columns = ColumnsOf(lines);
        QVERIFY(columns[1].range && columns[1].range->Contains(200) && !columns[1].range->Contains(201));
        QCOMPARE(columns[2].heading, QStringLiteral("Dernière\nvisite"));
        QVERIFY(columns[2].locked);
        QCOMPARE(columns[3].type, CellType::Button);
        QCOMPARE(columns[3].picture, QStringLiteral("detail"));
        QCOMPARE(LinesOf(columns), lines);
        QCOMPARE(ColumnsOf({QStringLiteral("Seul")}).front().type, CellType::Edit);
    }

    void BoundRowsShowTheirFieldsAsTexts() {
        model_->Bind(Visits());
        QCOMPARE(model_->Rows(), 3);
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        QCOMPARE(model_->Text(0, 1), QStringLiteral("24"));
        QCOMPARE(model_->Text(0, 2), QStringLiteral("31/01/2026"));
        QCOMPARE(model_->Text(1, 1), QStringLiteral("1,5"));
        QCOMPARE(model_->Text(1, 2), QStringLiteral("31/01/2026 08:30:00"));
        QCOMPARE(model_->Text(2, 1), QString());
        QVERIFY(model_->IsTicked(0, 3));
        QVERIFY(!model_->IsTicked(1, 3));
        QCOMPARE(model_->Text(0, 4), QString());
    }

    void RowsAreReadWhenTheyAreLookedAtAndOnceOnly() {
        const auto rows = Visits();
        model_->Bind(rows);
        QCOMPARE(rows->allReads, 0);
        static_cast<void>(model_->Text(1, 0));
        static_cast<void>(model_->index(1, 2).data());
        QCOMPARE(rows->reads.size(), std::size_t{1});
        QCOMPARE(rows->reads[1], 4);
    }

    void AHundredThousandRowsOpenWithoutReadingAny() {
        tester_.reset();  // it looks at every row
        auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"CODE")});
        rows->madeUpRows = 100'000;
        model_->Bind(rows);
        QCOMPARE(model_->rowCount(), 100'000);
        QCOMPARE(rows->allReads, 0);
        QCOMPARE(model_->Text(99'999, 0), QStringLiteral("99999.0"));
        QCOMPARE(rows->allReads, 1);
    }

    void FillQuestionsComeForEachBoundCellLeftToRightBeforeItsValue() {
        test::Journal journal;
        model_->SetFillQuestion([&](int row, int column, int) {
            journal(QStringLiteral("%1:%2=%3").arg(row).arg(column).arg(model_->Text(row, 0)));
            return true;
        });
        model_->Bind(Visits());
        QCOMPARE(journal.Take(), QString());
        static_cast<void>(model_->Text(0, 3));
        QCOMPARE(journal.Take(), QStringLiteral("0:0= 0:1=CT 0:2=CT 0:3=CT"));
        static_cast<void>(model_->Text(0, 0));
        QCOMPARE(journal.Take(), QString());
    }

    void RowsAreFilledInOrderWhenAllAreAskedFor() {
        QStringList order;
        model_->SetFillQuestion([&](int row, int column, int) {
            if (column == 0) {
                order.push_back(QString::number(row));
            }
            return true;
        });
        model_->Bind(Visits());
        for (int row = 0; row < model_->Rows(); ++row) {
            static_cast<void>(model_->Text(row, 0));
        }
        QCOMPARE(order.join(u' '), QStringLiteral("0 1 2"));
    }

    void ARefusedFillLeavesTheCellBlank() {
        model_->SetFillQuestion([](int, int column, int) { return column != 1; });
        model_->Bind(Visits());
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        QCOMPARE(model_->Text(0, 1), QString());
    }

    void AFillHandlerMayWriteOtherCellsOfItsRow() {
        model_->SetFillQuestion([&](int row, int column, int) {
            if (column == 3) {
                model_->SetText(row, 4, model_->Text(row, 0) + u'!');
            }
            return true;
        });
        model_->Bind(Visits());
        QCOMPARE(model_->index(0, 4).data().toString(), QStringLiteral("CT!"));
    }

    void AFillHandlerMayEmptyTheGrid() {
        model_->SetFillQuestion([&](int, int, int) {
            model_->SetRows(0);
            return true;
        });
        model_->Bind(Visits());
        QVERIFY(!model_->index(0, 0).data().isValid());
        QCOMPARE(model_->Rows(), 0);
    }

    void WritingACellFillsItsRowFirst() {
        model_->Bind(Visits());
        model_->SetText(0, 4, QStringLiteral("31/01/2028"));
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        QCOMPARE(model_->Text(0, 4), QStringLiteral("31/01/2028"));
    }

    void CuttingRowsLeavesTheRecordsetAlone() {
        const auto rows = Visits();
        model_->Bind(rows);
        model_->SetRows(0);
        QCOMPARE(rows->RowCount(), std::size_t{3});
        model_->SetRows(2);
        QCOMPARE(model_->Text(0, 0), QString());
        QVERIFY(!model_->RecordOf(0).has_value());
        model_->Bind(rows);
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        QCOMPARE(model_->RecordOf(2), std::optional<long>(2));
    }

    void BlankRowsBehindTheRecordsBelongToNone() {
        model_->Bind(Visits());
        model_->SetRows(4);
        QVERIFY(!model_->RecordOf(3).has_value());
        QCOMPARE(model_->RowOf(3), std::optional<int>());
        model_->SetRecord(3, 3);
        QCOMPARE(model_->RowOf(3), std::optional<int>(3));
    }

    void RecordsThatWereAddedJoinAtTheEnd() {
        const auto rows = Visits();
        model_->Bind(rows);
        rows->Add({u"BAT", basic::Null{}, basic::Null{}, false});
        model_->TakeAddedRecords();
        QCOMPARE(model_->Rows(), 4);
        QCOMPARE(model_->Text(3, 0), QStringLiteral("BAT"));
    }

    void RecordsDoNotJoinAGridThatWasCut() {
        const auto rows = Visits();
        model_->Bind(rows);
        model_->SetRows(0);
        model_->SetRows(1);
        model_->TakeAddedRecords();
        QCOMPARE(model_->Rows(), 1);
    }

    void ADeletedRowShowsBlank() {
        const auto rows = Visits();
        rows->Delete();
        model_->Bind(rows);
        QCOMPARE(model_->Text(0, 0), QString());
        QCOMPARE(model_->Text(1, 0), QStringLiteral("VID"));
    }

    void AnUnloadedRowIsReadAgain() {
        const auto rows = Visits();
        model_->Bind(rows);
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        model_->SetText(0, 4, QStringLiteral("gardé"));
        rows->Edit();
        rows->SetValue(0, u"CTP");
        rows->Update();
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CT"));
        model_->Unload(0);
        QCOMPARE(model_->Text(0, 0), QStringLiteral("CTP"));
        QCOMPARE(model_->Text(0, 4), QStringLiteral("gardé"));
    }

    void AnOperatorsEditMarksTheCell() {
        model_->Bind(Visits());
        const QSignalSpy edits(model_.get(), &GridModel::Edited);
        QVERIFY(model_->setData(model_->index(0, 0), QStringLiteral("X"), Qt::EditRole));
        QVERIFY(model_->IsChanged(0, 0));
        QVERIFY(model_->IsRowChanged(0));
        QVERIFY(!model_->IsRowChanged(1));
        QCOMPARE(edits.count(), 1);
        model_->SetText(1, 0, QStringLiteral("Y"));
        QVERIFY(!model_->IsChanged(1, 0));
    }

    void ALockedCellTakesNoEdit() {
        model_->Bind(Visits());
        QVERIFY(!model_->setData(model_->index(0, 2), QStringLiteral("01/01/2026"), Qt::EditRole));
        QVERIFY(!model_->flags(model_->index(0, 2)).testFlag(Qt::ItemIsEditable));
        QVERIFY(model_->flags(model_->index(0, 0)).testFlag(Qt::ItemIsEditable));
        model_->OwnLook(0, 2).locked = false;
        QVERIFY(model_->setData(model_->index(0, 2), QStringLiteral("01/01/2026"), Qt::EditRole));
        QVERIFY(model_->IsLocked(1, 2));
        model_->ColumnLook(0).locked = true;
        QVERIFY(model_->IsLocked(1, 0));
    }

    void NumbersAreAlignedRightDatesAndTicksCentred() {
        const auto horizontal = [&](int column) {
            return model_->Column(column).Alignment() & Qt::AlignHorizontal_Mask;
        };
        QCOMPARE(horizontal(0), Qt::AlignLeft);
        QCOMPARE(horizontal(1), Qt::AlignRight);
        QCOMPARE(horizontal(2), Qt::AlignHCenter);
        QCOMPARE(horizontal(3), Qt::AlignHCenter);
    }

    void ACellSaysHeadingValueAndState() {
        model_->Bind(Visits());
        const auto said = [&](int column) {
            return model_->index(0, column).data(Qt::AccessibleTextRole).toString();
        };
        QCOMPARE(said(0), QStringLiteral("Type, CT"));
        QCOMPARE(said(2), QStringLiteral("Dernière visite, 31/01/2026, verrouillé"));
        QCOMPARE(said(3), QStringLiteral("Fait, coché"));
        QCOMPARE(said(4), QStringLiteral("Suite, verrouillé"));
    }

    void AnErrorWhileLookingIsTheUnhandledError() {
        support::BoxAnswerer boxes;
        model_->SetFillQuestion(
            [](int, int, int) -> bool { throw basic::RuntimeError(basic::error::kNoCurrentRecord); });
        model_->Bind(Visits());
        static_cast<void>(model_->index(0, 0).data());
        QVERIFY(!boxes.Shown().empty());
        QVERIFY(boxes.Shown().front().text.contains(QStringLiteral("3021")));
    }

    void SettingColumnsAgainKeepsTheRows() {
        model_->Bind(Visits());
        model_->SetColumns(ColumnsOf({QStringLiteral("Code|CODE|10|text")}));
        QCOMPARE(model_->columnCount(), 1);
        QCOMPARE(model_->Text(2, 0), QStringLiteral("REV"));
    }

 private:
    std::unique_ptr<GridModel> model_;
    std::unique_ptr<QAbstractItemModelTester> tester_;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::GridModelTest>(argc, argv);
}
#include "grid_model_test.moc"
