// The cell of a grid that stands open for typing.
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <forms/grid.h>

#include "grid_private.h"
#include "key_codes.h"

namespace quardele::forms {
namespace {

bool IsTab(const QKeyEvent& event) {
    return event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
}

/// Whether an arrow to the side has nothing to pass in the text: nothing was typed yet, or the caret stands
/// at that end.
bool StepsOut(const QLineEdit& editor, int key) {
    const bool whole = editor.selectedText() == editor.text();
    if (!whole && editor.hasSelectedText()) {
        return false;
    }
    return whole || editor.cursorPosition() == (key == Qt::Key_Left ? 0 : editor.text().size());
}

}  // namespace

bool Grid::EditModePermanent() const {
    return d_->editModePermanent;
}

void Grid::SetEditModePermanent(bool permanent) {
    d_->editModePermanent = permanent;
    OpenActiveCell();
}

bool Grid::EditModeReplace() const {
    return d_->editModeReplace;
}

void Grid::SetEditModeReplace(bool replace) {
    d_->editModeReplace = replace;
    auto* const editor = qobject_cast<QLineEdit*>(OpenCell());
    if (replace && editor != nullptr && !editor->isModified()) {
        editor->selectAll();
    }
}

QWidget* Grid::OpenCell() const {
    return indexWidget(currentIndex());
}

bool Grid::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    // A refused move leaves the cursor where it was: the cell that was clicked must not open.
    if (index != currentIndex() || !QTableView::edit(index, trigger, event)) {
        return false;
    }
    // Qt has selected the content.
    auto* const editor = qobject_cast<QLineEdit*>(OpenCell());
    if (editor != nullptr && !d_->editModeReplace && trigger != AnyKeyPressed) {
        editor->end(false);
    }
    return true;
}

/// In permanent edit mode, wherever the cursor stands while the grid has the focus.
void Grid::OpenActiveCell() {
    const bool opens = d_->editModePermanent && !d_->staysClosed && !d_->beforeRow &&
                       currentIndex().isValid() && HasFocusInside() && OpenCell() == nullptr;
    if (opens) {
        edit(currentIndex(), AllEditTriggers, nullptr);
    }
}

void Grid::CloseOpenCell() {
    QWidget* editor = OpenCell();
    if (editor == nullptr) {
        return;
    }
    const QScopedValueRollback<bool> closed(d_->staysClosed, true);
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);  // the focus goes to the grid
}

/// Without taking what was typed.
void Grid::DropOpenCell() {
    if (QWidget* editor = OpenCell()) {
        const QScopedValueRollback<bool> closed(d_->staysClosed, true);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

/// Keys arrive at the open cell, but they are the grid's keys.
void Grid::KeyInEditor(QKeyEvent* event, bool& taken) {
    if (d_->opening) {
        return;  // told before the cell opened
    }
    taken = KeyLeavesCell(*event);
    if (taken) {
        LeaveOpenCell(event);
    } else {
        taken = !TellKey(*event);
    }
}

bool Grid::KeyLeavesCell(const QKeyEvent& event) const {
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right: {
            const auto* editor = qobject_cast<const QLineEdit*>(OpenCell());
            return d_->editModePermanent && editor != nullptr &&
                   !event.modifiers().testFlag(Qt::ShiftModifier) && StepsOut(*editor, event.key());
        }
        default:
            return KeyCodeOf(event) == kKeyEnter;
    }
}

/// What was typed is taken first, so that handlers read it. Tab goes on to the next control, as it does from
/// a closed cell.
void Grid::LeaveOpenCell(QKeyEvent* event) {
    {
        const QScopedValueRollback<bool> closed(d_->staysClosed, true);
        CloseOpenCell();
        if (IsTab(*event)) {
            focusNextPrevChild(event->key() == Qt::Key_Tab);
        } else {
            keyPressEvent(event);
        }
    }
    OpenActiveCell();
}

}  // namespace quardele::forms
