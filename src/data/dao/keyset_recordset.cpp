#include "keyset_recordset.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <basic/runtime_error.h>

#include "bookmark.h"
#include "field_of_column.h"

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

Field FieldOfExpression(const sql::ResultColumn& column) {
    Field field;
    field.type = FieldTypeOf(column.type);
    field.size = column.size;
    field.allowZeroLength = true;
    return field;
}

RecordLayout LayoutOf(const sql::Query& query) {
    RecordLayout layout;
    layout.tables = query.Sources();
    for (const sql::ResultColumn& column : query.Columns()) {
        Field field;
        if (column.source) {
            layout.origins.emplace_back(FieldOrigin{*column.source, column.sourceColumn});
            field = FieldOf(*layout.tables[*column.source], column.sourceColumn);
        } else {
            layout.origins.emplace_back();
            field = FieldOfExpression(column);
        }
        field.name = column.name;
        field.ordinalPosition = static_cast<int>(layout.fields.size());
        layout.fields.push_back(std::move(field));
    }
    return layout;
}

}  // namespace

KeysetRecordset::KeysetRecordset(std::shared_ptr<DatabaseImpl> database, Text name,
                                 std::shared_ptr<sql::Query> query, RecordsetType type)
    : RecordsetBase(std::move(database), std::move(name), LayoutOf(*query)),
      type_(type),
      query_(std::move(query)) {
    Run();
    File().Shared()->Enter(*this);
    Arrive(GoFirst() ? Place::Row : Place::Empty);
}

KeysetRecordset::~KeysetRecordset() {
    if (query_ != nullptr) {
        File().Shared()->Remove(*this);
    }
}

void KeysetRecordset::Run() {
    readVersion_ = Version();
    rows_ = type_ == RecordsetType::Dynaset ? query_->RunInSteps() : query_->Run();
    run_ = NextRun();
    added_ = 0;
    visited_ = 0;
    lost_.clear();
}

void KeysetRecordset::Requery() {
    RequireOpen();
    File().Refresh();
    Run();
    DropEdit();
    ForgetLastModified();
    ArriveAtNewRows(GoFirst() ? Place::Row : Place::Empty);
}

// Counting and position.

std::size_t KeysetRecordset::RecordCount() const {
    RequireOpen();
    // Added rows stand behind all others, which have all been found by then.
    const std::size_t visited = added_ == 0 ? visited_ : std::min(visited_, rows_.Size() - added_);
    const std::size_t counted = visited + added_ - lost_.size();
    return counted == 0 && HasRows() ? 1 : counted;
}

bool KeysetRecordset::HasRows() const {
    return HasRow(lost_.size());
}

std::size_t KeysetRecordset::RowCount() const {
    RequireOpen();
    return RowsFound(SIZE_MAX);
}

std::size_t KeysetRecordset::RowsFound(std::size_t wanted) const {
    RequireOpen();
    return rows_.Found(wanted);
}

void KeysetRecordset::Visit(std::size_t rows) {
    visited_ = std::max(visited_, rows);
}

long KeysetRecordset::AbsolutePosition() const {
    RequireOpen();
    return Standing() == Place::Row ? static_cast<long>(row_) : -1;
}

void KeysetRecordset::SetAbsolutePosition(long position) {
    RequireOpen();
    if (position < 0 || !HasRow(static_cast<std::size_t>(position))) {
        throw RuntimeError(error::kInvalidArgument);
    }
    Leave();
    Land(static_cast<std::size_t>(position));
    Arrive(Place::Row);
}

bool KeysetRecordset::GoFirst() {
    return LandFrom(0);
}

bool KeysetRecordset::GoLast() {
    Visit(rows_.Size());
    return LandBefore(rows_.Size());
}

bool KeysetRecordset::GoNext() {
    return LandFrom(row_ + 1);
}

bool KeysetRecordset::GoPrevious() {
    return LandBefore(row_);
}

bool KeysetRecordset::LandFrom(std::size_t row) {
    while (lost_.contains(row)) {
        ++row;
    }
    return Land(row);
}

bool KeysetRecordset::LandBefore(std::size_t end) {
    while (end > 0 && lost_.contains(end - 1)) {
        --end;
    }
    return end > 0 && Land(end - 1);
}

bool KeysetRecordset::HasRow(std::size_t row) const {
    return rows_.Found(row + 1) > row;
}

bool KeysetRecordset::Land(std::size_t row) {
    if (!HasRow(row)) {
        return false;
    }
    row_ = row;
    Visit(row + 1);
    return true;
}

void KeysetRecordset::RequireRowOf(const Bookmark& bookmark) const {
    const std::size_t row = PositionOf(bookmark, run_);
    if (!HasRow(row)) {
        throw RuntimeError(error::kInvalidBookmark);
    }
    if (lost_.contains(row)) {
        throw RuntimeError(error::kRecordDeleted);
    }
}

void KeysetRecordset::GoTo(const Bookmark& bookmark) {
    RequireRowOf(bookmark);
    Land(PositionOf(bookmark, run_));
}

Bookmark KeysetRecordset::RowBookmark() const {
    return BookmarkOf(run_, row_);
}

// Values.

int KeysetRecordset::FindField(TextView name) const {
    RequireOpen();
    return query_->FindColumn(name);
}

std::optional<jet::RowId> KeysetRecordset::RowIn(std::size_t table) const {
    Freshen();
    return rows_.Key(row_, table);
}

Bookmark KeysetRecordset::TakeIn(const RowParts& parts) {
    const std::size_t row = rows_.Append(parts.size() > 1 ? query_->Completed(parts) : parts);
    ++added_;
    return BookmarkOf(run_, row);
}

void KeysetRecordset::RowWritten() {
    RowParts parts(Layout().tables.size());
    if (parts.size() < 2) {
        return;
    }
    for (std::size_t table = 0; table < parts.size(); ++table) {
        parts[table] = IsOneSide(table) ? std::nullopt : RowIn(table);
    }
    if (std::any_of(parts.begin(), parts.end(), [](const auto& part) { return part.has_value(); })) {
        rows_.Replace(row_, query_->Completed(std::move(parts)));
    }
}

void KeysetRecordset::RowLost(std::size_t table) {
    rows_.MarkDeleted(row_, table);
    lost_.insert(row_);
}

std::size_t KeysetRecordset::RowsAhead() const {
    if (lost_.contains(row_)) {
        throw RuntimeError(error::kRecordDeleted);
    }
    return row_ - static_cast<std::size_t>(std::distance(lost_.begin(), lost_.lower_bound(row_)));
}

bool KeysetRecordset::AllowsChanges() const {
    if (type_ != RecordsetType::Dynaset) {
        return false;
    }
    const int fields = static_cast<int>(Layout().fields.size());
    for (int field = 0; field < fields; ++field) {
        if (AllowsChangeOf(field)) {
            return true;
        }
    }
    return false;
}

void KeysetRecordset::Release() {
    File().Shared()->Remove(*this);
    condition_.reset();
    rows_ = {};
    query_.reset();
}

Variant KeysetRecordset::ValueAt(std::size_t row, int field) const {
    RequireOpen();
    Checked(field);
    if (!HasRow(row)) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    return Read(row, field);
}

Variant KeysetRecordset::Read(std::size_t row, int field) const {
    Freshen();
    return rows_.Value(row, field);
}

void KeysetRecordset::Freshen() const {
    if (const std::uint64_t now = Version(); readVersion_ != now) {
        rows_.ForgetAll();
        readVersion_ = now;
    }
}

// Finding.

void KeysetRecordset::FindFirst(TextView condition) {
    RequireOpen();
    SearchForward(condition, 0);
}

void KeysetRecordset::FindNext(TextView condition) {
    RequireCurrent();
    SearchForward(condition, row_ + 1);
}

void KeysetRecordset::FindLast(TextView condition) {
    RequireOpen();
    SearchBackward(condition, rows_.Size());
    Visit(rows_.Size());
}

void KeysetRecordset::FindPrevious(TextView condition) {
    RequireCurrent();
    SearchBackward(condition, row_);
}

void KeysetRecordset::SearchForward(TextView condition, std::size_t from) {
    const bool wasEditing = StartSearch(condition);
    const auto found = Prepared(condition).FindForward(rows_, from);
    Visit(found ? *found + 1 : rows_.Size());
    FinishSearch(found, wasEditing);
}

void KeysetRecordset::SearchBackward(TextView condition, std::size_t end) {
    const bool wasEditing = StartSearch(condition);
    FinishSearch(end > 0 ? Prepared(condition).FindBackward(rows_, end - 1) : std::nullopt, wasEditing);
}

bool KeysetRecordset::StartSearch(TextView condition) {
    (void)Prepared(condition);  // a bad condition is told before the row is left
    const bool wasEditing = Leave();
    if (rows_.HasKeys()) {
        File().Refresh();  // a row that was passed over may fulfil the condition by now
    }
    Freshen();
    return wasEditing;
}

const sql::Condition& KeysetRecordset::Prepared(TextView condition) {
    if (!condition_ || conditionText_ != condition) {
        condition_.emplace(query_, condition);
        conditionText_ = condition;
    }
    return *condition_;
}

void KeysetRecordset::FinishSearch(std::optional<std::size_t> found, bool wasEditing) {
    SetNoMatch(!found);
    if (found) {
        Land(*found);
        Arrive(Place::Row);
    } else if (wasEditing) {
        Arrive(Standing());
    }
}

}  // namespace quardele::dao
