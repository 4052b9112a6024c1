// The cursor of a grid.
#include <QScopedValueRollback>

#include <forms/events.h>
#include <forms/grid.h>

#include "grid_private.h"

namespace quardele::forms {

int Grid::ActiveRow() const {
    return currentIndex().isValid() ? currentIndex().row() + 1 : 0;
}

int Grid::ActiveCol() const {
    return d_->beforeRow ? 0 : d_->lastColumn + 1;
}

void Grid::SetActiveCell(int col, int row) {
    const int modelRow = row >= 1 && model_->HasRow(row - 1) ? row - 1 : currentIndex().row();
    const int modelColumn = col >= 1 && col <= MaxCols() ? col - 1 : d_->lastColumn;
    if (modelRow < 0) {
        d_->lastColumn = modelColumn;
        d_->beforeRow = col == 0;
        return;
    }
    if (!d_->moving) {
        MakeRecordCurrent(modelRow);
    }
    {
        const QScopedValueRollback<bool> closed(d_->staysClosed, true);
        Place(modelRow, col == 0 ? 0 : modelColumn);
        d_->beforeRow = col == 0;
    }
    OpenActiveCell();
    viewport()->update();
}

void Grid::Place(int modelRow, int modelColumn) {
    d_->cursor->Place(model_->index(modelRow, modelColumn));
}

/// Wherever there are rows the cursor stands in one.
void Grid::PlaceSomewhere() {
    if (model_->Rows() > 0 && !currentIndex().isValid() && model_->columnCount() > 0) {
        Place(0, std::min(d_->lastColumn, model_->columnCount() - 1));
    }
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.isValid()) {
        d_->lastColumn = current.column();
        d_->beforeRow = false;
    }
    viewport()->update();  // lists show the whole active row
    OpenActiveCell();
}

/// A move by the operator may be refused; Qt's own, when rows go, is none.
bool Grid::MayMove(const QModelIndex& to) {
    if (d_->changingRows) {
        return true;
    }
    const bool may = AskToMove(to);
    if (!may) {
        OpenActiveCell();
    }
    return may;
}

/// The program may refuse it, and so may a changed row that cannot be saved.
bool Grid::AskToMove(const QPersistentModelIndex& wanted) {
    const int row = ActiveRow();
    const int col = ActiveCol();
    const QScopedValueRollback<bool> moving(d_->moving, true);
    const QScopedValueRollback<bool> closed(d_->staysClosed, true);
    CloseOpenCell();
    bool cancel = false;
    emit LeaveCell(col, row, wanted.column() + 1, wanted.row() + 1, cancel);
    if (cancel || !wanted.isValid()) {
        return false;
    }
    if (wanted.row() + 1 == row) {
        return true;
    }
    emit LeaveRow(row, wanted.row() + 1, cancel);
    if (cancel || !wanted.isValid()) {
        return false;
    }
    bool moved = false;
    RunHandler([&] {
        MakeRecordCurrent(wanted.row());
        moved = true;
    });
    return moved && wanted.isValid();
}

/// By the operator's keys. In front of a row, what lies to the right is its first cell. Ctrl+End leads to the
/// last of all rows, and a page is a whole one, found or not yet.
QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    constexpr int kMoreThanAPage = 256;
    if (d_->beforeRow && (action == MoveRight || action == MoveHome)) {
        MoveToNextCell();
        return currentIndex();
    }
    const bool toTheEnd = action == MoveEnd && modifiers.testFlag(Qt::ControlModifier);
    RunHandler([&] {
        if (toTheEnd) {
            model_->FindAllRows();
        } else {
            model_->FindRows(currentIndex().row() + kMoreThanAPage);
        }
    });
    return QTableView::moveCursor(action, modifiers);
}

/// Enter: to the next cell that is shown, from the last one to the first of the next row.
void Grid::MoveToNextCell() {
    int row = currentIndex().row();
    int column = d_->beforeRow ? -1 : currentIndex().column();
    do {
        if (++column >= model_->columnCount()) {
            column = 0;
            do {
                ++row;
            } while (model_->HasRow(row) && isRowHidden(row));
        }
    } while (row < model_->Rows() && isColumnHidden(column));
    if (!model_->HasRow(row)) {
        return;
    }
    d_->cursor->setCurrentIndex(model_->index(row, column), QItemSelectionModel::NoUpdate);
}

}  // namespace quardele::forms
