// The orders in which a table recordset walks through its table.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <dao/field.h>
#include <jet/table.h>

namespace quardele::dao {

/// An order of a table's rows. A row that is handed out may have been deleted meanwhile.
class RowOrder {
 public:
    virtual ~RowOrder() = default;
    RowOrder() = default;
    RowOrder(const RowOrder&) = delete;
    RowOrder& operator=(const RowOrder&) = delete;

    [[nodiscard]] virtual std::optional<jet::RowId> First() = 0;
    [[nodiscard]] virtual std::optional<jet::RowId> Last() = 0;
    /// The rows behind and in front of a row, empty at the ends.
    [[nodiscard]] virtual std::optional<jet::RowId> Behind(jet::RowId row) = 0;
    [[nodiscard]] virtual std::optional<jet::RowId> Before(jet::RowId row) = 0;
    /// Says that rows may have changed, so that a row may lie elsewhere now.
    virtual void RowsChanged() = 0;
    /// Goes to the place of a row, from where Behind and Before lead on even when the row is gone then.
    virtual void GoTo(jet::RowId row) = 0;
};

/// The order in which the rows lie in the file, which is that of their identities. These are collected as far
/// as the walk has come. First and Last start a new walk, which sees the rows that were added since; so does
/// the end of a walk when there may be some.
class PhysicalOrder final : public RowOrder {
 public:
    explicit PhysicalOrder(const jet::Table& table);

    [[nodiscard]] std::optional<jet::RowId> First() override;
    [[nodiscard]] std::optional<jet::RowId> Last() override;
    [[nodiscard]] std::optional<jet::RowId> Behind(jet::RowId row) override;
    [[nodiscard]] std::optional<jet::RowId> Before(jet::RowId row) override;
    void RowsChanged() override { changed_ = true; }
    void GoTo(jet::RowId /*row*/) override {}

 private:
    void Restart();
    /// Collects one more row; false at the end of the table.
    bool Extend();
    /// Collects rows up to the first that `isEnough` accepts; false when none does.
    template <class Predicate>
    bool ExtendUntil(Predicate isEnough);

    const jet::Table& table_;
    jet::RowScan scan_;
    std::vector<jet::RowId> rows_;
    bool changed_ = false;  ///< since the walk was started
};

/// The order of an index.
class IndexOrder final : public RowOrder {
 public:
    /// `index` is a position in the table's Indexes().
    IndexOrder(const jet::Table& table, int index);

    [[nodiscard]] std::optional<jet::RowId> First() override;
    [[nodiscard]] std::optional<jet::RowId> Last() override;
    [[nodiscard]] std::optional<jet::RowId> Behind(jet::RowId row) override;
    [[nodiscard]] std::optional<jet::RowId> Before(jet::RowId row) override;
    void RowsChanged() override { settled_ = false; }
    /// A row that is gone already leaves the cursor where it was.
    void GoTo(jet::RowId row) override;
    /// The row of the first or last entry that compares so with the values of the leading columns.
    [[nodiscard]] std::optional<jet::RowId> Seek(jet::SeekOperator op, std::span<const Variant> values);

    [[nodiscard]] const jet::Index& Definition() const;

 private:
    /// The row that a move of the cursor led to, `found` being its result.
    std::optional<jet::RowId> Arrived(bool found);
    bool Find(const jet::Row& row);

    const jet::Table& table_;
    int index_;
    jet::IndexCursor cursor_;
    bool settled_ = false;  ///< the cursor's entry is known to be the one of its row
};

}  // namespace quardele::dao
