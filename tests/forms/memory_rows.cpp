#include "memory_rows.h"

#include <basic/conversion.h>
#include <basic/runtime_error.h>

namespace quardele::forms::test {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

dao::Bookmark BookmarkOf(long position) {
    dao::Bookmark bookmark;
    for (int shift = 0; shift < 32; shift += 8) {
        bookmark.bytes.push_back(static_cast<std::uint8_t>(position >> shift));
    }
    return bookmark;
}

long PositionOf(const dao::Bookmark& bookmark) {
    long position = 0;
    for (std::size_t byte = 0; byte < bookmark.bytes.size(); ++byte) {
        position |= static_cast<long>(bookmark.bytes[byte]) << (8 * byte);
    }
    return position;
}

}  // namespace

dao::Field FieldOfType(dao::TextView name, dao::FieldType type) {
    dao::Field field;
    field.name = name;
    field.type = type;
    field.size = type == dao::FieldType::Text ? 20 : 8;
    return field;
}

dao::Field TextField(dao::TextView name) {
    return FieldOfType(name, dao::FieldType::Text);
}

MemoryRows::MemoryRows(std::vector<dao::Field> fields) : name_(u"en mémoire"), fields_(std::move(fields)) {}

void MemoryRows::Add(std::vector<dao::Variant> values) {
    rows_.push_back({std::move(values)});
}

std::size_t MemoryRows::Size() const {
    return std::max(rows_.size(), madeUpRows);
}

std::size_t MemoryRows::RowCount() const {
    return RowsFound(Size());
}

std::size_t MemoryRows::RowsFound(std::size_t wanted) const {
    const std::size_t now = findsInSteps ? std::max(found, std::min(wanted, Size())) : Size();
    if (now > found && findFailure != 0) {
        throw RuntimeError(findFailure);
    }
    found = now;
    return found;
}

bool MemoryRows::Eof() const {
    return Size() == 0 || position_ >= static_cast<long>(Size());
}

long MemoryRows::AbsolutePosition() const {
    return Bof() || Eof() ? -1 : position_;
}

void MemoryRows::Go(long position) {
    Leave();
    calls.push_back("move " + std::to_string(position));
    position_ = position;
    Arrive();
}

void MemoryRows::Leave() {
    if (observer_ != nullptr) {
        observer_->RowLeaving(*this);
    }
    mode_ = dao::EditMode::None;
}

void MemoryRows::Arrive() {
    if (observer_ != nullptr) {
        observer_->RowArrived(*this);
    }
}

dao::Bookmark MemoryRows::CurrentBookmark() const {
    return BookmarkOf(position_);
}
void MemoryRows::SetBookmark(const dao::Bookmark& bookmark) {
    Go(PositionOf(bookmark));
}

dao::Variant MemoryRows::Value(int field) const {
    if (mode_ != dao::EditMode::None) {
        return buffer_[static_cast<std::size_t>(field)];
    }
    if (Bof() || Eof()) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    return ValueAt(static_cast<std::size_t>(position_), field);
}

dao::Variant MemoryRows::ValueAt(std::size_t row, int field) const {
    ++reads[row];
    ++allReads;
    if (row < rows_.size()) {
        if (rows_[row].deleted) {
            throw RuntimeError(error::kRecordDeleted);
        }
        return rows_[row].values[static_cast<std::size_t>(field)];
    }
    return basic::NumberText(static_cast<double>(row)) + u"." + basic::NumberText(field);
}

void MemoryRows::SetValue(int field, const dao::Variant& value) {
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    const dao::Field& target = fields_[static_cast<std::size_t>(field)];
    if (value.IsText() && value.As<dao::Text>().size() > static_cast<std::size_t>(target.size)) {
        throw RuntimeError(error::kTextTooLong);
    }
    buffer_[static_cast<std::size_t>(field)] = value;
}

void MemoryRows::Edit() {
    calls.emplace_back("edit");
    if (Bof() || Eof()) {
        throw RuntimeError(error::kNoCurrentRecord);
    }
    buffer_ = rows_[static_cast<std::size_t>(position_)].values;
    mode_ = dao::EditMode::Edit;
}

void MemoryRows::AddNew() {
    Leave();
    calls.emplace_back("addnew");
    buffer_.clear();
    for (const dao::Field& field : fields_) {
        buffer_.emplace_back(field.defaultValue.empty() ? dao::Variant(basic::Null{}) : field.defaultValue);
    }
    mode_ = dao::EditMode::Add;
    Arrive();
}

void MemoryRows::Update() {
    calls.emplace_back("update");
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    if (observer_ != nullptr) {
        observer_->Updating(*this);
    }
    if (refusal != 0) {
        throw RuntimeError(std::exchange(refusal, 0));
    }
    if (mode_ == dao::EditMode::Add) {
        rows_.push_back({buffer_});
        lastModified_ = BookmarkOf(static_cast<long>(rows_.size()) - 1);
    } else {
        rows_[static_cast<std::size_t>(position_)].values = buffer_;
        lastModified_ = BookmarkOf(position_);
    }
    mode_ = dao::EditMode::None;
    if (observer_ != nullptr) {
        observer_->RowChanged(*this);
    }
}

void MemoryRows::CancelUpdate() {
    calls.emplace_back("cancel");
    if (mode_ == dao::EditMode::None) {
        throw RuntimeError(error::kUpdateWithoutEdit);
    }
    mode_ = dao::EditMode::None;
    Arrive();
}

void MemoryRows::Delete() {
    calls.emplace_back("delete");
    rows_[static_cast<std::size_t>(position_)].deleted = true;
    if (observer_ != nullptr) {
        observer_->RowChanged(*this);
    }
}

}  // namespace quardele::forms::test
