// Keys and mouse of a grid.
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <forms/grid.h>
#include <forms/twips.h>

#include "grid_private.h"
#include "key_codes.h"

namespace quardele::forms {
namespace {

/// A click beside the box, but near, is meant for the box.
constexpr int kTickReach = 3;

bool AsksForMenu(const QKeyEvent& event) {
    return event.key() == Qt::Key_Menu ||
           (event.key() == Qt::Key_F10 && event.modifiers().testFlag(Qt::ShiftModifier));
}

}  // namespace

// Keys.

bool Grid::TellKey(const QKeyEvent& event) {
    int keyCode = KeyCodeOf(event);
    if (keyCode == 0) {
        return true;
    }
    emit KeyDown(keyCode, ShiftOf(event));
    return keyCode != 0;
}

void Grid::keyPressEvent(QKeyEvent* event) {
    if (OpenCell() != nullptr) {
        QTableView::keyPressEvent(event);  // the open cell had no use for it; it was told there
        return;
    }
    if (event->key() == Qt::Key_Escape && d_->notice->isVisible()) {
        d_->notice->TakeBack();
        return;
    }
    if (!TellKey(*event)) {
        return;
    }
    const QModelIndex cell = currentIndex();
    if (AsksForMenu(*event)) {
        if (cell.isValid()) {
            TellMenuKey(cell);
        }
        return;
    }
    if (KeyCodeOf(*event) == kKeyEnter) {
        if (IsEntryGrid()) {
            MoveToNextCell();
        }
        return;
    }
    if (event->key() == Qt::Key_Space && cell.isValid() && PressCell(cell.row(), cell.column())) {
        return;
    }
    const QScopedValueRollback<bool> opening(d_->opening, true);
    QTableView::keyPressEvent(event);
}

/// Qt would read every row of the list to look for a text that starts with the key.
void Grid::keyboardSearch(const QString& /*search*/) {}

/// Ticks a check cell the other way, presses a button cell; false for other cells.
bool Grid::PressCell(int modelRow, int modelColumn) {
    const GridColumn& column = model_->Column(modelColumn);
    if (column.IsTyped()) {
        return false;
    }
    if (model_->IsLocked(modelRow, modelColumn)) {
        return true;
    }
    int state = 1;
    if (column.type == CellType::CheckBox) {
        state = model_->IsTicked(modelRow, modelColumn) ? 0 : 1;
        model_->setData(model_->index(modelRow, modelColumn), QString::number(state), Qt::EditRole);
    }
    emit ButtonClicked(modelColumn + 1, modelRow + 1, state);
    return true;
}

// Mouse.

void Grid::mousePressEvent(QMouseEvent* event) {
    QTableView::mousePressEvent(event);
    const QModelIndex cell = indexAt(event->position().toPoint());
    // A refused move, or rows that a handler has replaced, make it no click.
    d_->pressed = cell == currentIndex() || event->button() == Qt::RightButton ? cell : QModelIndex();
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
    QTableView::mouseReleaseEvent(event);
    const QPoint position = event->position().toPoint();
    const QPersistentModelIndex cell = indexAt(position);
    const QPersistentModelIndex pressed = std::exchange(d_->pressed, QPersistentModelIndex());
    if (event->button() == Qt::RightButton) {
        TellRightClick(position, cell);
        return;
    }
    if (event->button() != Qt::LeftButton || !cell.isValid() || cell != pressed) {
        return;
    }
    const QRect rect = visualRect(cell);
    const bool check = model_->Column(cell.column()).type == CellType::CheckBox;
    const QRect target =
        check ? GridDelegate::TickRect(rect).adjusted(-kTickReach, -kTickReach, kTickReach, kTickReach)
              : GridDelegate::ButtonRect(rect);
    if (target.contains(position)) {
        PressCell(cell.row(), cell.column());
    }
    if (cell.isValid()) {
        emit Click(cell.column() + 1, cell.row() + 1);
    }
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPersistentModelIndex cell = indexAt(event->position().toPoint());
    QTableView::mouseDoubleClickEvent(event);
    const bool typed = cell.isValid() && model_->Column(cell.column()).IsTyped();
    if (event->button() == Qt::LeftButton && cell.isValid() && !typed) {
        d_->pressed = cell;  // two quick clicks on a box tick it twice
        return;
    }
    if (event->button() == Qt::LeftButton && cell.isValid() && cell == currentIndex()) {
        emit DblClick(cell.column() + 1, cell.row() + 1);
    }
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();  // RightClick comes from the key or the button itself
}

/// As a right click below the text of a cell, which is brought into view first: what opens stands beside it.
void Grid::TellMenuKey(const QModelIndex& cell) {
    scrollTo(cell);
    TellRightClick(visualRect(cell).intersected(viewport()->rect()).bottomLeft(), cell);
}

/// Position inside the viewport.
void Grid::TellRightClick(const QPoint& position, const QModelIndex& cell) {
    const QPoint inside = viewport()->mapTo(this, position);
    const int col = cell.isValid() ? cell.column() + 1 : -1;
    const int row = cell.isValid() ? cell.row() + 1 : -1;
    emit RightClick(0, col, row, ToTwips(inside.x()), ToTwips(inside.y()));
}

/// A click on a heading makes its column the active one; the row stays.
void Grid::HeadingPressed(int section, Qt::MouseButton button, const QPoint& position) {
    if (button == Qt::RightButton) {
        const QPoint inside = d_->header->viewport()->mapTo(this, position);
        emit RightClick(0, section + 1, 0, ToTwips(inside.x()), ToTwips(inside.y()));
        return;
    }
    if (button != Qt::LeftButton) {
        return;
    }
    setFocus(Qt::MouseFocusReason);
    if (currentIndex().isValid()) {
        d_->cursor->setCurrentIndex(model_->index(currentIndex().row(), section),
                                    QItemSelectionModel::NoUpdate);
    } else {
        d_->lastColumn = section;
        d_->beforeRow = false;
    }
    if (ActiveCol() == section + 1) {
        emit Click(section + 1, 0);
    }
}

void Grid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    QWidget::update();  // the frame, which Qt leaves alone
    viewport()->update();
    OpenActiveCell();
}

void Grid::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    QWidget::update();
    viewport()->update();
}

}  // namespace quardele::forms
