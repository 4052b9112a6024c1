// Rows with a current record.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

#include <dao/field.h>

namespace quardele::dao {

enum class RecordsetType { Table = 1, Dynaset = 2, Snapshot = 4 };
enum class EditMode { None = 0, Edit = 1, Add = 2 };

/// The position of a row in one recordset, valid there until its Requery. Compares equal for the same row.
struct Bookmark {
    std::vector<std::uint8_t> bytes;
    friend bool operator==(const Bookmark&, const Bookmark&) = default;
};

class Recordset;

/// Told by a recordset what happens to its current record; a data control keeps its bound controls in step
/// with it. Not owned by the recordset. Throwing from a "...ing" call refuses the action.
class RecordsetObserver {
 public:
    virtual ~RecordsetObserver() = default;
    /// Before the current record is left by a move, a find, a seek, AddNew or a bookmark.
    virtual void RowLeaving(Recordset&) {}
    /// After the current record became another one (or none), AddNew began, or an edit was cancelled.
    virtual void RowArrived(Recordset&) {}
    /// After Requery has brought other rows; RowArrived at the first of them follows.
    virtual void RowsReplaced(Recordset&) {}
    /// Before Update writes the copy buffer: the last moment to put values into it.
    virtual void Updating(Recordset&) {}
    /// After Update or Delete has changed a row.
    virtual void RowChanged(Recordset&) {}
    /// Whether it sees to it itself, in Updating, that nothing is written over that somebody else has changed
    /// since it was seen: Edit then takes the record as it is stored instead of refusing it with 3197.
    [[nodiscard]] virtual bool GuardsForeignChanges() const { return false; }
};

/// Rows of a table or of a statement. Table type reads in index order once an index is set; a dynaset's
/// membership and order are fixed when it is opened, and its values are read live; a snapshot is fixed. Where
/// a dynaset's statement allows it, its rows are found in steps as somebody comes to them: all of them before
/// this program changes the file, but what others write meanwhile decides which rows those ahead are.
/// Reading without a current record throws 3021; a row deleted by somebody else throws 3167 when touched.
///
/// What other processes have written is seen after DBEngine::Idle, and from each Find..., Seek, Edit, Delete
/// and Requery on: these look at the file themselves.
class Recordset {
 public:
    virtual ~Recordset();

    [[nodiscard]] virtual RecordsetType Type() const = 0;
    /// The text that it was opened with.
    [[nodiscard]] virtual const Text& Name() const = 0;
    [[nodiscard]] virtual const std::vector<Field>& Fields() const = 0;
    /// Whether records can be edited: false for a snapshot, for a file opened for reading, and for statements
    /// none of whose columns can be written (DISTINCT, GROUP BY, UNION, expressions only).
    [[nodiscard]] virtual bool Updatable() const = 0;
    /// Position of a field by name ("column" or "table.column"), case ignored; throws 3265.
    [[nodiscard]] int FieldIndex(TextView name) const;
    [[nodiscard]] const Field& FieldNamed(TextView name) const;

    // The current record.
    /// Both true on an empty set, and on one whose last record was deleted here, from the next move on.
    [[nodiscard]] virtual bool Bof() const = 0;
    [[nodiscard]] virtual bool Eof() const = 0;
    /// Table: exact. Others: rows visited so far, with those added and without those deleted here; exact
    /// after MoveLast; 0 only when there is none.
    [[nodiscard]] virtual std::size_t RecordCount() const = 0;
    /// MoveFirst and MoveLast throw 3021 on an empty set.
    virtual void MoveFirst() = 0;
    virtual void MoveLast() = 0;
    /// On the last row sets Eof; at Eof throws 3021. MovePrevious likewise with the first row and Bof.
    virtual void MoveNext() = 0;
    virtual void MovePrevious() = 0;
    /// So many rows on, back when negative; beyond the last or first row sets Eof or Bof. 0 shows the record
    /// anew. Throws 3021 at that end already, and without a current record for 0.
    virtual void Move(long rows) = 0;
    /// 0-based position of the current record, -1 without one (not for table type: throws 3251).
    [[nodiscard]] virtual long AbsolutePosition() const = 0;
    /// Throws 3001 for a position where there is no row.
    virtual void SetAbsolutePosition(long position) = 0;
    /// Rows in front of the current record in hundredths of RecordCount, from 0 to less than 100, those
    /// deleted here not counted. Table type walks there to count them. Throws 3021 without a current record,
    /// 3167 on a deleted one.
    [[nodiscard]] virtual float PercentPosition() const = 0;
    /// Goes to the row that lies so far in RecordCount, to the last of these for 100. Throws 3001 outside 0
    /// to 100, 3021 on an empty set.
    virtual void SetPercentPosition(float percent) = 0;
    /// Throws 3021 without a current record.
    [[nodiscard]] virtual Bookmark CurrentBookmark() const = 0;
    /// Throws 3159 for a bookmark of another recordset or from before a Requery, 3167 when its row is gone:
    /// the record is not left then, and an edit goes on.
    virtual void SetBookmark(const Bookmark& bookmark) = 0;
    /// The record that Update has written last; throws 3021 when there is none since the recordset was opened
    /// or requeried.
    [[nodiscard]] virtual Bookmark LastModified() const = 0;

    // Values: of the copy buffer during Edit and AddNew, else of the current record.
    [[nodiscard]] virtual Variant Value(int field) const = 0;
    [[nodiscard]] Variant Value(TextView field) const { return Value(FieldIndex(field)); }
    /// Puts a value into the copy buffer. Throws 3020 outside Edit and AddNew, 3163 text too long, 3315
    /// empty text, 3421 wrong type, 3164 for a field that cannot be written.
    virtual void SetValue(int field, const Variant& value) = 0;
    void SetValue(TextView field, const Variant& value) { SetValue(FieldIndex(field), value); }

    // Changes.
    [[nodiscard]] virtual dao::EditMode EditMode() const = 0;
    /// Locks the current record, reads it again and copies it into the buffer. The lock is kept until Update
    /// has written, CancelUpdate, a move or the recordset's end. Throws 3021, 3167, 3027, 3260 when another
    /// process has the record, 3188 when another recordset of this program has it; 3197 when another process
    /// has changed the record since it was seen here, unless the observer guards such changes: the new
    /// values are seen then, and another Edit succeeds.
    virtual void Edit() = 0;
    /// Fills the buffer with the defaults of the fields. On a single table an AutoNumber has its value
    /// already, which is spent even when the record is given up. Throws 3027, and for an AutoNumber 3260.
    virtual void AddNew() = 0;
    /// Writes the buffer; on disk when it returns. 3020 without Edit or AddNew; 3022, 3058, 3314 ... leave
    /// the buffer as it was. The current record after AddNew + Update is the one before; a dynaset has the
    /// new one at its end, and LastModified leads to it.
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    /// Deletes the current record, of a join its row of the "many" side. It stays current: reading it throws
    /// 3167 until the next move. A dynaset leaves it out from then on, while one that somebody else has
    /// deleted stays as a place where reading throws 3167; AbsolutePosition and ValueAt count both. Throws as
    /// Edit, 3200.
    virtual void Delete() = 0;

    // Finding.
    /// After Seek and Find...: true when nothing was found.
    [[nodiscard]] virtual bool NoMatch() const = 0;
    /// The condition is the text of a WHERE clause. On a miss the current record stays. Dynasets and
    /// snapshots only (3251 for table type).
    virtual void FindFirst(TextView condition) = 0;
    virtual void FindLast(TextView condition) = 0;
    virtual void FindNext(TextView condition) = 0;
    virtual void FindPrevious(TextView condition) = 0;
    /// Table type only: the index by name (3015 when there is none), and Seek "=", ">=", ">", "<=", "<" on
    /// its leading columns (3019 without an index). On a miss there is no current record.
    [[nodiscard]] virtual const Text& Index() const = 0;
    virtual void SetIndex(TextView name) = 0;
    virtual void Seek(TextView comparison, std::initializer_list<Variant> keys) = 0;

    /// Runs the statement again; drops an edit without saving; first record current.
    virtual void Requery() = 0;
    virtual void Close() = 0;

    // For grids: reading any row without moving the current record. Not for table type.
    /// Number of rows, visited or not, with the empty places of deleted ones.
    [[nodiscard]] virtual std::size_t RowCount() const = 0;
    /// Number of rows found once so many have been looked for: fewer than `wanted` only when there are no
    /// more.
    [[nodiscard]] virtual std::size_t RowsFound(std::size_t /*wanted*/) const { return RowCount(); }
    /// The value of a field in a row (0-based). 3167 when the row is gone.
    [[nodiscard]] virtual Variant ValueAt(std::size_t row, int field) const = 0;

    /// At most one observer; null removes it.
    virtual void SetObserver(RecordsetObserver* observer) = 0;

 protected:
    /// Position of a field by name, -1 when there is none; recordsets that know their tables take
    /// "table.column" too.
    [[nodiscard]] virtual int FindField(TextView name) const;
};

}  // namespace quardele::dao
