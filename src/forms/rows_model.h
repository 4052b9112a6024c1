// The rows of a recordset as a table for Qt's views: values are read as they are looked at.
#pragma once

#include <memory>
#include <vector>

#include <QAbstractTableModel>
#include <QStringList>

#include <dao/dao.h>

namespace quardele::forms {

class RowsModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Null for no rows. Fields that the recordset lacks show as blank.
    void SetRows(std::shared_ptr<dao::Recordset> recordset, const QStringList& fields);
    /// The first row whose first column shows this text; -1 when there is none.
    [[nodiscard]] int RowOf(const QString& text) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
    [[nodiscard]] QString Shown(int row, int column) const;

    std::shared_ptr<dao::Recordset> recordset_;
    std::vector<int> fields_;  ///< positions in the recordset, -1 for none
};

}  // namespace quardele::forms
