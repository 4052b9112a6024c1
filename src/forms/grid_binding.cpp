// A grid and its data control: rows, the current record, saving.
#include <QScopedValueRollback>

#include <basic/runtime_error.h>
#include <forms/events.h>
#include <forms/grid.h>

#include "field_text.h"
#include "grid_private.h"

namespace quardele::forms {

void Grid::SetDataSource(DataControl* source) {
    if (source == dataSource_) {
        return;
    }
    if (dataSource_ != nullptr) {
        dataSource_->DetachView(this);
    }
    dataSource_ = source;
    if (dataSource_ != nullptr) {
        dataSource_->AttachView(this);
    }
}

void Grid::SourceGone() {
    dataSource_ = nullptr;
    ChangeRows(0, [this] { model_->Bind(nullptr); });
}

std::shared_ptr<dao::Recordset> Grid::Rows() const {
    return dataSource_ == nullptr ? nullptr : dataSource_->Recordset();
}

int Grid::MaxRows() const {
    model_->FindAllRows();
    return model_->Rows();
}

void Grid::SetMaxRows(int rows) {
    const int wanted = std::max(rows, 0);
    ChangeRows(wanted, [&] { model_->SetRows(wanted); });
}

/// A cell that stands open behind the rows that are kept is dropped with what was typed there.
void Grid::ChangeRows(int kept, const std::function<void()>& change) {
    {
        const QScopedValueRollback<bool> changing(d_->changingRows, true);
        const QScopedValueRollback<bool> closed(d_->staysClosed, true);
        if (currentIndex().row() >= kept) {
            DropOpenCell();
        }
        change();
    }
    PlaceSomewhere();
    OpenActiveCell();
}

int Grid::MaxCols() const {
    return model_->columnCount();
}

int Grid::DataRowCnt() const {
    int row = MaxRows();
    while (row > 0 && !model_->HasData(row - 1)) {
        --row;
    }
    return row;
}

void Grid::RowsReplaced() {
    const std::shared_ptr<dao::Recordset> rows = Rows();
    if (rows == nullptr) {
        return;
    }
    ChangeRows(0, [&] { model_->Bind(rows); });
    CurrentRowMoved();
    if (isVisible()) {
        LoadRowsInView();
    }
}

/// The cursor follows the current record, unless it is the cursor that made it current.
void Grid::CurrentRowMoved() {
    const std::shared_ptr<dao::Recordset> rows = Rows();
    const bool follows = !d_->movesRecord && !d_->saving && rows != nullptr && rows == model_->Source() &&
                         rows->EditMode() != dao::EditMode::Add;
    if (!follows) {
        return;
    }
    if (const std::optional<int> row = model_->RowOf(rows->AbsolutePosition())) {
        Place(*row, d_->lastColumn);
    }
}

void Grid::RowsChanged() {
    const std::shared_ptr<dao::Recordset> rows = Rows();
    if (d_->saving || rows == nullptr || rows != model_->Source()) {
        return;
    }
    model_->TakeAddedRecords();
    const std::optional<int> row = model_->RowOf(rows->AbsolutePosition());
    if (row && !model_->IsRowChanged(*row)) {
        model_->Unload(*row);
    }
    viewport()->update();
    if (isVisible()) {
        LoadRowsInView();
    }
}

/// False when there is no such record; throws when the row that is left cannot be saved.
bool Grid::MakeRecordCurrent(int modelRow) {
    const std::shared_ptr<dao::Recordset> rows = Rows();
    const std::optional<long> record = model_->RecordOf(modelRow);
    if (rows == nullptr || rows != model_->Source() || !record || rows->AbsolutePosition() == *record) {
        return false;
    }
    const QScopedValueRollback<bool> moves(d_->movesRecord, true);
    rows->SetAbsolutePosition(*record);
    return true;
}

// Loading.

bool Grid::HasUnloadedRowsInView() const {
    const int first = rowAt(0);
    for (int row = std::max(first, 0); first >= 0 && row < model_->Rows(); ++row) {
        if (isRowHidden(row)) {
            continue;
        }
        if (rowViewportPosition(row) >= viewport()->height()) {
            break;
        }
        if (!model_->IsLoaded(row)) {
            return true;
        }
    }
    return false;
}

void Grid::LoadRowsInView() {
    if (!HasUnloadedRowsInView()) {
        return;
    }
    RunHandler([this] {
        const int first = std::max(rowAt(0), 0);
        for (int row = first; row < model_->Rows() && rowViewportPosition(row) < viewport()->height();
             ++row) {
            if (!isRowHidden(row)) {
                model_->Load(row);
            }
        }
    });
    viewport()->update();
}

// Saving.

void Grid::Action(int action) {
    constexpr int kActiveCell = 0;
    constexpr int kSave = 15;
    if (action == kActiveCell) {
        SetActiveCell(col_, row_);
    } else if (action == kSave) {
        SaveChangedRows();
    } else {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
}

void Grid::SaveChangedRows() {
    CloseOpenCell();
    const std::shared_ptr<dao::Recordset> rows = Rows();
    if (rows == nullptr || rows != model_->Source()) {
        return;
    }
    {
        const QScopedValueRollback<bool> saving(d_->saving, true);
        for (int row = 0; row < model_->Rows(); ++row) {
            if (model_->IsRowChanged(row)) {
                SaveRow(*rows, row);
            }
        }
    }
    MakeRecordCurrent(currentIndex().row());
}

void Grid::SaveRow(dao::Recordset& rows, int modelRow) {
    const std::optional<long> record = model_->RecordOf(modelRow);
    if (record) {
        rows.SetAbsolutePosition(*record);
        rows.Edit();
    } else {
        rows.AddNew();
    }
    try {
        for (int column = 0; column < model_->columnCount(); ++column) {
            if (model_->FieldOf(column) != nullptr && model_->IsChanged(modelRow, column)) {
                SaveCell(rows, modelRow, column);
            }
        }
        rows.Update();
    } catch (...) {
        rows.CancelUpdate();
        throw;
    }
    if (!record) {
        model_->SetRecord(modelRow, static_cast<long>(rows.RowCount()) - 1);
    }
    for (int column = 0; column < model_->columnCount(); ++column) {
        if (model_->IsChanged(modelRow, column)) {
            model_->SetLoadedText(modelRow, column, model_->Text(modelRow, column));
            model_->SetChanged(modelRow, column, false);
        }
    }
}

/// Nobody's change is written over unseen. A cell that shows what was loaded has nothing of its own to save,
/// and takes what somebody else has stored since; where both have changed it the operator is told, once.
void Grid::SaveCell(dao::Recordset& rows, int modelRow, int column) {
    const int field = model_->FieldIndexOf(column);
    const QString text = model_->Text(modelRow, column);
    const bool isNew = rows.EditMode() == dao::EditMode::Add;
    const QString loaded = model_->LoadedText(modelRow, column);
    const QString stored = isNew ? loaded : model_->TextFor(rows.Value(field), column);
    if (stored == loaded || stored == text) {
        rows.SetValue(field, FieldValue(text, *model_->FieldOf(column)));
    } else if (text == loaded) {
        model_->SetText(modelRow, column, stored);
    } else {
        model_->SetLoadedText(modelRow, column, stored);
        throw basic::RuntimeError(basic::error::kRecordChanged);
    }
}

}  // namespace quardele::forms
