// The dynaset and snapshot types of recordset: the rows of a statement, fixed when it ran.
#pragma once

#include <memory>
#include <optional>
#include <set>

#include <sql/query.h>

#include "recordset_base.h"

namespace quardele::dao {

class KeysetRecordset final : public RecordsetBase, private RowFinder {
 public:
    /// Runs the query. `type` is Dynaset or Snapshot.
    KeysetRecordset(std::shared_ptr<DatabaseImpl> database, Text name, std::shared_ptr<sql::Query> query,
                    RecordsetType type);
    ~KeysetRecordset() override;

    [[nodiscard]] RecordsetType Type() const override { return type_; }
    [[nodiscard]] std::size_t RecordCount() const override;
    [[nodiscard]] long AbsolutePosition() const override;
    void SetAbsolutePosition(long position) override;

    void FindFirst(TextView condition) override;
    void FindLast(TextView condition) override;
    void FindNext(TextView condition) override;
    void FindPrevious(TextView condition) override;
    void Requery() override;

    [[nodiscard]] std::size_t RowCount() const override;
    [[nodiscard]] std::size_t RowsFound(std::size_t wanted) const override;
    [[nodiscard]] Variant ValueAt(std::size_t row, int field) const override;

 protected:
    [[nodiscard]] int FindField(TextView name) const override;

    bool GoFirst() override;
    bool GoLast() override;
    bool GoNext() override;
    bool GoPrevious() override;
    void RequireRowOf(const Bookmark& bookmark) const override;
    void GoTo(const Bookmark& bookmark) override;
    [[nodiscard]] Bookmark RowBookmark() const override;
    [[nodiscard]] Variant Stored(int field) const override { return Read(row_, field); }
    [[nodiscard]] std::optional<jet::RowId> RowIn(std::size_t table) const override;
    [[nodiscard]] Bookmark TakeIn(const RowParts& parts) override;
    /// A line whose link was changed belongs to another row of the "one" side.
    void RowWritten() override;
    void RowLosing(std::size_t /*table*/) override {}
    void RowLost(std::size_t table) override;
    [[nodiscard]] std::size_t RowsAhead() const override;
    [[nodiscard]] bool HasRows() const override;
    [[nodiscard]] bool AllowsChanges() const override;
    [[nodiscard]] bool AllowsChangeOf(int field) const override { return rows_.IsUpdatable(field); }
    [[nodiscard]] bool IsOneSide(std::size_t table) const override { return query_->IsOneSide(table); }
    void Release() override;

 private:
    void FindRest() override { (void)RowsFound(SIZE_MAX); }
    void KeyChanged(const jet::Table& table, jet::RowId row) override { rows_.TakeKeyOf(table, row); }
    void Run();
    [[nodiscard]] bool HasRow(std::size_t row) const;
    bool Land(std::size_t row);
    // The nearest row that this recordset has not deleted: from `row` on, and in front of `end`.
    bool LandFrom(std::size_t row);
    bool LandBefore(std::size_t end);
    [[nodiscard]] Variant Read(std::size_t row, int field) const;
    /// Drops what was read from the file before the last change.
    void Freshen() const;
    /// The rows from `from` on, and the rows in front of `end` from behind.
    void SearchForward(TextView condition, std::size_t from);
    void SearchBackward(TextView condition, std::size_t end);
    /// Leaves the row; returns whether that dropped an edit.
    bool StartSearch(TextView condition);
    void FinishSearch(std::optional<std::size_t> found, bool wasEditing);
    [[nodiscard]] const sql::Condition& Prepared(TextView condition);
    void Visit(std::size_t rows);

    RecordsetType type_;
    std::shared_ptr<sql::Query> query_;
    mutable sql::RowSet rows_;
    std::uint64_t run_ = 0;  ///< number of the rows, for their bookmarks
    std::size_t row_ = 0;
    std::size_t added_ = 0;       ///< rows behind those that the run finds
    std::size_t visited_ = 0;     ///< rows counted from the first that a move or a search has come to
    std::set<std::size_t> lost_;  ///< rows that this recordset has deleted
    Text conditionText_;          ///< of the condition prepared last
    std::optional<sql::Condition> condition_;
    mutable std::uint64_t readVersion_ = 0;  ///< of the file when rows were last read
};

}  // namespace quardele::dao
