// A table together with the rows that it must have, changed at random.
#pragma once

#include <map>
#include <memory>
#include <set>

#include <jet/database.h>

#include "contents.h"
#include "random.h"
#include "random_values.h"

namespace quardele::jet::test {

class ModelledTable {
 public:
    using Values = std::vector<Variant>;
    using Rows = std::map<RowId, std::shared_ptr<const Values>>;

    /// Takes the rows that are there for right.
    ModelledTable(Database& database, const Text& name);

    /// One row added, changed or deleted. A refusal changes nothing; it is a test failure unless the values
    /// deserve it.
    void Change(Random& random);
    void Insert(Random& random);
    /// Lets go of the table until Reopen.
    void Close() { table_.reset(); }
    /// Opens the table anew, after a change of its structure too: columns that are new have Null, or false.
    void Reopen(Database& database);

    [[nodiscard]] const Text& Name() const { return name_; }
    [[nodiscard]] const Table& Opened() const { return *table_; }
    [[nodiscard]] TableContents Expected() const;
    /// What must be there, to be put back when a step is undone.
    [[nodiscard]] const Rows& ExpectedRows() const { return rows_; }
    void SetExpectedRows(Rows rows) { rows_ = std::move(rows); }

    /// Columns, by ordinal, that hold values fit for an index: all but OLE; texts only where each has a key.
    [[nodiscard]] std::vector<int> ColumnsForIndexes() const;
    /// Whether two rows are equal in these columns, not all of them Null.
    [[nodiscard]] bool HasDuplicates(const std::vector<int>& columns) const;
    [[nodiscard]] bool HasNulls(const std::vector<int>& columns) const;
    /// Relationships of the table with others may refuse a change, or take other rows along.
    void FollowRelationships() { relationships_ = true; }
    /// Takes the rows that are there for right.
    void TakeRows();
    /// A text column whose texts are filled up with blanks: it gets texts of its full length only.
    void SetFixedText(const Text& column);

 private:
    void Update(Random& random);
    void Delete(Random& random);
    [[nodiscard]] Variant NewValue(Random& random, int column) const;
    [[nodiscard]] RowId PickRow(Random& random) const;
    /// The numbers that an insert has given, which no other row may have.
    void TakeAutoNumbers(RowId id, Values& values) const;
    [[nodiscard]] bool IsJust(int error, const Values& values, const RowId* changed) const;
    /// Whether a row with these values must be refused, or this row's change from those `before`.
    [[nodiscard]] bool BreaksRule(const Values& values, const Values& before, const RowId* changed) const;
    [[nodiscard]] bool HasForbiddenNull(const Values& values) const;
    [[nodiscard]] bool HasNullInKey(const Values& values) const;
    [[nodiscard]] bool HasForbiddenEmptyText(const Values& values) const;
    [[nodiscard]] bool HasEqualKey(const Values& values, const RowId* changed) const;
    /// Whether an index would need the key of a text that has none, or is in an order that is not ours.
    [[nodiscard]] bool HasUnknownKey(const Values& values) const;
    void FindLimits();

    Text name_;
    std::shared_ptr<Table> table_;
    std::vector<ValueLimits> limits_;  ///< by column
    std::set<int> keyColumns_;         ///< text columns that hold texts with keys only
    Rows rows_;
    int fixedText_ = -1;  ///< ordinal
    bool relationships_ = false;
    bool hasOwnDefaults_ = false;  ///< of its defaults all are known, and applied
};

}  // namespace quardele::jet::test
