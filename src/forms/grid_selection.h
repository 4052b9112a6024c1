// The cursor of a grid: every move of Qt's views passes one gate, where it can be refused.
#pragma once

#include <functional>

#include <QItemSelectionModel>

namespace quardele::forms {

class GridSelection : public QItemSelectionModel {
    Q_OBJECT
 public:
    using Gate = std::function<bool(const QModelIndex& to)>;
    using Listener = std::function<void()>;

    /// `chosenAgain` hears of a move to the cell where the cursor stands already, which is none.
    GridSelection(QAbstractItemModel* model, QObject* parent, Gate mayMove, Listener chosenAgain);

    /// A move by the operator.
    void setCurrentIndex(const QModelIndex& index, QItemSelectionModel::SelectionFlags command) override;
    /// A move by the program or after the current record: nobody is asked.
    void Place(const QModelIndex& index);

 private:
    Gate mayMove_;
    Listener chosenAgain_;
};

}  // namespace quardele::forms
