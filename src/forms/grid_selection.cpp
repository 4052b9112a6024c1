#include "grid_selection.h"

namespace quardele::forms {

GridSelection::GridSelection(QAbstractItemModel* model, QObject* parent, Gate mayMove, Listener chosenAgain)
    : QItemSelectionModel(model, parent),
      mayMove_(std::move(mayMove)),
      chosenAgain_(std::move(chosenAgain)) {}

void GridSelection::setCurrentIndex(const QModelIndex& index,
                                    QItemSelectionModel::SelectionFlags /*command*/) {
    const QPersistentModelIndex wanted = index;
    if (!wanted.isValid()) {
        return;
    }
    if (wanted == currentIndex()) {
        chosenAgain_();
    } else if (mayMove_(wanted) && wanted.isValid()) {
        Place(wanted);
    }
}

void GridSelection::Place(const QModelIndex& index) {
    QItemSelectionModel::setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

}  // namespace quardele::forms
