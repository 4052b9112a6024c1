// A table of an open data file: its definition, its rows by identity, by scan and by index, and changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <basic/variant.h>
#include <jet/row_lock.h>
#include <jet/types.h>

namespace quardele::jet {

using basic::Variant;

class Database;
class TableImpl;  // the engine's own
struct Page;
class Row;
class RowScan;
class IndexCursor;

/// A new value for one column of a row.
struct ColumnChange {
    int column = 0;  ///< ordinal
    Variant value;   ///< of the column's type or convertible to it; Null clears
};

/// A table. Obtained from Database::OpenTable; keeps its database open. One thread.
class Table {
 public:
    explicit Table(std::unique_ptr<TableImpl> impl);
    ~Table();
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    [[nodiscard]] const Text& Name() const;
    /// The database of the file that the rows lie in; of a linked table not the one that it was opened from.
    [[nodiscard]] Database& Home() const;
    [[nodiscard]] const std::vector<Column>& Columns() const;
    [[nodiscard]] const std::vector<Index>& Indexes() const;
    /// Ordinal of a column by name, case ignored; -1 when there is none.
    [[nodiscard]] int FindColumn(TextView name) const;
    /// Position in Indexes() by name, case ignored; -1 when there is none. The index named "PrimaryKey" is
    /// also found as the primary key whatever its stored name.
    [[nodiscard]] int FindIndex(TextView name) const;
    /// Number of rows as the file records it (exact in files that were closed properly).
    [[nodiscard]] std::size_t RowCount() const;

    /// All rows in physical order; rows written after the call may or may not come.
    [[nodiscard]] RowScan Scan() const;
    /// The row, or empty when it was deleted. Throws 3343 when the identity points at no page of the file.
    [[nodiscard]] std::optional<Row> Fetch(RowId id) const;
    /// Walks an index. `index` is a position in Indexes(); throws 3015 when there is none there.
    [[nodiscard]] IndexCursor OpenIndex(int index) const;

    /// Changes columns of a row, in place or by overflow, with every index entry of changed columns, as one
    /// atomic step that is on disk when the call returns; on any error nothing is changed. Throws 3167 when
    /// the row is gone, 3022 duplicate in a unique index, 3058 Null in the primary key, 3314 Null where
    /// required, 3315 empty text where not allowed, 3163 text too long, 3421 value of another type, 3047 row
    /// too large, 3027 read only, 3260 locked by another process.
    void Update(RowId id, std::span<const ColumnChange> changes);
    /// Adds a row and returns its identity. Columns without a value get Null, false, or the next number of an
    /// AutoNumber; default expressions are the caller's (they are SQL). Atomic and durable like Update, and
    /// throws like it; 3022 also for a duplicate.
    RowId Insert(std::span<const ColumnChange> values);
    /// Takes the next value of an AutoNumber column for a row that is to be inserted with it; no other row
    /// gets that number, even when the row never comes. Atomic and durable, and throws, like Update.
    [[nodiscard]] Variant TakeAutoValue(int column);
    /// Deletes a row with its long values and index entries. Atomic and durable like Update. Throws 3167 when
    /// it is gone already, 3200 when a relationship forbids it, 3027, 3260.
    void Delete(RowId id);
    /// Keeps everybody else from changing the row while the lock lives. Throws 3260 when another process has
    /// it, 3188 when another Database of this process has it, both after the retry time, or at once within an
    /// open step; 3167 when the row is gone, 3027.
    [[nodiscard]] RowLock Lock(RowId id);

    /// For the engine's own rooms.
    [[nodiscard]] TableImpl& Impl() const { return *impl_; }

 private:
    std::unique_ptr<TableImpl> impl_;
};

/// Where the parts of a row lie within its bytes; the engine's own.
struct RowShape {
    std::uint16_t columnCount = 0;
    std::uint16_t bitmap = 0;  ///< position of the null bitmap; 0 while nothing is known
    std::uint16_t variableCount = 0;
    std::uint16_t firstOffset = 0;  ///< position of the offset of variable column 0; others lie before it
    std::uint16_t jumps = 0;        ///< Access 97: number of jump entries between there and the count
};

/// A snapshot of one row's stored bytes; columns are decoded when asked for. Copying and moving are cheap:
/// rows share the page they were read from, which never changes under them. Long values are read from the
/// file when asked for; 3197 when they were replaced since. Must not outlive its table.
class Row {
 public:
    [[nodiscard]] RowId Id() const { return id_; }
    /// A Boolean column is never Null.
    [[nodiscard]] bool IsNull(int column) const;
    /// The decoded value; Null when null. Boolean columns are never Null.
    [[nodiscard]] Variant Value(int column) const;

    // Ways that make no Variant, for scans and comparisons over many rows.

    /// A number, amount or date (in days) as a double, a truth value as -1 or 0; 0 when null or of another
    /// type.
    [[nodiscard]] double NumberAt(int column) const { return Number(column).value_or(0); }
    /// The same; empty when null.
    [[nodiscard]] std::optional<double> Number(int column) const;
    /// Puts the text of a Text or Memo column into `text`, whose memory is reused; false, and an empty text,
    /// when it is null.
    bool TextAt(int column, Text& text) const;
    /// Appends the same text in UTF-8; false when it is null.
    bool AppendUtf8At(int column, std::string& utf8) const;

    /// The stored bytes; for the engine's own rooms and tests.
    [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return bytes_; }

 private:
    friend class TableImpl;
    friend class RowReader;
    friend class RowCopies;
    Row(const TableImpl* table, RowId id, std::shared_ptr<const Page> page,
        std::span<const std::uint8_t> bytes)
        : table_(table), id_(id), page_(std::move(page)), bytes_(bytes) {}

    const TableImpl* table_;
    RowId id_;
    std::shared_ptr<const Page> page_;
    std::span<const std::uint8_t> bytes_;  ///< within page_
    mutable RowShape shape_;               ///< found when the first column is asked for
};

/// Forward iteration over all live rows of a table; must not outlive it.
class RowScan {
 public:
    /// The next row, or empty at the end.
    [[nodiscard]] std::optional<Row> Next();
    /// The same into a row of the table that there is already, which is the shorter way for who looks at each
    /// and keeps none; false, and the row as it was, at the end.
    bool Next(Row& row);
    /// The next row's identity only, without reading its columns.
    [[nodiscard]] std::optional<RowId> NextId();

 private:
    friend class TableImpl;
    explicit RowScan(const TableImpl* table);
    /// Goes to the next page of the table; false behind the last.
    bool Advance();
    void Look(std::span<const std::uint32_t> pages);
    void LookAgain();

    const TableImpl* table_;
    std::shared_ptr<const std::vector<std::uint32_t>> pages_;
    std::uint64_t listed_ = 0;  ///< when that was
    std::size_t nextPage_ = 0;
    std::size_t ahead_ = 1;  ///< how many pages may be read at once
    std::shared_ptr<const Page> page_;
    std::uint64_t picture_ = 0;  ///< that it is from
    int slot_ = 0;
    int slotCount_ = 0;
};

enum class SeekOperator { Equal, GreaterOrEqual, Greater, LessOrEqual, Less };

/// A position in an index. Entries come in the index's order, which Seek follows as well: in a descending
/// column larger values come first and count as less; Null counts as less than every value. Must not outlive
/// its table. After a change to the table the position is found again by key.
class IndexCursor {
 public:
    IndexCursor(IndexCursor&&) noexcept;
    IndexCursor& operator=(IndexCursor&&) noexcept;
    ~IndexCursor();

    /// Each returns false, and leaves no position, when there is no such entry.
    bool First();
    bool Last();
    bool Next();
    bool Previous();
    /// Goes to the first (Equal, GreaterOrEqual, Greater) or last (LessOrEqual, Less) entry that compares so
    /// with the values for the leading columns; fewer values than columns are allowed. A value that the
    /// column cannot hold exactly (1.5 for a Long) equals nothing and is compared all the same. Throws 3421
    /// for a value of another type, 3251 when the index or a text is not seekable (see Index, HasSortKey).
    bool Seek(SeekOperator op, std::span<const Variant> values);
    /// Goes on to the next entry that equals the values of the last Seek, which found one with Equal.
    bool NextEqual();
    /// Whether the entry at the position has these values in its leading columns.
    [[nodiscard]] bool Matches(std::span<const Variant> values) const;

    [[nodiscard]] bool Valid() const;
    /// The row of the current entry. Requires Valid().
    [[nodiscard]] RowId Current() const;
    /// The stored key bytes of the current entry, without the row. Requires Valid().
    [[nodiscard]] std::span<const std::uint8_t> KeyBytes() const;

    struct State;

 private:
    friend class TableImpl;
    explicit IndexCursor(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace quardele::jet
