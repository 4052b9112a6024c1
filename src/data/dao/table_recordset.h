// The table type of recordset: the rows of one table in their own or an index's order.
#pragma once

#include <memory>
#include <optional>

#include "recordset_base.h"
#include "row_order.h"

namespace quardele::dao {

class TableRecordset final : public RecordsetBase {
 public:
    TableRecordset(std::shared_ptr<DatabaseImpl> database, Text name,
                   const std::shared_ptr<jet::Table>& table);

    [[nodiscard]] RecordsetType Type() const override { return RecordsetType::Table; }
    [[nodiscard]] std::size_t RecordCount() const override;

    [[nodiscard]] const Text& Index() const override;
    void SetIndex(TextView name) override;
    void Seek(TextView comparison, std::initializer_list<Variant> keys) override;

 protected:
    [[nodiscard]] int FindField(TextView name) const override;

    bool GoFirst() override;
    bool GoLast() override;
    bool GoNext() override;
    bool GoPrevious() override;
    void RequireRowOf(const Bookmark& bookmark) const override;
    void GoTo(const Bookmark& bookmark) override;
    [[nodiscard]] Bookmark RowBookmark() const override;
    [[nodiscard]] Variant Stored(int field) const override;
    [[nodiscard]] std::optional<jet::RowId> RowIn(std::size_t table) const override;
    [[nodiscard]] Bookmark TakeIn(const RowParts& parts) override;
    void RowLosing(std::size_t table) override;
    void RowLost(std::size_t table) override;
    [[nodiscard]] std::size_t RowsAhead() const override;
    [[nodiscard]] bool HasRows() const override;
    [[nodiscard]] bool AllowsChanges() const override { return true; }
    [[nodiscard]] bool AllowsChangeOf(int field) const override;
    void Release() override;

 private:
    [[nodiscard]] jet::Table& Source() const { return *Layout().tables.front(); }
    /// Throws 3167 when this recordset has deleted the row at hand.
    void RequireRow() const;
    /// Reads a row and makes it the one at hand; false when it is gone.
    bool Land(jet::RowId row);
    /// Lands on the first row that is still there, walking on from a candidate.
    bool LandBehind(std::optional<jet::RowId> row);
    bool LandBefore(std::optional<jet::RowId> row);
    /// Lets the order know of changes since the last walk.
    void TellOrder() const;

    std::uint64_t run_;  ///< number of this recordset, for its bookmarks
    Text indexName_;
    std::unique_ptr<RowOrder> order_;
    IndexOrder* index_ = nullptr;  ///< the order when it is an index's
    mutable std::uint64_t orderVersion_ = 0;
    jet::RowId at_;
    bool lost_ = false;                    ///< the row at hand was deleted by this recordset
    mutable std::optional<jet::Row> row_;  ///< the row at hand as it was read last
    mutable std::uint64_t rowVersion_ = 0;
};

}  // namespace quardele::dao
