#include <workbook/workbook.h>

#include <utility>

#include <basic/runtime_error.h>

#include "compound_file.h"
#include "globals.h"
#include "records.h"
#include "sheet_records.h"

namespace quardele::workbook {

Workbook::Workbook(basic::TextView sheetName, std::vector<Column> columns)
    : name_(sheetName), columns_(std::move(columns)), records_(std::make_unique<SheetRecords>()) {
    if (name_.empty() || name_.size() > kMaxNameLength ||
        name_.find_first_of(u":\\/?*[]") != basic::Text::npos || columns_.size() > kMaxColumns) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    std::vector<Cell> headings;
    headings.reserve(columns_.size());
    for (const Column& column : columns_) {
        headings.emplace_back(column.heading);
    }
    records_->AddRow(headings, CellLook::Heading);
}

Workbook::~Workbook() = default;

void Workbook::AddRow(std::span<const Cell> cells) {
    if (cells.size() > columns_.size()) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    if (records_->RowCount() >= kMaxRows) {
        throw basic::RuntimeError(
            basic::error::kOverflow,
            u"Un classeur Excel 97-2003 ne peut pas contenir plus de 65 535 lignes et leur en-tête.");
    }
    records_->AddRow(cells, CellLook::Plain);
}

std::size_t Workbook::RowCount() const {
    return records_->RowCount() - 1;
}

void Workbook::Write(std::ostream& out) const {
    Records stream;
    PutGlobals(stream, name_, records_->Texts());
    records_->Put(stream, columns_);
    WriteCompoundFile(out, u"Workbook", stream.Bytes());
}

}  // namespace quardele::workbook
