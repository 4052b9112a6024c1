// What all recordsets have in common: the place of the current record, the copy buffer, the observer.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <dao/recordset.h>
#include <jet/table.h>
#include <jet/table_steps.h>

#include "copy_buffer.h"
#include "database_impl.h"
#include "source_row.h"

namespace quardele::dao {

/// Where a field's values are stored.
struct FieldOrigin {
    std::size_t table = 0;  ///< position in RecordLayout::tables
    int column = 0;         ///< ordinal there
};

/// The identities of a record's parts, one per table.
using RowParts = std::vector<std::optional<jet::RowId>>;

/// The fields of a recordset and the tables behind them.
struct RecordLayout {
    std::vector<Field> fields;
    std::vector<std::optional<FieldOrigin>> origins;  ///< one per field; empty for computed ones
    std::vector<std::shared_ptr<jet::Table>> tables;
};

/// A kind of recordset says how rows are walked and read; moving, editing and telling the observer are done
/// here. What a kind does not offer throws 3251.
class RecordsetBase : public Recordset {
 public:
    [[nodiscard]] const Text& Name() const final;
    [[nodiscard]] const std::vector<Field>& Fields() const final;
    [[nodiscard]] bool Updatable() const final;

    [[nodiscard]] bool Bof() const final;
    [[nodiscard]] bool Eof() const final;
    void MoveFirst() final;
    void MoveLast() final;
    void MoveNext() final { Move(1); }
    void MovePrevious() final { Move(-1); }
    void Move(long rows) final;
    [[nodiscard]] long AbsolutePosition() const override;
    void SetAbsolutePosition(long position) override;
    [[nodiscard]] float PercentPosition() const final;
    void SetPercentPosition(float percent) final;
    [[nodiscard]] Bookmark CurrentBookmark() const final;
    void SetBookmark(const Bookmark& bookmark) final;
    [[nodiscard]] Bookmark LastModified() const final;

    [[nodiscard]] Variant Value(int field) const final;
    void SetValue(int field, const Variant& value) final;
    using Recordset::SetValue;
    using Recordset::Value;

    [[nodiscard]] dao::EditMode EditMode() const final;
    void Edit() final;
    void AddNew() final;
    void Update() final;
    void CancelUpdate() final;
    void Delete() final;

    [[nodiscard]] bool NoMatch() const final;
    void FindFirst(TextView condition) override;
    void FindLast(TextView condition) override;
    void FindNext(TextView condition) override;
    void FindPrevious(TextView condition) override;
    [[nodiscard]] const Text& Index() const override;
    void SetIndex(TextView name) override;
    void Seek(TextView comparison, std::initializer_list<Variant> keys) override;

    void Requery() override;
    void Close() final;

    [[nodiscard]] std::size_t RowCount() const override;
    [[nodiscard]] Variant ValueAt(std::size_t row, int field) const override;

    void SetObserver(RecordsetObserver* observer) final { observer_ = observer; }

 protected:
    /// Where the recordset stands.
    enum class Place {
        Row,
        Before,   ///< in front of the first row
        Behind,   ///< behind the last row
        Nowhere,  ///< a seek missed
        Empty,    ///< there are no rows
    };

    RecordsetBase(std::shared_ptr<DatabaseImpl> database, Text name, RecordLayout layout);
    ~RecordsetBase() override;

    // A kind of recordset. "The row" is the one that the last of the Go calls that returned true went to.
    virtual bool GoFirst() = 0;
    virtual bool GoLast() = 0;
    virtual bool GoNext() = 0;
    virtual bool GoPrevious() = 0;
    /// Throws 3159 for a bookmark that is none of this recordset's, 3167 when its row is known to be gone.
    virtual void RequireRowOf(const Bookmark& bookmark) const = 0;
    /// Throws the same.
    virtual void GoTo(const Bookmark& bookmark) = 0;
    [[nodiscard]] virtual Bookmark RowBookmark() const = 0;
    /// The row's stored value of a field; throws 3167 when the row is gone.
    [[nodiscard]] virtual Variant Stored(int field) const = 0;
    /// The identity of the row's part from one of the layout's tables, empty when it has none.
    [[nodiscard]] virtual std::optional<jet::RowId> RowIn(std::size_t table) const = 0;
    /// Takes in a record that was added, given by the identities of its parts, one per table of the layout;
    /// parts that were not added are empty. Returns its bookmark.
    [[nodiscard]] virtual Bookmark TakeIn(const RowParts& parts) = 0;
    /// After the row was edited.
    virtual void RowWritten() {}
    /// Before the row's part from a table is deleted.
    virtual void RowLosing(std::size_t table) = 0;
    /// After that: the row stays where it is, but nothing can be read from it.
    virtual void RowLost(std::size_t table) = 0;
    /// Whether there are any rows.
    [[nodiscard]] virtual bool HasRows() const = 0;
    /// How many rows lie in front of the row; throws 3167 when it is gone.
    [[nodiscard]] virtual std::size_t RowsAhead() const = 0;
    /// Whether records of this recordset may be changed at all.
    [[nodiscard]] virtual bool AllowsChanges() const = 0;
    /// Whether a stored field may be written as far as the recordset's statement is concerned.
    [[nodiscard]] virtual bool AllowsChangeOf(int field) const = 0;

    /// Whether a table is the "one" side of a join, which loses no row with the record.
    [[nodiscard]] virtual bool IsOneSide(std::size_t /*table*/) const { return false; }
    /// Gives back what holds the file; nothing of this kind is called after it.
    virtual void Release() = 0;

    void RequireOpen() const;
    void RequireCurrent() const;
    /// Throws 3265 when there is no such field.
    std::size_t Checked(int field) const;
    /// Asks the observer and drops the copy buffer. Whoever calls it goes somewhere and calls Arrive. Returns
    /// whether there was an edit to drop.
    bool Leave();
    void Arrive(Place place);
    /// The same, when no row is what it was.
    void ArriveAtNewRows(Place place);
    void SetNoMatch(bool noMatch) { noMatch_ = noMatch; }
    void DropEdit();
    /// When the bookmark of the record that was written last means nothing any more.
    void ForgetLastModified() { lastModified_.reset(); }

    [[nodiscard]] Place Standing() const { return place_; }
    [[nodiscard]] DatabaseImpl& File() const { return *database_; }
    /// Grows whenever rows read before may be out of date.
    [[nodiscard]] std::uint64_t Version() const;
    [[nodiscard]] const RecordLayout& Layout() const { return layout_; }

 private:
    using Changes = std::vector<jet::ColumnChange>;
    using SourceRows = std::vector<std::optional<SourceRow>>;  ///< one per table

    /// Goes so many rows on or back; false beyond the end.
    bool Walk(long rows);
    void RequireUpdatable() const;
    [[nodiscard]] bool IsWritable(std::size_t field) const;
    [[nodiscard]] bool IsAutoNumber(std::size_t field) const;
    [[nodiscard]] bool IsTableWritable(std::size_t table) const;
    /// Those of the record's stored rows that may be written, as they show now without a look at the file.
    [[nodiscard]] SourceRows RowsSeen() const;
    [[nodiscard]] SourceRow RowToEdit(std::size_t table, jet::RowId row) const;
    /// Throws 3197 when a row that was seen has changed.
    static void RequireSame(const SourceRows& seen, const SourceRows& now);
    [[nodiscard]] Variant NewValue(std::size_t field) const;
    [[nodiscard]] std::vector<Variant> ValuesToEdit() const;
    [[nodiscard]] Changes ChangesOf(std::size_t table) const;
    [[nodiscard]] Changes NewRowOf(std::size_t table) const;
    [[nodiscard]] std::vector<std::size_t> TablesToWrite() const;
    /// So that a record of several tables is written whole or not at all.
    [[nodiscard]] jet::TableSteps Begin(const std::vector<std::size_t>& tables) const;
    void WriteEdit();
    /// Says which of the rows that were written have another key now.
    void TellKeyChanges(const std::vector<std::size_t>& tables) const;
    /// Lets the dynasets know what was written; fails without a word.
    void ShowWritten(const std::vector<std::size_t>& tables);
    void WriteNew();
    /// The table that loses a row with the record: of a join the "many" side, else the first that is shown.
    [[nodiscard]] std::size_t TableToDeleteFrom() const;

    std::shared_ptr<DatabaseImpl> database_;  ///< null once closed
    Text name_;
    RecordLayout layout_;
    RecordsetObserver* observer_ = nullptr;
    Place place_ = Place::Empty;
    bool noMatch_ = false;
    dao::EditMode mode_ = dao::EditMode::None;
    CopyBuffer buffer_;
    SourceRows originals_;  ///< during Edit
    std::optional<Bookmark> lastModified_;
};

}  // namespace quardele::dao
