#include "rows_model.h"

#include <basic/runtime_error.h>
#include <forms/strings.h>

#include "field_text.h"

namespace quardele::forms {
namespace {

int PositionOf(const dao::Recordset& recordset, const QString& field) {
    try {
        return recordset.FieldIndex(ToText(field));
    } catch (const basic::RuntimeError&) {
        return -1;
    }
}

}  // namespace

void RowsModel::SetRows(std::shared_ptr<dao::Recordset> recordset, const QStringList& fields) {
    beginResetModel();
    recordset_ = std::move(recordset);
    fields_.clear();
    for (const QString& field : fields) {
        fields_.push_back(recordset_ == nullptr ? -1 : PositionOf(*recordset_, field));
    }
    endResetModel();
}

int RowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || recordset_ == nullptr ? 0 : static_cast<int>(recordset_->RowCount());
}

int RowsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QString RowsModel::Shown(int row, int column) const {
    const int field = fields_[static_cast<std::size_t>(column)];
    if (field < 0) {
        return {};
    }
    try {
        return ShownText(recordset_->ValueAt(static_cast<std::size_t>(row), field));
    } catch (const basic::RuntimeError&) {
        return {};  // somebody has deleted the row
    }
}

QVariant RowsModel::data(const QModelIndex& index, int role) const {
    const bool wanted = role == Qt::DisplayRole || role == Qt::EditRole;
    return wanted && checkIndex(index, CheckIndexOption::IndexIsValid)
               ? QVariant(Shown(index.row(), index.column()))
               : QVariant();
}

int RowsModel::RowOf(const QString& text) const {
    if (fields_.empty() || text.isEmpty()) {
        return -1;
    }
    const int rows = rowCount();
    for (int row = 0; row < rows; ++row) {
        if (Shown(row, 0) == text) {
            return row;
        }
    }
    return -1;
}

}  // namespace quardele::forms
