// Paints the cells of a grid and edits them in place.
#pragma once

#include <QKeyEvent>
#include <QStyledItemDelegate>

class QLineEdit;

namespace quardele::forms {

class Grid;
class GridModel;

class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    GridDelegate(Grid& grid, GridModel& model);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Where the text of a cell stands. Narrow columns need all their width: a text keeps its distance from
    /// the line that it leans on only.
    [[nodiscard]] static QRect TextRect(const QRect& cell, Qt::Alignment alignment);
    /// Where a tick box stands in its cell.
    [[nodiscard]] static QRect TickRect(const QRect& cell);
    /// Where the face of a button cell stands.
    [[nodiscard]] static QRect ButtonRect(const QRect& cell);

 signals:
    /// The operator has typed into the open cell.
    void Typed();
    /// A key in the open cell; true in `taken` keeps it from the cell.
    void KeyInEditor(QKeyEvent* event, bool& taken);

 private:
    [[nodiscard]] QColor BackOf(const QModelIndex& index) const;
    [[nodiscard]] bool IsActive(const QModelIndex& index) const;
    /// Changed and waiting for a save.
    [[nodiscard]] bool IsPending(const QModelIndex& index) const;
    [[nodiscard]] QFont FontOf(const QModelIndex& index) const;
    void PaintContent(QPainter& painter, const QRect& rect, const QModelIndex& index) const;
    void PaintText(QPainter& painter, const QRect& rect, const QModelIndex& index) const;
    void PaintButton(QPainter& painter, const QRect& rect, const QModelIndex& index) const;
    [[nodiscard]] bool HasNoHistory(const QModelIndex& index) const;

    Grid& grid_;
    GridModel& model_;
};

}  // namespace quardele::forms
