#include "recordset_base.h"

#include <algorithm>
#include <utility>

#include <basic/runtime_error.h>
#include <sql/default_value.h>

#include "field_value.h"

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

constexpr double kWhole = 100;  // per cent

[[noreturn]] void ThrowUnsupported() {
    throw RuntimeError(error::kOperationNotSupported);
}

}  // namespace

RecordsetBase::RecordsetBase(std::shared_ptr<DatabaseImpl> database, Text name, RecordLayout layout)
    : database_(std::move(database)), name_(std::move(name)), layout_(std::move(layout)) {
    database_->Enter(*this);
}

RecordsetBase::~RecordsetBase() {
    if (database_ != nullptr) {
        database_->Remove(*this);
    }
}

const Text& RecordsetBase::Name() const {
    RequireOpen();
    return name_;
}

const std::vector<Field>& RecordsetBase::Fields() const {
    RequireOpen();
    return layout_.fields;
}

bool RecordsetBase::Updatable() const {
    RequireOpen();
    return database_->Updatable() && AllowsChanges();
}

std::uint64_t RecordsetBase::Version() const {
    std::uint64_t version = database_->File()->StateNumber();
    for (const auto& table : layout_.tables) {
        version += table->Home().StateNumber();
    }
    return version;
}

// The place.

bool RecordsetBase::Bof() const {
    RequireOpen();
    return place_ == Place::Before || place_ == Place::Empty;
}

bool RecordsetBase::Eof() const {
    RequireOpen();
    return place_ == Place::Behind || place_ == Place::Empty;
}

void RecordsetBase::MoveFirst() {
    RequireOpen();
    Leave();
    Arrive(GoFirst() ? Place::Row : Place::Empty);
    if (place_ == Place::Empty) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
}

void RecordsetBase::MoveLast() {
    RequireOpen();
    Leave();
    Arrive(GoLast() ? Place::Row : Place::Empty);
    if (place_ == Place::Empty) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
}

void RecordsetBase::Move(long rows) {
    RequireOpen();
    const bool inSight = place_ == Place::Row || (place_ == Place::Before && rows > 0) ||
                         (place_ == Place::Behind && rows < 0);
    if (!inSight) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    Leave();
    if (Walk(rows)) {
        Arrive(Place::Row);
    } else if (!HasRows()) {
        Arrive(Place::Empty);
    } else {
        Arrive(rows > 0 ? Place::Behind : Place::Before);
    }
}

bool RecordsetBase::Walk(long rows) {
    const bool forward = rows > 0;
    const auto distance = static_cast<unsigned long>(rows);
    unsigned long left = forward ? distance : 0 - distance;
    bool there = true;
    if (left > 0 && place_ != Place::Row) {
        there = forward ? GoFirst() : GoLast();
        --left;
    }
    for (; there && left > 0; --left) {
        there = forward ? GoNext() : GoPrevious();
    }
    return there;
}

long RecordsetBase::AbsolutePosition() const {
    ThrowUnsupported();
}

void RecordsetBase::SetAbsolutePosition(long /*position*/) {
    ThrowUnsupported();
}

float RecordsetBase::PercentPosition() const {
    RequireCurrent();
    return static_cast<float>(kWhole * static_cast<double>(RowsAhead()) / static_cast<double>(RecordCount()));
}

void RecordsetBase::SetPercentPosition(float percent) {
    RequireOpen();
    const double share = double{percent} / kWhole;
    if (!(share >= 0 && share <= 1)) {
        throw RuntimeError(error::kInvalidArgument);
    }
    const auto count = static_cast<long>(RecordCount());
    if (count == 0) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    Leave();
    const long position = std::min(static_cast<long>(share * static_cast<double>(count)), count - 1);
    Arrive(GoFirst() && Walk(position) ? Place::Row : Place::Behind);
}

Bookmark RecordsetBase::CurrentBookmark() const {
    RequireCurrent();
    return RowBookmark();
}

void RecordsetBase::SetBookmark(const Bookmark& bookmark) {
    RequireOpen();
    RequireRowOf(bookmark);  // before the row is left
    Leave();
    GoTo(bookmark);
    Arrive(Place::Row);
}

Bookmark RecordsetBase::LastModified() const {
    RequireOpen();
    if (!lastModified_) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    return *lastModified_;
}

// Values.

Variant RecordsetBase::Value(int field) const {
    RequireOpen();
    const std::size_t position = Checked(field);
    if (mode_ != dao::EditMode::None) {
        return buffer_.Value(position);
    }
    RequireCurrent();
    return Stored(field);
}

void RecordsetBase::SetValue(int field, const Variant& value) {
    RequireOpen();
    const std::size_t position = Checked(field);
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    const Field& target = layout_.fields[position];
    if (!IsWritable(position)) {
        throw RuntimeError(error::kFieldNotUpdatable,
                           basic::Describe(error::kFieldNotUpdatable, target.name));
    }
    buffer_.Set(position, CheckedFor(target, value));
}

bool RecordsetBase::IsWritable(std::size_t field) const {
    const auto& origin = layout_.origins[field];
    if (!origin || IsAutoNumber(field) || !AllowsChangeOf(static_cast<int>(field))) {
        return false;
    }
    return mode_ == dao::EditMode::Add || originals_[origin->table].has_value();
}

bool RecordsetBase::IsAutoNumber(std::size_t field) const {
    const auto& origin = layout_.origins[field];
    return origin &&
           layout_.tables[origin->table]->Columns()[static_cast<std::size_t>(origin->column)].autoNumber;
}

// Changes.

dao::EditMode RecordsetBase::EditMode() const {
    RequireOpen();
    return mode_;
}

void RecordsetBase::Edit() {
    RequireCurrent();
    RequireUpdatable();
    DropEdit();
    const bool guarded = observer_ != nullptr && observer_->GuardsForeignChanges();
    const SourceRows seen = guarded ? SourceRows() : RowsSeen();
    const std::uint64_t version = Version();
    database_->Refresh();
    SourceRows originals(layout_.tables.size());
    for (std::size_t table = 0; table < originals.size(); ++table) {
        if (const auto row = RowIn(table)) {
            originals[table] = RowToEdit(table, *row);
        }
    }
    if (!guarded && Version() != version) {
        RequireSame(seen, originals);
    }
    originals_ = std::move(originals);
    buffer_.Fill(ValuesToEdit());
    mode_ = dao::EditMode::Edit;
}

RecordsetBase::SourceRows RecordsetBase::RowsSeen() const {
    SourceRows rows(layout_.tables.size());
    for (std::size_t table = 0; table < rows.size(); ++table) {
        const auto row = IsTableWritable(table) ? RowIn(table) : std::nullopt;
        if (row) {
            rows[table].emplace(layout_.tables[table], *row);
        }
    }
    return rows;
}

/// Parts of a record that the statement leaves as they are, the "one" side of a join, are not locked.
SourceRow RecordsetBase::RowToEdit(std::size_t table, jet::RowId row) const {
    const auto& source = layout_.tables[table];
    return IsTableWritable(table) ? SourceRow(database_->Shared(), source, row) : SourceRow(source, row);
}

/// What is to be changed must be what was seen.
void RecordsetBase::RequireSame(const SourceRows& seen, const SourceRows& now) {
    for (std::size_t table = 0; table < seen.size(); ++table) {
        if (seen[table]) {
            now[table]->RequireSame(*seen[table]);
        }
    }
}

bool RecordsetBase::IsTableWritable(std::size_t table) const {
    for (std::size_t field = 0; field < layout_.fields.size(); ++field) {
        const auto& origin = layout_.origins[field];
        if (origin && origin->table == table && AllowsChangeOf(static_cast<int>(field))) {
            return true;
        }
    }
    return false;
}

std::vector<Variant> RecordsetBase::ValuesToEdit() const {
    std::vector<Variant> values(layout_.fields.size());
    for (std::size_t field = 0; field < values.size(); ++field) {
        const auto& origin = layout_.origins[field];
        values[field] = origin && originals_[origin->table] ? originals_[origin->table]->Value(origin->column)
                                                            : Stored(static_cast<int>(field));
    }
    return values;
}

void RecordsetBase::AddNew() {
    RequireOpen();
    RequireUpdatable();
    std::vector<Variant> values(layout_.fields.size());
    for (std::size_t field = 0; field < values.size(); ++field) {
        values[field] = NewValue(field);
    }
    Leave();
    buffer_.Fill(std::move(values));
    mode_ = dao::EditMode::Add;
    Arrive(place_);
}

/// Of a join only the tables that get a row draw numbers, and only then.
Variant RecordsetBase::NewValue(std::size_t field) const {
    const Field& target = layout_.fields[field];
    if (!IsAutoNumber(field)) {
        return ConvertedFor(target.type, sql::DefaultValue(*database_->File(), target.defaultValue));
    }
    return layout_.tables.size() == 1 ? layout_.tables.front()->TakeAutoValue(layout_.origins[field]->column)
                                      : Variant(basic::Null{});
}

void RecordsetBase::Update() {
    RequireOpen();
    if (mode_ != dao::EditMode::None && observer_ != nullptr) {
        observer_->Updating(*this);
    }
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    if (mode_ == dao::EditMode::Edit) {
        WriteEdit();
    } else {
        WriteNew();
    }
    DropEdit();
    if (observer_ != nullptr) {
        observer_->RowChanged(*this);
    }
}

void RecordsetBase::WriteEdit() {
    database_->Refresh();
    database_->Shared()->FindRests();
    const std::vector<std::size_t> tables = TablesToWrite();
    // With the steps begun nobody comes between comparing and writing.
    jet::TableSteps steps = Begin(tables);
    for (const std::size_t table : tables) {
        originals_[table]->RequireUnchanged();
    }
    for (const std::size_t table : tables) {
        originals_[table]->Write(ChangesOf(table));
    }
    steps.Commit();
    lastModified_ = RowBookmark();
    ShowWritten(tables);
}

/// What was written is written: whatever stands in the way of showing it is told when the row is read.
void RecordsetBase::ShowWritten(const std::vector<std::size_t>& tables) {
    try {
        TellKeyChanges(tables);
        RowWritten();
    } catch (const RuntimeError&) {
        return;
    }
}

void RecordsetBase::TellKeyChanges(const std::vector<std::size_t>& tables) const {
    for (const std::size_t table : tables) {
        const Changes changes = ChangesOf(table);
        const auto isInKey = [&](const jet::Index& index) {
            return index.unique &&
                   std::any_of(index.columns.begin(), index.columns.end(), [&](const jet::IndexColumn& part) {
                       return std::any_of(
                           changes.begin(), changes.end(),
                           [&](const jet::ColumnChange& change) { return change.column == part.column; });
                   });
        };
        const auto& indexes = layout_.tables[table]->Indexes();
        if (std::any_of(indexes.begin(), indexes.end(), isInKey)) {
            database_->Shared()->TellKeyChanged(*layout_.tables[table], originals_[table]->Id());
        }
    }
}

void RecordsetBase::WriteNew() {
    const std::vector<std::size_t> tables = TablesToWrite();
    if (tables.empty()) {
        return;
    }
    database_->Shared()->FindRests();
    RowParts parts(layout_.tables.size());
    jet::TableSteps steps = Begin(tables);
    for (const std::size_t table : tables) {
        parts[table] = layout_.tables[table]->Insert(NewRowOf(table));
    }
    steps.Commit();
    lastModified_ = TakeIn(parts);
}

/// Of a join those whose fields were given.
std::vector<std::size_t> RecordsetBase::TablesToWrite() const {
    const bool always = mode_ == dao::EditMode::Add && layout_.tables.size() == 1;
    std::vector<std::size_t> tables;
    for (std::size_t table = 0; table < layout_.tables.size(); ++table) {
        if (always || !ChangesOf(table).empty()) {
            tables.push_back(table);
        }
    }
    return tables;
}

jet::TableSteps RecordsetBase::Begin(const std::vector<std::size_t>& tables) const {
    std::vector<std::shared_ptr<jet::Table>> written;
    for (const std::size_t table : tables) {
        written.push_back(layout_.tables[table]);
    }
    return jet::TableSteps(written);
}

RecordsetBase::Changes RecordsetBase::ChangesOf(std::size_t table) const {
    Changes changes;
    for (std::size_t field = 0; field < layout_.fields.size(); ++field) {
        const auto& origin = layout_.origins[field];
        if (origin && origin->table == table && buffer_.IsChanged(field)) {
            changes.push_back({origin->column, buffer_.Value(field)});
        }
    }
    return changes;
}

/// What the buffer holds of a table, and the defaults of columns that the recordset does not show. Of a
/// column that it shows twice the value that was set counts: it comes last.
RecordsetBase::Changes RecordsetBase::NewRowOf(std::size_t table) const {
    Changes values;
    for (std::size_t field = 0; field < layout_.fields.size(); ++field) {
        const auto& origin = layout_.origins[field];
        if (origin && origin->table == table) {
            values.push_back({origin->column, buffer_.Value(field)});
        }
    }
    const Changes changes = ChangesOf(table);
    values.insert(values.end(), changes.begin(), changes.end());
    sql::AddDefaults(*database_->File(), *layout_.tables[table], values);
    return values;
}

void RecordsetBase::CancelUpdate() {
    RequireOpen();
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    DropEdit();
    Arrive(place_);
}

void RecordsetBase::Delete() {
    RequireCurrent();
    RequireUpdatable();
    DropEdit();
    database_->Refresh();
    const std::size_t table = TableToDeleteFrom();
    const jet::RowId row = *RowIn(table);
    const RowHold hold(database_->Shared(), layout_.tables[table], row);
    database_->Shared()->FindRests();
    RowLosing(table);
    layout_.tables[table]->Delete(row);
    RowLost(table);
    if (observer_ != nullptr) {
        observer_->RowChanged(*this);
    }
}

std::size_t RecordsetBase::TableToDeleteFrom() const {
    std::optional<std::size_t> oneSide;
    for (std::size_t field = 0; field < layout_.fields.size(); ++field) {
        const auto& origin = layout_.origins[field];
        if (!origin || !RowIn(origin->table) || !AllowsChangeOf(static_cast<int>(field))) {
            continue;
        }
        if (!IsOneSide(origin->table)) {
            return origin->table;
        }
        oneSide = oneSide.value_or(origin->table);
    }
    if (!oneSide) {
        throw RuntimeError(error::kReadOnly);
    }
    return *oneSide;
}

// What one kind only offers.

bool RecordsetBase::NoMatch() const {
    RequireOpen();
    return noMatch_;
}

void RecordsetBase::FindFirst(TextView /*condition*/) {
    ThrowUnsupported();
}

void RecordsetBase::FindLast(TextView /*condition*/) {
    ThrowUnsupported();
}

void RecordsetBase::FindNext(TextView /*condition*/) {
    ThrowUnsupported();
}

void RecordsetBase::FindPrevious(TextView /*condition*/) {
    ThrowUnsupported();
}

const Text& RecordsetBase::Index() const {
    ThrowUnsupported();
}

void RecordsetBase::SetIndex(TextView /*name*/) {
    ThrowUnsupported();
}

void RecordsetBase::Seek(TextView /*comparison*/, std::initializer_list<Variant> /*keys*/) {
    ThrowUnsupported();
}

void RecordsetBase::Requery() {
    ThrowUnsupported();
}

std::size_t RecordsetBase::RowCount() const {
    ThrowUnsupported();
}

Variant RecordsetBase::ValueAt(std::size_t /*row*/, int /*field*/) const {
    ThrowUnsupported();
}

// Ends and guards.

void RecordsetBase::Close() {
    RequireOpen();
    DropEdit();
    place_ = Place::Empty;
    Release();
    layout_.tables.clear();
    database_->Remove(*this);
    database_.reset();
}

void RecordsetBase::RequireOpen() const {
    if (database_ == nullptr) {
        throw RuntimeError(error::kObjectClosed);
    }
}

void RecordsetBase::RequireCurrent() const {
    RequireOpen();
    if (place_ != Place::Row) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
}

void RecordsetBase::RequireUpdatable() const {
    if (!Updatable()) {
        throw RuntimeError(error::kReadOnly);
    }
}

std::size_t RecordsetBase::Checked(int field) const {
    if (field < 0 || static_cast<std::size_t>(field) >= layout_.fields.size()) {
        throw RuntimeError(error::kNoSuchField);
    }
    return static_cast<std::size_t>(field);
}

bool RecordsetBase::Leave() {
    if (observer_ != nullptr && (place_ == Place::Row || mode_ != dao::EditMode::None)) {
        observer_->RowLeaving(*this);
    }
    const bool wasEditing = mode_ != dao::EditMode::None;
    DropEdit();
    return wasEditing;
}

void RecordsetBase::Arrive(Place place) {
    place_ = place;
    if (observer_ != nullptr) {
        observer_->RowArrived(*this);
    }
}

void RecordsetBase::ArriveAtNewRows(Place place) {
    place_ = place;
    if (observer_ != nullptr) {
        observer_->RowsReplaced(*this);
    }
    Arrive(place);
}

void RecordsetBase::DropEdit() {
    mode_ = dao::EditMode::None;
    buffer_.Clear();
    originals_.clear();
}

}  // namespace quardele::dao
