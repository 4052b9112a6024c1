// Changes of a table beyond the values of a row: the engine does not make them yet, and everything that needs
// one comes through here.
#pragma once

#include <span>

#include <dao/field.h>
#include <jet/table.h>

namespace quardele::dao {

/// Adds a row. Throws RuntimeError 3251.
void InsertRow(jet::Table& table, std::span<const jet::ColumnChange> values);
/// Deletes a row. Throws RuntimeError 3251.
void DeleteRow(jet::Table& table, jet::RowId row);
/// Appends a column. Throws RuntimeError 3251.
void AppendColumn(jet::Table& table, const Field& field);

}  // namespace quardele::dao
