// The addressed cell: Row and Col, 0 for headers, -1 for all.
#include <algorithm>
#include <cmath>

#include <QHeaderView>

#include <basic/conversion.h>
#include <basic/runtime_error.h>
#include <forms/control_font.h>
#include <forms/grid.h>
#include <forms/strings.h>

#include "grid_private.h"

namespace quardele::forms {
namespace {

constexpr int kAll = -1;
constexpr int kHeader = 0;
constexpr int kWhite = 0xFFFFFF;

bool IsTruth(const QString& text) {
    return basic::Val(ToText(text)) != 0;
}

}  // namespace

bool Grid::AddressesCell() const {
    return model_->HasRow(row_ - 1) && col_ >= 1 && col_ <= MaxCols();
}

bool Grid::AddressesHeading() const {
    return row_ == kHeader && col_ >= 1 && col_ <= MaxCols();
}

void Grid::ForEachAddressed(const std::function<void(int row, int column)>& act) {
    const int firstRow = row_ == kAll ? 1 : row_;
    const int lastRow = row_ == kAll ? MaxRows() : model_->HasRow(row_ - 1) ? row_ : 0;
    const int firstColumn = col_ == kAll ? 1 : col_;
    const int lastColumn = col_ == kAll ? MaxCols() : std::min(col_, MaxCols());
    if (firstRow < 1 || firstColumn < 1) {
        return;
    }
    for (int row = firstRow; row <= lastRow; ++row) {
        for (int column = firstColumn; column <= lastColumn; ++column) {
            act(row - 1, column - 1);
        }
    }
}

QString Grid::DataField() const {
    return col_ >= 1 && col_ <= MaxCols() ? model_->Column(col_ - 1).field : QString();
}

// Texts.

QString Grid::Text() const {
    if (AddressesHeading()) {
        return model_->Column(col_ - 1).heading;
    }
    if (col_ == kHeader) {
        const auto found = d_->rowHeaderTexts.find(row_);
        return found == d_->rowHeaderTexts.end() ? QString() : found->second;
    }
    return AddressesCell() ? model_->Text(row_ - 1, col_ - 1) : QString();
}

void Grid::SetText(const QString& text) {
    if (AddressesHeading()) {
        model_->Column(col_ - 1).heading = text;
        model_->HeadingChanged(col_ - 1);
        updateGeometries();
        return;
    }
    if (col_ == kHeader) {
        d_->rowHeaderTexts[row_] = text;
        return;
    }
    ForEachAddressed([&](int row, int column) {
        const bool tick = model_->Column(column).type == CellType::CheckBox;
        model_->SetText(row, column, tick ? QString::number(IsTruth(text) ? 1 : 0) : text);
    });
}

QString Grid::Value() const {
    if (AddressesCell() && CellType() == CellType::CheckBox) {
        return QString::number(model_->IsTicked(row_ - 1, col_ - 1) ? 1 : 0);
    }
    return Text();
}

void Grid::SetValue(int value) {
    SetText(QString::number(value));
}

forms::CellType Grid::CellType() const {
    return col_ >= 1 && col_ <= MaxCols() ? model_->Column(col_ - 1).type : CellType::Edit;
}

bool Grid::ChangedFlag() const {
    return AddressesCell() && model_->IsChanged(row_ - 1, col_ - 1);
}

void Grid::SetChangedFlag(bool changed) {
    ForEachAddressed([&](int row, int column) { model_->SetChanged(row, column, changed); });
}

// Look.

CellLook Grid::AddressedLook() const {
    if (AddressesHeading()) {
        return model_->HeadingLook(col_ - 1);
    }
    if (AddressesCell()) {
        model_->Load(row_ - 1);
        return model_->Look(row_ - 1, col_ - 1);
    }
    return row_ == kAll && col_ >= 1 && col_ <= MaxCols() ? model_->ColumnLook(col_ - 1) : CellLook();
}

void Grid::SetLook(const std::function<void(CellLook&)>& set) {
    if (AddressesHeading()) {
        set(model_->HeadingLook(col_ - 1));
        model_->HeadingChanged(col_ - 1);
        d_->header->viewport()->update();
        return;
    }
    if (row_ == kAll && col_ >= 1 && col_ <= MaxCols()) {
        set(model_->ColumnLook(col_ - 1));
        viewport()->update();
        return;
    }
    ForEachAddressed([&](int row, int column) {
        set(model_->OwnLook(row, column));
        model_->CellsChanged(row, column);
    });
}

bool Grid::Lock() const {
    const bool column = col_ >= 1 && col_ <= MaxCols() && model_->Column(col_ - 1).locked;
    return AddressedLook().locked.value_or(column);
}

void Grid::SetLock(bool locked) {
    SetLook([&](CellLook& look) { look.locked = locked; });
}

bool Grid::Protect() const {
    return model_->IsProtected();
}

void Grid::SetProtect(bool protect) {
    model_->SetProtected(protect);
    viewport()->update();
}

int Grid::BackColor() const {
    return AddressedLook().backColor.value_or(kWhite);
}

void Grid::SetBackColor(int color) {
    SetLook([&](CellLook& look) { look.backColor = color; });
}

bool Grid::FontItalic() const {
    return AddressedLook().italic.value_or(false);
}

void Grid::SetFontItalic(bool italic) {
    SetLook([&](CellLook& look) { look.italic = italic; });
}

bool Grid::FontBold() const {
    return AddressedLook().bold.value_or(AddressesHeading() && d_->header->IsBold());
}

void Grid::SetFontBold(bool bold) {
    SetLook([&](CellLook& look) { look.bold = bold; });
}

double Grid::FontSize() const {
    if (col_ != kHeader) {
        throw basic::RuntimeError(basic::error::kNoSuchMember);
    }
    const auto found = d_->rowHeaderFontSizes.find(row_);
    return found == d_->rowHeaderFontSizes.end() ? forms::FontSize(this) : found->second;
}

void Grid::SetFontSize(double points) {
    if (col_ != kHeader) {
        throw basic::RuntimeError(basic::error::kNoSuchMember);
    }
    d_->rowHeaderFontSizes[row_] = points;
}

// Columns and rows.

bool Grid::ColHidden() const {
    return col_ == kHeader ? !RowHeader() : isColumnHidden(col_ - 1);
}

void Grid::SetColHidden(bool hidden) {
    if (col_ >= 1 && col_ <= MaxCols()) {
        const QSignalBlocker quiet(d_->header);
        setColumnHidden(col_ - 1, hidden);
    }
}

bool Grid::RowHidden() const {
    return row_ >= 1 && isRowHidden(row_ - 1);
}

void Grid::SetRowHidden(bool hidden) {
    if (!model_->HasRow(row_ - 1)) {
        return;
    }
    // With updates on, the header would work out the position of the row each time: the sum of all above it.
    QHeaderView* rows = verticalHeader();
    const bool updates = rows->updatesEnabled();
    rows->setUpdatesEnabled(false);
    setRowHidden(row_ - 1, hidden);
    rows->setUpdatesEnabled(updates);
}

double Grid::ColWidth() const {
    if (col_ == kHeader) {
        // As the layout will give it: before the first show it has not been laid out.
        const QHeaderView& rows = *verticalHeader();
        return std::clamp(rows.sizeHint().width(), rows.minimumWidth(), rows.maximumWidth()) /
               d_->characterWidth;
    }
    return col_ >= 1 && col_ <= MaxCols() ? model_->Column(col_ - 1).width : 0;
}

void Grid::SetColWidth(double characters) {
    if (col_ == kHeader) {
        verticalHeader()->setFixedWidth(static_cast<int>(std::lround(characters * d_->characterWidth)));
        return;
    }
    if (col_ >= 1 && col_ <= MaxCols()) {
        model_->Column(col_ - 1).width = characters;
        ApplyWidths();
    }
}

}  // namespace quardele::forms
