// The definition of a table.
#pragma once

#include <memory>
#include <vector>

#include <dao/field.h>

namespace quardele::dao {

class DatabaseImpl;

/// A table's definition, read when it was asked for.
class TableDef {
 public:
    TableDef(std::shared_ptr<DatabaseImpl> database, Text name);

    [[nodiscard]] const Text& Name() const { return name_; }
    /// The columns in display order.
    [[nodiscard]] const std::vector<Field>& Fields() const { return fields_; }
    /// A field by name, case ignored; throws 3265.
    [[nodiscard]] const Field& FieldNamed(TextView name) const;
    /// An empty field to fill in and append.
    [[nodiscard]] static Field CreateField() { return {}; }
    /// Appends a column to the table in the file; rows that are there have Null in it. Throws 3191 when the
    /// name exists (case ignored), 3211 when somebody has the table open, recordsets of this program
    /// included, 3027 when the file cannot be changed.
    void AppendField(const Field& field);

 private:
    void ReadFields();
    [[nodiscard]] bool IsInUse() const;

    std::shared_ptr<DatabaseImpl> database_;
    Text name_;
    std::vector<Field> fields_;
};

}  // namespace quardele::dao
