#include "grid_model.h"

#include <algorithm>

#include <QScopedValueRollback>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <forms/events.h>
#include <forms/strings.h>

#include "field_text.h"

namespace quardele::forms {
namespace {

/// More than a window shows.
constexpr int kFirstRows = 256;

/// What an unfilled cell of a row that was never looked at says.
const QString& Nothing() {
    static const QString nothing;
    return nothing;
}

int FieldPosition(const dao::Recordset* recordset, const QString& name) {
    if (recordset == nullptr || name.isEmpty()) {
        return -1;
    }
    const std::vector<dao::Field>& fields = recordset->Fields();
    const basic::Text wanted = ToText(name);
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const dao::Field& field) {
        return basic::EqualNoCase(field.name, wanted);
    });
    return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

QString TickText(const basic::Variant& value) {
    const std::optional<double> number = basic::NumberOf(value);
    return number.value_or(0) != 0 ? QStringLiteral("1") : QStringLiteral("0");
}

}  // namespace

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent) {}

// Columns.

void GridModel::SetColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    columns_ = std::move(columns);
    columnLooks_.assign(columns_.size(), {});
    headingLooks_.assign(columns_.size(), {});
    rows_.clear();
    rows_.resize(recordset_ == nullptr ? 0 : recordset_->RowsFound(kFirstRows));
    boundRows_ = Rows();
    grows_ = boundRows_ >= kFirstRows;
    FindFields();
    endResetModel();
}

void GridModel::FindFields() {
    fields_.clear();
    for (const GridColumn& column : columns_) {
        fields_.push_back(FieldPosition(recordset_.get(), column.field));
    }
}

const dao::Field* GridModel::FieldOf(int column) const {
    const int field = FieldIndexOf(column);
    return field < 0 ? nullptr : &recordset_->Fields()[Position(field)];
}

// Rows.

void GridModel::RemoveRows(int rows) {
    if (rows > 0) {
        beginRemoveRows({}, Rows() - rows, Rows() - 1);
        rows_.resize(Position(Rows() - rows));
        boundRows_ = std::min(boundRows_, Rows());
        endRemoveRows();
    }
}

void GridModel::AppendRows(int rows) {
    if (rows > 0) {
        // Whoever looks at the new rows at once sees them blank: events of rows wait until the change is
        // complete.
        const QScopedValueRollback<bool> waits(loadsOnSight_, false);
        beginInsertRows({}, Rows(), Rows() + rows - 1);
        rows_.resize(Position(Rows() + rows));
        endInsertRows();
    }
}

bool GridModel::HasRow(int row) {
    if (row >= 0) {
        FindRows(row + 1);
    }
    return row >= 0 && row < Rows();
}

void GridModel::FindRows(int wanted) {
    if (!grows_ || wanted <= Rows()) {
        return;
    }
    const int before = boundRows_;
    boundRows_ = static_cast<int>(recordset_->RowsFound(Position(wanted)));
    grows_ = boundRows_ >= wanted;
    AppendRows(boundRows_ - before);
}

void GridModel::SetRows(int rows) {
    FindRows(rows);
    grows_ = false;
    RemoveRows(Rows() - rows);
    AppendRows(rows - Rows());
}

void GridModel::Bind(std::shared_ptr<dao::Recordset> recordset) {
    RemoveRows(Rows());
    recordset_ = std::move(recordset);
    FindFields();
    boundRows_ = 0;
    grows_ = recordset_ != nullptr;
    FindRows(kFirstRows);
}

std::optional<long> GridModel::RecordOf(int row) const {
    if (row >= 0 && row < boundRows_) {
        return row;
    }
    const Row* made = row >= 0 && row < Rows() ? rows_[Position(row)].get() : nullptr;
    return made == nullptr || made->record < 0 ? std::nullopt : std::optional<long>(made->record);
}

std::optional<int> GridModel::RowOf(long record) {
    if (grows_ && record >= 0) {
        FindRows(static_cast<int>(record) + 1);
    }
    if (record >= 0 && record < boundRows_) {
        return static_cast<int>(record);
    }
    for (int row = boundRows_; row < Rows(); ++row) {
        if (RecordOf(row) == record) {
            return row;
        }
    }
    return std::nullopt;
}

void GridModel::SetRecord(int row, long record) {
    Made(row).record = record;
}

void GridModel::TakeAddedRecords() {
    const bool showsAll = recordset_ != nullptr && !grows_ && boundRows_ == Rows();
    const int records = showsAll ? static_cast<int>(recordset_->RowCount()) : 0;
    if (records > boundRows_) {
        const int added = records - boundRows_;
        boundRows_ = records;
        AppendRows(added);
    }
}

// Loading.

GridModel::Row& GridModel::Made(int row) const {
    std::unique_ptr<Row>& place = rows_[Position(row)];
    if (place == nullptr) {
        place = std::make_unique<Row>();
        place->cells.resize(columns_.size());
    }
    return *place;
}

const GridModel::Cell* GridModel::CellAt(int row, int column) const {
    const Row* made = rows_[Position(row)].get();
    return made == nullptr ? nullptr : &made->cells[Position(column)];
}

bool GridModel::IsLoaded(int row) const {
    const Row* made = rows_[Position(row)].get();
    return row >= boundRows_ || (made != nullptr && made->loaded);
}

void GridModel::Unload(int row) {
    if (rows_[Position(row)] != nullptr) {
        rows_[Position(row)]->loaded = false;
    }
}

void GridModel::Load(int row) const {
    if (IsLoaded(row)) {
        return;
    }
    Made(row).loaded = true;
    const int columns = static_cast<int>(columns_.size());
    for (int column = 0; column < columns; ++column) {
        const dao::Field* field = FieldOf(column);
        if (field == nullptr) {
            continue;
        }
        const bool wanted = mayFill_ == nullptr || mayFill_(row, column, static_cast<int>(field->type));
        if (row >= boundRows_) {
            return;  // a handler has emptied the grid
        }
        if (wanted) {
            Fill(row, column);
        }
    }
}

void GridModel::Fill(int row, int column) const {
    Cell& cell = Made(row).cells[Position(column)];
    cell.text = ShownValue(row, column);
    cell.loaded.reset();
    cell.changed = false;
}

QString GridModel::ShownValue(long record, int column) const {
    try {
        const basic::Variant value =
            recordset_->ValueAt(Position(static_cast<int>(record)), FieldIndexOf(column));
        return TextFor(value, column);
    } catch (const basic::RuntimeError& error) {
        if (error.Number() == basic::error::kRecordDeleted) {
            return {};  // somebody has deleted the row; it shows blank
        }
        throw;
    }
}

QString GridModel::TextFor(const basic::Variant& value, int column) const {
    return Column(column).type == CellType::CheckBox ? TickText(value) : ShownText(value);
}

// Cells.

QString GridModel::Text(int row, int column) const {
    Load(row);
    const Cell* cell = CellAt(row, column);
    return cell == nullptr ? Nothing() : cell->text;
}

void GridModel::SetText(int row, int column, const QString& text) {
    Load(row);
    Cell& cell = Made(row).cells[Position(column)];
    if (cell.loaded == nullptr && text != cell.text) {
        cell.loaded = std::make_unique<QString>(cell.text);
    }
    cell.text = text;
    CellsChanged(row, column);
}

QString GridModel::LoadedText(int row, int column) const {
    const Cell* cell = CellAt(row, column);
    return cell == nullptr || cell->loaded == nullptr ? Text(row, column) : *cell->loaded;
}

void GridModel::SetLoadedText(int row, int column, const QString& text) {
    Made(row).cells[Position(column)].loaded = std::make_unique<QString>(text);
}

bool GridModel::IsTicked(int row, int column) const {
    return basic::Val(ToText(Text(row, column))) != 0;
}

bool GridModel::IsChanged(int row, int column) const {
    const Cell* cell = CellAt(row, column);
    return cell != nullptr && cell->changed;
}

void GridModel::SetChanged(int row, int column, bool changed) {
    if (changed != IsChanged(row, column)) {
        Load(row);
        Made(row).cells[Position(column)].changed = changed;
        CellsChanged(row, column);
    }
}

bool GridModel::IsRowChanged(int row) const {
    const Row* made = rows_[Position(row)].get();
    return made != nullptr &&
           std::any_of(made->cells.begin(), made->cells.end(), [](const Cell& cell) { return cell.changed; });
}

bool GridModel::HasData(int row) const {
    Load(row);
    const Row* made = rows_[Position(row)].get();
    return made != nullptr && std::any_of(made->cells.begin(), made->cells.end(),
                                          [](const Cell& cell) { return !cell.text.isEmpty(); });
}

CellLook GridModel::Look(int row, int column) const {
    CellLook look = columnLooks_[Position(column)];
    const Cell* cell = CellAt(row, column);
    if (cell != nullptr && cell->look != nullptr) {
        const CellLook& own = *cell->look;
        look.backColor = own.backColor ? own.backColor : look.backColor;
        look.locked = own.locked ? own.locked : look.locked;
        look.italic = own.italic ? own.italic : look.italic;
        look.bold = own.bold ? own.bold : look.bold;
    }
    return look;
}

CellLook& GridModel::OwnLook(int row, int column) {
    Load(row);
    std::unique_ptr<CellLook>& look = Made(row).cells[Position(column)].look;
    if (look == nullptr) {
        look = std::make_unique<CellLook>();
    }
    return *look;
}

bool GridModel::IsLocked(int row, int column) const {
    return protected_ && Look(row, column).locked.value_or(Column(column).locked);
}

void GridModel::CellsChanged(int row, int column) {
    const QModelIndex cell = index(row, column);
    emit dataChanged(cell, cell);
}

void GridModel::HeadingChanged(int column) {
    emit headerDataChanged(Qt::Horizontal, column, column);
}

// For Qt.

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Rows();
}

bool GridModel::canFetchMore(const QModelIndex& parent) const {
    return !parent.isValid() && grows_;
}

/// Twice as many each time: few steps lead to the end of the longest list.
void GridModel::fetchMore(const QModelIndex& parent) {
    if (!parent.isValid()) {
        RunHandler([this] { FindRows(2 * Rows()); });
    }
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    if (loadsOnSight_) {
        RunHandler([&] { Load(index.row()); });
    }
    if (index.row() >= Rows()) {
        return {};  // a handler has emptied the grid
    }
    return Shown(index.row(), index.column(), role);
}

QVariant GridModel::Shown(int row, int column, int role) const {
    const Cell* cell = CellAt(row, column);
    const QString& text = cell == nullptr ? Nothing() : cell->text;
    switch (role) {
        case Qt::DisplayRole:
            return Column(column).IsTyped() ? text : QString();
        case Qt::EditRole:
            return text;
        case Qt::CheckStateRole:
            if (Column(column).type == CellType::CheckBox) {
                return basic::Val(ToText(text)) != 0 ? Qt::Checked : Qt::Unchecked;
            }
            return {};
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Column(column).Alignment());
        case Qt::AccessibleTextRole:
            return AccessibleText(row, column);
        default:
            return {};
    }
}

QString GridModel::AccessibleText(int row, int column) const {
    const GridColumn& kind = Column(column);
    const Cell* cell = CellAt(row, column);
    QStringList parts{QString(kind.heading).replace(u'\n', u' ')};
    if (kind.type == CellType::CheckBox) {
        const bool ticked = cell != nullptr && basic::Val(ToText(cell->text)) != 0;
        parts.push_back(ticked ? QStringLiteral("coché") : QStringLiteral("non coché"));
    } else if (cell != nullptr && !cell->text.isEmpty()) {
        parts.push_back(cell->text);
    }
    if (IsLocked(row, column)) {
        parts.push_back(QStringLiteral("verrouillé"));
    }
    return parts.join(QStringLiteral(", "));
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || section < 0 || section >= columnCount()) {
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    switch (role) {
        case Qt::DisplayRole:
            return Column(section).heading;
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(Column(section).Alignment());
        default:
            return {};
    }
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    const bool typed = Column(index.column()).IsTyped() && !IsLocked(index.row(), index.column());
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren |
           (typed ? Qt::ItemIsEditable : Qt::NoItemFlags);
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const bool editable = role == Qt::EditRole && checkIndex(index, CheckIndexOption::IndexIsValid) &&
                          !IsLocked(index.row(), index.column());
    if (!editable) {
        return false;
    }
    RunHandler([&] { Load(index.row()); });
    Made(index.row()).cells[Position(index.column())].changed = true;
    SetText(index.row(), index.column(), value.toString());
    emit Edited(index.row(), index.column());
    return true;
}

}  // namespace quardele::forms
