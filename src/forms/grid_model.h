// The cells of a grid, behind Qt's views. Rows of a recordset are read when somebody looks at them and then
// kept; what is kept of a row that nobody has looked at is one pointer.
//
// Rows and columns count from 0 here, as in all models of Qt.
#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <QAbstractTableModel>

#include <dao/dao.h>

#include "grid_columns.h"

namespace quardele::forms {

/// What a cell, a column or a heading has of its own; the rest comes from the column, then from the grid.
struct CellLook {
    std::optional<int> backColor;  ///< 0x00BBGGRR
    std::optional<bool> locked;
    std::optional<bool> italic;
    std::optional<bool> bold;
};

class GridModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    /// Asked before a bound cell takes its value; false leaves the cell as it is.
    using FillQuestion = std::function<bool(int row, int column, int dataType)>;

    explicit GridModel(QObject* parent);
    void SetFillQuestion(FillQuestion question) { mayFill_ = std::move(question); }

    // Columns.
    void SetColumns(std::vector<GridColumn> columns);
    [[nodiscard]] const std::vector<GridColumn>& Columns() const { return columns_; }
    [[nodiscard]] const GridColumn& Column(int column) const { return columns_[Position(column)]; }
    [[nodiscard]] GridColumn& Column(int column) { return columns_[Position(column)]; }
    /// The field that a column shows; null for an unbound one and while there is no recordset.
    [[nodiscard]] const dao::Field* FieldOf(int column) const;
    [[nodiscard]] int FieldIndexOf(int column) const { return fields_[Position(column)]; }

    // Rows.
    /// Those that are shown so far.
    [[nodiscard]] int Rows() const { return static_cast<int>(rows_.size()); }
    /// Cuts rows at the end or adds blank ones; the recordset keeps its own.
    void SetRows(int rows);
    /// Whether there is such a row: one of the recordset joins when it was not found yet.
    [[nodiscard]] bool HasRow(int row);
    /// Lets rows of the recordset join until so many are shown or no more are to come.
    void FindRows(int wanted);
    void FindAllRows() { FindRows(std::numeric_limits<int>::max()); }
    /// Shows the rows of a recordset in place of all that was shown; null for none. Those of a long one join
    /// as they are found: at first as many as a window can show, then as the end comes into view or somebody
    /// asks for a row behind it.
    void Bind(std::shared_ptr<dao::Recordset> recordset);
    [[nodiscard]] const std::shared_ptr<dao::Recordset>& Source() const { return recordset_; }
    /// The position in the recordset that a row shows; empty for a row that is in no recordset.
    [[nodiscard]] std::optional<long> RecordOf(int row) const;
    [[nodiscard]] std::optional<int> RowOf(long record);
    void SetRecord(int row, long record);
    /// Rows that were added to the recordset join at the end, if its rows are all shown.
    void TakeAddedRecords();

    // Loading.
    [[nodiscard]] bool IsLoaded(int row) const;
    /// Reads a row's bound cells, each after its fill question. Throws what reading throws.
    void Load(int row) const;
    /// The row is read again when somebody looks at it.
    void Unload(int row);
    /// While it is on, looking at a row through data() shows only what has been loaded.
    void SetLoadsOnSight(bool loads) { loadsOnSight_ = loads; }

    // Cells. Reading and writing load the row first.
    [[nodiscard]] QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);
    [[nodiscard]] bool IsTicked(int row, int column) const;
    [[nodiscard]] bool IsChanged(int row, int column) const;
    void SetChanged(int row, int column, bool changed);
    [[nodiscard]] bool IsRowChanged(int row) const;
    [[nodiscard]] bool HasData(int row) const;
    /// What the cell showed when it was loaded or saved last.
    [[nodiscard]] QString LoadedText(int row, int column) const;
    void SetLoadedText(int row, int column, const QString& text);
    /// What a cell of the column shows of a value.
    [[nodiscard]] QString TextFor(const basic::Variant& value, int column) const;
    /// A cell's look, the column's where the cell has none of its own.
    [[nodiscard]] CellLook Look(int row, int column) const;
    [[nodiscard]] CellLook& OwnLook(int row, int column);
    [[nodiscard]] CellLook& ColumnLook(int column) { return columnLooks_[Position(column)]; }
    [[nodiscard]] CellLook& HeadingLook(int column) { return headingLooks_[Position(column)]; }
    [[nodiscard]] const CellLook& HeadingLook(int column) const { return headingLooks_[Position(column)]; }
    /// Never while the grid is not protected.
    [[nodiscard]] bool IsLocked(int row, int column) const;
    [[nodiscard]] bool IsProtected() const { return protected_; }
    void SetProtected(bool on) { protected_ = on; }
    void CellsChanged(int row, int column);
    void HeadingChanged(int column);

    // For Qt.
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// The view comes near the end of the rows that are shown.
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// An operator's edit.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

 signals:
    /// An operator has changed a cell.
    void Edited(int row, int column);

 private:
    struct Cell {
        QString text;
        std::unique_ptr<CellLook> look;
        std::unique_ptr<QString> loaded;  ///< where it is another text
        bool changed = false;
    };
    struct Row {
        std::vector<Cell> cells;
        bool loaded = false;
        long record = -1;
    };

    [[nodiscard]] static std::size_t Position(int at) { return static_cast<std::size_t>(at); }
    /// The row's cells, made when first needed.
    Row& Made(int row) const;
    [[nodiscard]] const Cell* CellAt(int row, int column) const;
    void FindFields();
    void Fill(int row, int column) const;
    [[nodiscard]] QString ShownValue(long record, int column) const;
    [[nodiscard]] QString AccessibleText(int row, int column) const;
    [[nodiscard]] QVariant Shown(int row, int column, int role) const;
    void RemoveRows(int rows);
    void AppendRows(int rows);

    std::vector<GridColumn> columns_;
    std::vector<CellLook> columnLooks_;
    std::vector<CellLook> headingLooks_;
    std::vector<int> fields_;  ///< positions in the recordset, -1 for none
    std::shared_ptr<dao::Recordset> recordset_;
    /// Loading is no change that anybody can see: const as far as readers are concerned.
    mutable std::vector<std::unique_ptr<Row>> rows_;
    int boundRows_ = 0;   ///< rows from the recordset: the first ones, in its order
    bool grows_ = false;  ///< rows of the recordset join behind them as they are found
    FillQuestion mayFill_;
    bool loadsOnSight_ = true;
    bool protected_ = true;
};

}  // namespace quardele::forms
