// Cells as a program addresses them; the grid and its data control.
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>

#include <basic/conversion.h>
#include <basic/date.h>
#include <forms/controls.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <support/boxes.h>
#include <support/installation.h>

#include "forms_test.h"
#include "memory_rows.h"

namespace quardele::forms {
namespace {

using test::FieldOfType;
using test::MemoryRows;
using test::TextField;

std::shared_ptr<MemoryRows> LongList() {
    auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"CODE")});
    rows->madeUpRows = 5000;
    rows->findsInSteps = true;
    return rows;
}

std::shared_ptr<MemoryRows> Visits(int count) {
    auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"CODE"),
                                                         FieldOfType(u"PERIOD", dao::FieldType::Integer),
                                                         FieldOfType(u"DATVIS", dao::FieldType::Date)});
    for (int row = 0; row < count; ++row) {
        rows->Add({basic::Text(u"V") + basic::NumberText(row + 1), std::int16_t{12},
                   basic::Date{basic::DateOf(2026, 1, 1).days + row}});
    }
    return rows;
}

}  // namespace

class GridTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        data_ = new DataControl(stage_.get());
        grid_ = new Grid(stage_.get());
        grid_->setGeometry(10, 10, 500, 300);
        grid_->SetColumnLines({QStringLiteral("Code|CODE|10|text"), QStringLiteral("Mois|PERIOD|8|number"),
                               QStringLiteral("Visite|DATVIS|10|date"), QStringLiteral("Editer ?||5|check"),
                               QStringLiteral("Site||6|text|locked")});
        stage_->Open();
    }
    void cleanup() { stage_.reset(); }

    // Addressing.

    void RowAndColAddressACellAndDoNotMoveTheCursor() {
        grid_->SetMaxRows(3);
        Set(2, 1, QStringLiteral("x"));
        QCOMPARE(At(2, 1), QStringLiteral("x"));
        QCOMPARE(At(1, 1), QString());
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(grid_->ActiveCol(), 1);
    }

    void CellsThatDoNotExistAreBlankAndTakeNothing() {
        grid_->SetMaxRows(1);
        Set(9, 1, QStringLiteral("x"));
        Set(1, 9, QStringLiteral("x"));
        QCOMPARE(At(9, 1), QString());
        QCOMPARE(At(1, 9), QString());
        QCOMPARE(grid_->MaxRows(), 1);
    }

    void RowZeroIsTheHeading() {
        QCOMPARE(At(0, 1), QStringLiteral("Code"));
        Set(0, 1, QStringLiteral("1 - Énergie"));
        QCOMPARE(At(0, 1), QStringLiteral("1 - Énergie"));
        QCOMPARE(grid_->model()->headerData(0, Qt::Horizontal).toString(), QStringLiteral("1 - Énergie"));
    }

    void ColumnZeroKeepsItsTexts() {
        Set(0, 0, QStringLiteral("13700"));
        QCOMPARE(At(0, 0), QStringLiteral("13700"));
        QCOMPARE(At(1, 0), QString());
    }

    void MinusOneIsTheWholeColumnOrRow() {
        grid_->SetMaxRows(3);
        grid_->SetRow(-1);
        grid_->SetCol(5);
        QVERIFY(grid_->Lock());
        grid_->SetLock(false);
        grid_->SetRow(2);
        QVERIFY(!grid_->Lock());
        QCOMPARE(grid_->CellType(), CellType::Edit);
        grid_->SetRow(3);
        grid_->SetCol(-1);
        grid_->SetChangedFlag(true);
        grid_->SetCol(2);
        QVERIFY(grid_->ChangedFlag());
        grid_->SetRow(2);
        QVERIFY(!grid_->ChangedFlag());
    }

    void ATickIsOneOrZeroAndMinusOneIsTaken() {
        grid_->SetMaxRows(1);
        grid_->SetRow(1);
        grid_->SetCol(4);
        QCOMPARE(grid_->CellType(), CellType::CheckBox);
        QCOMPARE(grid_->Value(), QStringLiteral("0"));
        grid_->SetValue(-1);
        QCOMPARE(grid_->Value(), QStringLiteral("1"));
        grid_->SetValue(0);
        QCOMPARE(grid_->Value(), QStringLiteral("0"));
        grid_->SetValue(QStringLiteral("1"));
        QCOMPARE(grid_->Value(), QStringLiteral("1"));
    }

    void AProgramsAssignmentIsNoOperatorsChange() {
        grid_->SetMaxRows(1);
        Set(1, 1, QStringLiteral("x"));
        grid_->SetCol(4);
        grid_->SetValue(1);
        QVERIFY(!grid_->ChangeMade());
        QVERIFY(!grid_->ChangedFlag());
    }

    void ColoursAndFontsBelongToTheCell() {
        grid_->SetMaxRows(2);
        grid_->SetRow(1);
        grid_->SetCol(5);
        QCOMPARE(grid_->BackColor(), 16777215);
        grid_->SetBackColor(255);
        grid_->SetFontBold(true);
        QCOMPARE(grid_->BackColor(), 255);
        QVERIFY(grid_->FontBold());
        grid_->SetRow(2);
        QCOMPARE(grid_->BackColor(), 16777215);
        QVERIFY(!grid_->FontBold());
    }

    void ARedCellIsPaintedRedWithItsPictogramAndHasNoText() {
        grid_->SetMaxRows(1);
        grid_->SetRow(1);
        grid_->SetCol(5);
        grid_->SetBackColor(255);
        const QImage picture = grid_->viewport()->grab().toImage();
        const QRect cell = grid_->visualRect(grid_->model()->index(0, 4));
        QCOMPARE(picture.pixelColor(cell.topLeft() + QPoint(3, 3)), QColor(255, 0, 0));
        QVERIFY(picture.copy(cell).pixelColor(cell.width() / 2, cell.height() / 2 - 5) != QColor(255, 0, 0));
        QCOMPARE(grid_->Text(), QString());
    }

    void TheMarkOfAColumnIsItsItalicHeading() {
        grid_->SetRow(0);
        grid_->SetCol(2);
        QVERIFY(!grid_->FontItalic());
        const QImage plain = grid_->horizontalHeader()->grab().toImage();
        grid_->SetFontItalic(true);
        QVERIFY(grid_->FontItalic());
        const QImage marked = grid_->horizontalHeader()->grab().toImage();
        const int middle = grid_->columnViewportPosition(1) + grid_->columnWidth(1) / 2;
        QVERIFY(plain.pixelColor(middle, plain.height() - 1) != QColor(0x0B, 0x5C, 0x8A));
        QCOMPARE(marked.pixelColor(middle, marked.height() - 1), QColor(0x0B, 0x5C, 0x8A));
        QCOMPARE(marked.pixelColor(middle, marked.height() - 3), QColor(0x0B, 0x5C, 0x8A));
    }

    void HeadingsWrapOnTwoLines() {
        grid_->SetCol(4);
        grid_->SetColWidth(10);
        const int one = grid_->horizontalHeader()->height();
        Set(0, 3, QStringLiteral("Dernière visite prévue"));
        const int two = grid_->horizontalHeader()->height();
        QVERIFY2(two > one + 8, qPrintable(QStringLiteral("%1 and %2").arg(one).arg(two)));
        grid_->SetHeadingHeight(36);
        QCOMPARE(grid_->horizontalHeader()->height(), 36);
    }

    void WidthsAreCountedInCharacters() {
        QCOMPARE(grid_->columnWidth(0), 81);  // 10 characters of 8.117 pixels
        grid_->SetCol(1);
        QCOMPARE(grid_->ColWidth(), 10.0);
        grid_->SetColWidth(12.5);
        QCOMPARE(grid_->ColWidth(), 12.5);
        QCOMPARE(grid_->columnWidth(0), 101);
        grid_->SetCharacterWidth(7.4);
        QCOMPARE(grid_->ColWidth(), 12.5);
        QCOMPARE(grid_->columnWidth(0), 93);  // 92.5
    }

    void AHiddenColumnKeepsWidthAndCells() {
        grid_->SetMaxRows(1);
        Set(1, 5, QStringLiteral("ATEL1"));
        grid_->SetRow(-1);
        grid_->SetColHidden(true);
        QVERIFY(grid_->ColHidden());
        QVERIFY(grid_->isColumnHidden(4));
        QCOMPARE(At(1, 5), QStringLiteral("ATEL1"));
        grid_->SetColHidden(false);
        QVERIFY(!grid_->ColHidden());
        QCOMPARE(grid_->ColWidth(), 6.0);
        QCOMPARE(grid_->columnWidth(4), 49);
    }

    void AHiddenRowKeepsItsCells() {
        grid_->SetMaxRows(3);
        Set(2, 1, QStringLiteral("gardé"));
        grid_->SetRowHidden(true);
        QVERIFY(grid_->RowHidden());
        QCOMPARE(At(2, 1), QStringLiteral("gardé"));
        grid_->SetRow(1);
        QVERIFY(!grid_->RowHidden());
        grid_->SetRow(2);
        grid_->SetRowHidden(false);
        QVERIFY(!grid_->isRowHidden(1));
    }

    void RowsThatComeAnewAreShown() {
        grid_->SetMaxRows(2);
        grid_->SetRow(1);
        grid_->SetRowHidden(true);
        grid_->SetMaxRows(0);
        grid_->SetMaxRows(2);
        QVERIFY(!grid_->RowHidden());
    }

    void AnEmptyGridShowsItsHintAndHasNoActiveRow() {
        const QImage bare = grid_->viewport()->grab().toImage();
        grid_->SetEmptyHint(QStringLiteral("Aucune relance"));
        QVERIFY(grid_->viewport()->grab().toImage() != bare);
        QCOMPARE(grid_->ActiveRow(), 0);
        QCOMPARE(grid_->ActiveCol(), 1);
        grid_->SetMaxRows(1);
        QCOMPARE(grid_->ActiveRow(), 1);
    }

    void ActionZeroMakesTheAddressedCellTheActiveOne() {
        grid_->SetMaxRows(4);
        grid_->SetRow(3);
        grid_->SetCol(2);
        grid_->Action(0);
        QCOMPARE(grid_->ActiveRow(), 3);
        QCOMPARE(grid_->ActiveCol(), 2);
        grid_->SetRow(0);
        grid_->SetCol(4);
        grid_->Action(0);
        QCOMPARE(grid_->ActiveRow(), 3);
        QCOMPARE(grid_->ActiveCol(), 4);
        grid_->SetRow(2);
        grid_->SetCol(0);
        grid_->Action(0);
        QCOMPARE(grid_->ActiveRow(), 2);
        QCOMPARE(grid_->ActiveCol(), 0);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, grid_->Action(3));
    }

    void AProgramsMoveFiresNoLeaveEvents() {
        grid_->SetMaxRows(4);
        const QSignalSpy cells(grid_, &Grid::LeaveCell);
        const QSignalSpy lines(grid_, &Grid::LeaveRow);
        grid_->SetActiveCell(2, 3);
        QCOMPARE(cells.count() + lines.count(), 0);
    }

    void TheToolTipTextIsKept() {
        grid_->SetToolTipText(QStringLiteral("Relances"));
        QCOMPARE(grid_->ToolTipText(), QStringLiteral("Relances"));
    }

    void WithoutReDrawTheOldPictureStays() {
        grid_->SetMaxRows(2);
        Set(1, 1, QStringLiteral("avant"));
        const QImage before = grid_->viewport()->grab().toImage();
        grid_->SetReDraw(false);
        QVERIFY(!grid_->ReDraw());
        grid_->SetMaxRows(0);
        grid_->hide();
        grid_->show();
        QCOMPARE(grid_->viewport()->grab().toImage(), before);
        grid_->SetReDraw(true);
        QVERIFY(grid_->viewport()->grab().toImage() != before);
    }

    // Bound.

    void ABoundGridShowsTheRowsOfItsDataControl() {
        Bind(Visits(3));
        QCOMPARE(grid_->MaxRows(), 3);
        QCOMPARE(At(2, 1), QStringLiteral("V2"));
        QCOMPARE(At(2, 3), QStringLiteral("02/01/2026"));
        QCOMPARE(grid_->DataField(), QStringLiteral("DATVIS"));
        grid_->SetCol(4);
        QCOMPARE(grid_->DataField(), QString());
    }

    void MaxRowsZeroEmptiesTheGridAndLeavesTheRecordsetAlone() {
        const auto rows = Visits(3);
        Bind(rows);
        grid_->SetMaxRows(0);
        QCOMPARE(grid_->MaxRows(), 0);
        QCOMPARE(rows->RowCount(), std::size_t{3});
        QCOMPARE(rows->AbsolutePosition(), 0L);
    }

    void TheActiveRowFollowsTheCurrentRecord() {
        const auto rows = Visits(50);
        Bind(rows);
        grid_->SetActiveCell(2, 1);
        rows->MoveLast();
        QCOMPARE(grid_->ActiveRow(), 50);
        QCOMPARE(grid_->ActiveCol(), 2);
        QVERIFY(grid_->viewport()->rect().contains(grid_->visualRect(grid_->currentIndex()).center()));
        rows->MoveNext();
        QCOMPARE(grid_->ActiveRow(), 50);
        rows->AddNew();
        QCOMPARE(grid_->ActiveRow(), 50);
    }

    void TheCurrentRecordFollowsTheActiveRow() {
        const auto rows = Visits(5);
        Bind(rows);
        grid_->SetActiveCell(1, 4);
        QCOMPARE(rows->AbsolutePosition(), 3L);
        const int moves = static_cast<int>(rows->calls.size());
        grid_->SetActiveCell(3, 4);
        QCOMPARE(static_cast<int>(rows->calls.size()), moves);
    }

    void AfterARefreshTheFirstRowIsActiveInTheSameColumn() {
        Bind(Visits(5));
        grid_->SetActiveCell(3, 4);
        data_->SetRecordset(Visits(2));
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(grid_->ActiveCol(), 3);
    }

    void AProgramsMoveThatCannotSaveRaisesTheErrorAndDoesNotHappen() {
        const auto rows = Visits(3);
        TextBox box(stage_.get());
        box.SetDataField(QStringLiteral("CODE"));
        box.SetDataSource(data_);
        Bind(rows);
        box.SetText(QStringLiteral("refusé"));
        rows->refusal = basic::error::kDuplicateKey;
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, grid_->SetActiveCell(1, 2));
        QCOMPARE(grid_->ActiveRow(), 1);
        QCOMPARE(rows->AbsolutePosition(), 0L);
    }

    void OnlyTheRowsInViewAreRead() {
        auto rows = std::make_shared<MemoryRows>(std::vector{TextField(u"CODE")});
        rows->madeUpRows = 100'000;
        Bind(rows);
        grid_->viewport()->grab();
        QCOMPARE(grid_->MaxRows(), 100'000);
        QVERIFY2(rows->reads.size() < 30, qPrintable(QString::number(rows->reads.size())));
        rows->reads.clear();
        rows->MoveLast();
        grid_->viewport()->grab();
        QVERIFY(rows->reads.count(99'999) == 1);
        QVERIFY2(rows->reads.size() < 30, qPrintable(QString::number(rows->reads.size())));
    }

    // Rows of a long list are found step by step.

    void RowsJoinAsTheyAreFound() {
        const auto rows = LongList();
        Bind(rows);
        QVERIFY(rows->found < 1000);
        QCOMPARE(At(4000, 1), QStringLiteral("3999.0"));
        QCOMPARE(rows->found, std::size_t{4000});
        QCOMPARE(grid_->MaxRows(), 5000);
        QCOMPARE(rows->found, std::size_t{5000});
    }

    void NoMoreRowsAreFoundThanSomebodyComesNear() {
        const auto rows = LongList();
        Bind(rows);
        QTest::qWait(20);
        QVERIFY(rows->found < 1000);
        grid_->hide();
        grid_->show();
        QTest::qWait(20);
        QVERIFY(rows->found < 1000);
    }

    void ScrollingToTheEndFindsMoreRowsUntilThereAreNone() {
        const auto rows = LongList();
        Bind(rows);
        QScrollBar& bar = *grid_->verticalScrollBar();
        int shown = grid_->model()->rowCount();
        bar.setValue(bar.maximum());
        QVERIFY(grid_->model()->rowCount() > shown);
        QVERIFY(rows->found < 5000);
        for (int drags = 0; drags < 10 && shown < grid_->model()->rowCount(); ++drags) {
            shown = grid_->model()->rowCount();
            QTest::qWait(1);  // the bar learns of the new rows
            bar.setValue(bar.maximum());
        }
        QCOMPARE(grid_->model()->rowCount(), 5000);
        QCOMPARE(grid_->ActiveRow(), 1);
    }

    void TheKeyOfPagesGoesByWholePages() {
        Bind(LongList());
        grid_->setFocus();
        QTest::keyClick(grid_, Qt::Key_PageDown);
        const int page = grid_->ActiveRow() - 1;
        QVERIFY(page > 1);
        for (int pages = 2; pages < 1000 / page; ++pages) {
            QTest::keyClick(grid_, Qt::Key_PageDown);
            QCOMPARE(grid_->ActiveRow(), pages * page + 1);
        }
    }

    void TheKeyToTheLastColumnFindsNoRows() {
        const auto rows = LongList();
        Bind(rows);
        grid_->setFocus();
        QTest::keyClick(grid_, Qt::Key_End);
        QCOMPARE(grid_->ActiveRow(), 1);
        QVERIFY(rows->found < 1000);
    }

    void AChangeOfARowFindsNoMoreRows() {
        const auto rows = LongList();
        rows->Add({basic::Text(u"x")});
        Bind(rows);
        rows->Edit();
        rows->SetValue(0, basic::Text(u"y"));
        rows->Update();
        QVERIFY(rows->found < 1000);
    }

    void TheKeyToTheEndLeadsToTheLastRowOfAll() {
        Bind(LongList());
        grid_->setFocus();
        QTest::keyClick(grid_, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid_->ActiveRow(), 5000);
    }

    void TheCursorFollowsToTheLastRecord() {
        const auto rows = LongList();
        Bind(rows);
        rows->MoveLast();
        QCOMPARE(grid_->ActiveRow(), 5000);
    }

    void TheCursorFollowsToARowThatWasNotFoundYet() {
        const auto rows = LongList();
        Bind(rows);
        rows->SetAbsolutePosition(1500);
        QCOMPARE(grid_->ActiveRow(), 1501);
        QVERIFY(rows->found < 5000);
    }

    void AListThatWasCutDoesNotGrow() {
        const auto rows = LongList();
        Bind(rows);
        grid_->SetMaxRows(3);
        QVERIFY(!grid_->model()->canFetchMore({}));
        QTest::keyClick(grid_, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid_->MaxRows(), 3);
        QVERIFY(rows->found < 1000);
        grid_->SetMaxRows(0);
        QCOMPARE(grid_->MaxRows(), 0);
    }

    void AListIsExtendedBehindAllOfItsRows() {
        Bind(LongList());
        grid_->SetMaxRows(5002);
        QCOMPARE(At(5000, 1), QStringLiteral("4999.0"));
        QCOMPARE(At(5001, 1), QString());
    }

    void WhatCannotBeFoundIsToldToWhoAsksForIt() {
        const auto rows = LongList();
        Bind(rows);
        rows->findFailure = basic::error::kNotADatabase;
        QVERIFY(grid_->model()->rowCount() > 0);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(grid_->MaxRows()));
        rows->findFailure = 0;
        QCOMPARE(grid_->MaxRows(), 5000);
    }

    void RowsOfAGridThatIsNotOnScreenAreNotRead() {
        grid_->hide();
        const auto rows = Visits(50);
        Bind(rows);
        QCOMPARE(rows->allReads, 0);
        grid_->show();
        QVERIFY(rows->allReads > 0);
    }

    void DataFillHasRunBeforeTheEyeSeesARow() {
        On(grid_, &Grid::DataFill, this, [this](int col, int row, int, bool getData, bool&) {
            if (getData && col == 3) {
                Set(row, 5, QStringLiteral("ATEL%1").arg(row));
            }
        });
        Bind(Visits(200));
        QCOMPARE(At(1, 5), QStringLiteral("ATEL1"));
        QCOMPARE(At(200, 5), QStringLiteral("ATEL200"));
        QCOMPARE(At(120, 5), QStringLiteral("ATEL120"));
    }

    void DataFillComesForBoundCellsOnlyWithTheirRow() {
        test::Journal journal;
        grid_->hide();
        On(grid_, &Grid::DataFill, this,
           [&](int col, int row, int, bool, bool&) { journal(QStringLiteral("%1/%2").arg(row).arg(col)); });
        Bind(Visits(3));
        QCOMPARE(journal.Take(), QString());
        static_cast<void>(At(2, 5));
        QCOMPARE(journal.Take(), QStringLiteral("2/1 2/2 2/3"));
    }

    void AnErrorInDataFillIsTheUnhandledErrorAndPaintingGoesOn() {
        support::BoxAnswerer boxes;
        On(grid_, &Grid::DataFill, this,
           [](int, int, int, bool, bool&) { throw basic::RuntimeError(basic::error::kNoCurrentRecord); });
        Bind(Visits(1));
        QVERIFY(!boxes.Shown().empty());
        QVERIFY(boxes.TakeTexts().front().contains(QStringLiteral("3021")));
        grid_->viewport()->grab();
        QVERIFY(boxes.Shown().empty());
    }

    void AChangedRecordIsShownAsSaved() {
        const auto rows = Visits(3);
        Bind(rows);
        QCOMPARE(At(1, 1), QStringLiteral("V1"));
        rows->Edit();
        rows->SetValue(0, u"neuf");
        rows->Update();
        QCOMPARE(At(1, 1), QStringLiteral("neuf"));
    }

    void ARecordThatWasAddedAppearsAtTheEnd() {
        const auto rows = Visits(3);
        Bind(rows);
        rows->AddNew();
        rows->SetValue(0, u"V4");
        rows->Update();
        QCOMPARE(grid_->MaxRows(), 4);
        QCOMPARE(At(4, 1), QStringLiteral("V4"));
        rows->SetBookmark(rows->LastModified());
        QCOMPARE(grid_->ActiveRow(), 4);
    }

    void HidingEveryRowOfALargeListIsNotQuadratic() {
        grid_->SetMaxRows(100'000);
        const QSignalSpy resizes(grid_->verticalHeader(), &QHeaderView::sectionResized);
        for (const bool hidden : {true, false}) {
            for (int row = 1; row <= grid_->MaxRows(); ++row) {
                grid_->SetRow(row);
                grid_->SetRowHidden(hidden);
            }
        }
        QCOMPARE(resizes.count(), 200'000);
        QCOMPARE(grid_->rowAt(0), 0);
    }

    // Saving.

    void ActionFifteenWritesChangedCellsOfBoundColumnsRowByRow() {
        const auto rows = Visits(3);
        Bind(rows);
        Set(1, 2, QStringLiteral("24"));
        grid_->SetChangedFlag(true);
        Set(3, 3, QStringLiteral("15/03/2026"));
        grid_->SetChangedFlag(true);
        Set(3, 5, QStringLiteral("libre"));
        grid_->SetChangedFlag(true);
        Set(2, 2, QStringLiteral("99"));
        rows->calls.clear();
        grid_->Action(15);
        QCOMPARE(rows->Stored(0)[1], dao::Variant(24.0));
        QCOMPARE(rows->Stored(2)[2], dao::Variant(basic::DateOf(2026, 3, 15)));
        QCOMPARE(rows->Stored(2)[0], dao::Variant(u"V3"));
        QCOMPARE(rows->Stored(1)[1], dao::Variant(std::int16_t{12}));
        QCOMPARE(std::count(rows->calls.begin(), rows->calls.end(), "update"), 2);
        QCOMPARE(rows->AbsolutePosition(), 0L);
        QCOMPARE(grid_->ActiveRow(), 1);
        QVERIFY(!grid_->ChangedFlag());
    }

    void NewRowsAreAddedAndThenBelongToTheirRecord() {
        const auto rows = Visits(1);
        Bind(rows);
        grid_->SetMaxRows(2);
        Set(2, 1, QStringLiteral("V2"));
        grid_->SetChangedFlag(true);
        grid_->Action(15);
        QCOMPARE(rows->RowCount(), std::size_t{2});
        QCOMPARE(rows->Stored(1)[0], dao::Variant(u"V2"));
        QCOMPARE(grid_->MaxRows(), 2);
        Set(2, 1, QStringLiteral("V2 bis"));
        grid_->SetChangedFlag(true);
        grid_->Action(15);
        QCOMPARE(rows->RowCount(), std::size_t{2});
        QCOMPARE(rows->Stored(1)[0], dao::Variant(u"V2 bis"));
    }

    void ARefusedRowRaisesTheErrorAndLeavesNoEditBehind() {
        const auto rows = Visits(2);
        Bind(rows);
        Set(2, 1, QStringLiteral("double"));
        grid_->SetChangedFlag(true);
        rows->refusal = basic::error::kDuplicateKey;
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, grid_->Action(15));
        QCOMPARE(rows->EditMode(), dao::EditMode::None);
        QVERIFY(grid_->ChangedFlag());
        QCOMPARE(At(2, 1), QStringLiteral("double"));
    }

    void ATextThatIsNoDateIsRefusedAtTheSave() {
        Bind(Visits(1));
        Set(1, 3, QStringLiteral("demain"));
        grid_->SetChangedFlag(true);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, grid_->Action(15));
    }

    void AnUnboundGridHasNothingToSave() {
        grid_->SetMaxRows(1);
        Set(1, 1, QStringLiteral("x"));
        grid_->SetChangedFlag(true);
        grid_->Action(15);
        QVERIFY(grid_->ChangedFlag());
    }

    void AGridOutlivesItsDataControlAndTheOtherWayRound() {
        Bind(Visits(2));
        delete data_;
        QVERIFY(grid_->DataSource() == nullptr);
        QCOMPARE(grid_->MaxRows(), 0);
        auto data = std::make_unique<DataControl>();
        auto grid = std::make_unique<Grid>();
        grid->SetDataSource(data.get());
        grid.reset();
        data->SetRecordset(Visits(1));
    }

    // With a real file.

    void TheDueVisitsOfTheSampleAreListedInTheOrderOfTheStatement() {
        const support::Installation installation;
        grid_->SetColumnLines({QStringLiteral("Date prévue|DatePrev|9.88|date|locked"),
                               QStringLiteral("Immat.|TVEH_IMMAT|12.5|text|locked"),
                               QStringLiteral("Travaux|TVEH_DETAIL_TypTrav|7|text|locked")});
        grid_->SetDataSource(data_);
        data_->SetDatabaseName(QStringLiteral("C:\\QUARDELE\\DATA\\talmeon.mdb"));
        data_->SetRecordSource(QStringLiteral(
            "SELECT DateAdd('m',[TVEH_DETAIL_PERIOD],[TVEH_DETAIL_DATVIS]) AS DatePrev, TVEH.TVEH_IMMAT, "
            "TVEH_DETAIL.TVEH_DETAIL_TypTrav FROM TVEH_DETAIL LEFT JOIN TVEH ON "
            "TVEH_DETAIL.TVEH_DETAIL_Immat = "
            "TVEH.TVEH_IMMAT WHERE [TVEH_DETAIL_PERIOD]<> 0 ORDER BY TVEH.TVEH_IMMAT, "
            "TVEH_DETAIL.TVEH_DETAIL_TypTrav;"));
        data_->Refresh();
        QCOMPARE(grid_->MaxRows(), static_cast<int>(data_->Recordset()->RowCount()));
        QVERIFY(grid_->MaxRows() > 1000);
        const QString last = At(grid_->MaxRows(), 2);
        QVERIFY(last >= At(grid_->MaxRows() / 2, 2));
        data_->Recordset()->MoveLast();
        QCOMPARE(grid_->ActiveRow(), grid_->MaxRows());
    }

 private:
    void Bind(std::shared_ptr<MemoryRows> rows) {
        grid_->SetDataSource(data_);
        data_->SetRecordset(std::move(rows));
    }
    QString At(int row, int col) {
        grid_->SetRow(row);
        grid_->SetCol(col);
        return grid_->Text();
    }
    void Set(int row, int col, const QString& text) {
        grid_->SetRow(row);
        grid_->SetCol(col);
        grid_->SetText(text);
    }

    std::unique_ptr<test::Stage> stage_;
    DataControl* data_ = nullptr;
    Grid* grid_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::GridTest>(argc, argv);
}
#include "grid_test.moc"
