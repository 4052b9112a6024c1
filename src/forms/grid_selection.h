// The cursor of a grid: every move of Qt's views passes one gate, where it can be refused.
#pragma once

#include <functional>

#include <QItemSelectionModel>

namespace quardele::forms {

class GridSelection : public QItemSelectionModel {
    Q_OBJECT
 public:
    using Gate = std::function<bool(const QModelIndex& to)>;

    GridSelection(QAbstractItemModel* model, QObject* parent, Gate mayMove);

    /// A move by the operator.
    void setCurrentIndex(const QModelIndex& index, QItemSelectionModel::SelectionFlags command) override;
    /// A move by the program or after the current record: nobody is asked.
    void Place(const QModelIndex& index);

 private:
    Gate mayMove_;
};

}  // namespace quardele::forms
