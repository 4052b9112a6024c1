// The inner rows of a join during one run of it, found for one outer row after the other.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "rows/join_producer.h"
#include "rows/key_table.h"
#include "rows/node_key.h"

namespace quardele::sql {

/// The values that must be equal, as one key.
class JoinKey {
 public:
    /// False when one of the values is Null, which equals nothing.
    bool Make(const NodeList& nodes, RowContext& row);
    [[nodiscard]] std::string_view Bytes() const { return bytes_; }

 private:
    NodeKeys keys_;
    std::string bytes_;
};

/// All of them, by the hash of their keys: one identity per source and row.
class HashedInnerRows {
 public:
    /// Finds the rows. All must outlive it.
    HashedInnerRows(const JoinParts& parts, const JoinByHash& way, RowContext& row);

    /// Puts the rows with the keys of the outer row into the context one by one; false when `use` asked to
    /// stop.
    bool Each(RowContext& row, const Emit& use);

 private:
    const JoinParts& parts_;
    const JoinByHash& way_;
    KeyedRows byKey_;
    std::vector<jet::RowId> ids_;
    JoinKey key_;
};

/// Those of one outer row at a time, sought in the index. Outer rows that follow each other often have the
/// same values: their inner rows are not sought again.
class SoughtInnerRows {
 public:
    /// All must outlive it.
    SoughtInnerRows(const JoinParts& parts, const JoinByIndex& way);

    /// Takes the values of the outer row; false when the index cannot be asked for one of them.
    [[nodiscard]] bool Take(RowContext& row);
    /// As HashedInnerRows, for the row whose values were taken.
    bool Each(RowContext& row, const Emit& use);

 private:
    /// False when they are those of the row before.
    bool TakeValues(RowContext& row);
    bool TakeText(const Node& node, RowContext& row, Variant& value);
    [[nodiscard]] bool HasNull() const;  ///< which equals nothing
    void Seek(RowContext& row);

    const JoinByIndex& way_;
    const TableProducer& table_;
    jet::IndexCursor cursor_;
    bool single_;  ///< the index has one row at most for the values
    std::vector<Variant> values_;
    std::vector<jet::Row> rows_;
    Text buffer_;
    bool sought_ = false;  ///< so that rows_ are those of values_
};

}  // namespace quardele::sql
