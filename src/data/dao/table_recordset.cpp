#include "table_recordset.h"

#include <utility>

#include <basic/runtime_error.h>

#include "bookmark.h"
#include "field_of_column.h"

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

RecordLayout LayoutOf(const std::shared_ptr<jet::Table>& table) {
    RecordLayout layout;
    layout.tables.push_back(table);
    for (std::size_t i = 0; i < table->Columns().size(); ++i) {
        const int column = static_cast<int>(i);
        layout.origins.emplace_back(FieldOrigin{0, column});
        layout.fields.push_back(FieldOf(*table, column));
    }
    return layout;
}

jet::SeekOperator OperatorOf(TextView comparison) {
    if (comparison == u"=") {
        return jet::SeekOperator::Equal;
    }
    if (comparison == u">=") {
        return jet::SeekOperator::GreaterOrEqual;
    }
    if (comparison == u">") {
        return jet::SeekOperator::Greater;
    }
    if (comparison == u"<=") {
        return jet::SeekOperator::LessOrEqual;
    }
    if (comparison == u"<") {
        return jet::SeekOperator::Less;
    }
    throw RuntimeError(error::kInvalidArgument);
}

}  // namespace

TableRecordset::TableRecordset(std::shared_ptr<DatabaseImpl> database, Text name,
                               const std::shared_ptr<jet::Table>& table)
    : RecordsetBase(std::move(database), std::move(name), LayoutOf(table)),
      run_(NextRun()),
      order_(std::make_unique<PhysicalOrder>(*table)) {
    Arrive(GoFirst() ? Place::Row : Place::Empty);
}

std::size_t TableRecordset::RecordCount() const {
    RequireOpen();
    return Source().RowCount();
}

const Text& TableRecordset::Index() const {
    RequireOpen();
    return indexName_;
}

void TableRecordset::SetIndex(TextView name) {
    RequireOpen();
    std::unique_ptr<RowOrder> order;
    IndexOrder* indexOrder = nullptr;
    if (name.empty()) {
        order = std::make_unique<PhysicalOrder>(Source());
    } else {
        const int index = Source().FindIndex(name);
        if (index < 0) {
            throw RuntimeError(error::kIndexNotFound, basic::Describe(error::kIndexNotFound, name));
        }
        auto owned = std::make_unique<IndexOrder>(Source(), index);
        indexOrder = owned.get();
        order = std::move(owned);
    }
    Leave();
    order_ = std::move(order);
    index_ = indexOrder;
    indexName_ = name;
    Arrive(GoFirst() ? Place::Row : Place::Empty);
}

void TableRecordset::Seek(TextView comparison, std::initializer_list<Variant> keys) {
    RequireOpen();
    if (index_ == nullptr) {
        throw RuntimeError(error::kNotAnIndex);
    }
    const jet::SeekOperator op = OperatorOf(comparison);
    if (keys.size() == 0 || keys.size() > index_->Definition().columns.size()) {
        throw RuntimeError(error::kInvalidArgument);
    }
    File().Refresh();
    auto found = index_->Seek(op, keys);  // bad keys are told before the row is left
    const std::uint64_t version = Version();
    Leave();
    if (Version() != version) {
        found = index_->Seek(op, keys);
    }
    SetNoMatch(!found || !Land(*found));
    Arrive(NoMatch() ? Place::Nowhere : Place::Row);
}

int TableRecordset::FindField(TextView name) const {
    RequireOpen();
    const std::size_t dot = name.find(u'.');
    if (dot != TextView::npos && basic::EqualNoCase(name.substr(0, dot), Source().Name())) {
        name.remove_prefix(dot + 1);
    }
    return Source().FindColumn(name);
}

bool TableRecordset::GoFirst() {
    return LandBehind(order_->First());
}

bool TableRecordset::GoLast() {
    return LandBefore(order_->Last());
}

bool TableRecordset::GoNext() {
    TellOrder();
    return LandBehind(order_->Behind(at_));
}

bool TableRecordset::GoPrevious() {
    TellOrder();
    return LandBefore(order_->Before(at_));
}

void TableRecordset::RequireRowOf(const Bookmark& bookmark) const {
    if (!Source().Fetch(RowIdOf(bookmark, run_))) {
        throw RuntimeError(error::kRecordDeleted);
    }
}

void TableRecordset::GoTo(const Bookmark& bookmark) {
    RequireRowOf(bookmark);
    Land(RowIdOf(bookmark, run_));
    // Once somebody else has deleted the row, nothing would tell where it was.
    TellOrder();
    order_->GoTo(at_);
}

Bookmark TableRecordset::RowBookmark() const {
    return BookmarkOf(run_, at_);
}

Variant TableRecordset::Stored(int field) const {
    RequireRow();
    if (rowVersion_ != Version()) {
        row_ = Source().Fetch(at_);
        rowVersion_ = Version();
    }
    if (!row_) {
        throw RuntimeError(error::kRecordDeleted);
    }
    return row_->Value(field);
}

std::optional<jet::RowId> TableRecordset::RowIn(std::size_t /*table*/) const {
    RequireRow();
    return at_;
}

/// Another row may come to lie where the deleted one was.
void TableRecordset::RequireRow() const {
    if (lost_) {
        throw RuntimeError(error::kRecordDeleted);
    }
}

Bookmark TableRecordset::TakeIn(const RowParts& parts) {
    return BookmarkOf(run_, *parts.front());
}

void TableRecordset::RowLosing(std::size_t /*table*/) {
    TellOrder();
    order_->GoTo(at_);
}

void TableRecordset::RowLost(std::size_t /*table*/) {
    lost_ = true;
}

bool TableRecordset::HasRows() const {
    return Source().RowCount() > 0;
}

bool TableRecordset::AllowsChangeOf(int /*field*/) const {
    return true;
}

std::size_t TableRecordset::RowsAhead() const {
    if (lost_ || !Source().Fetch(at_)) {
        throw RuntimeError(error::kRecordDeleted);
    }
    TellOrder();
    std::size_t count = 0;
    for (auto row = order_->Before(at_); row; row = order_->Before(*row)) {
        ++count;
    }
    return count;
}

void TableRecordset::Release() {
    row_.reset();
    index_ = nullptr;
    order_.reset();
}

void TableRecordset::TellOrder() const {
    if (orderVersion_ != Version()) {
        order_->RowsChanged();
        orderVersion_ = Version();
    }
}

bool TableRecordset::Land(jet::RowId row) {
    auto stored = Source().Fetch(row);
    if (!stored) {
        return false;
    }
    at_ = row;
    lost_ = false;
    row_ = std::move(stored);
    rowVersion_ = Version();
    return true;
}

bool TableRecordset::LandBehind(std::optional<jet::RowId> row) {
    while (row && !Land(*row)) {
        row = order_->Behind(*row);
    }
    return row.has_value();
}

bool TableRecordset::LandBefore(std::optional<jet::RowId> row) {
    while (row && !Land(*row)) {
        row = order_->Before(*row);
    }
    return row.has_value();
}

}  // namespace quardele::dao
