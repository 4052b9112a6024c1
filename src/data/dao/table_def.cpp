#include <dao/table_def.h>

#include <algorithm>
#include <utility>

#include <basic/runtime_error.h>

#include "database_impl.h"
#include "field_of_column.h"

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

auto Find(const std::vector<Field>& fields, TextView name) {
    return std::find_if(fields.begin(), fields.end(),
                        [name](const Field& field) { return basic::EqualNoCase(field.name, name); });
}

}  // namespace

TableDef::TableDef(std::shared_ptr<DatabaseImpl> database, Text name)
    : database_(std::move(database)), name_(std::move(name)) {
    ReadFields();
}

void TableDef::ReadFields() {
    fields_.clear();
    const auto table = database_->File()->OpenTable(name_);
    for (std::size_t column = 0; column < table->Columns().size(); ++column) {
        fields_.push_back(FieldOf(*table, static_cast<int>(column)));
    }
}

const Field& TableDef::FieldNamed(TextView name) const {
    const auto found = Find(fields_, name);
    if (found == fields_.end()) {
        throw RuntimeError(error::kNoSuchField, basic::Describe(error::kNoSuchField, name));
    }
    return *found;
}

void TableDef::AppendField(const Field& field) {
    if (Find(fields_, field.name) != fields_.end()) {
        throw RuntimeError(error::kFieldExists, basic::Describe(error::kFieldExists, field.name));
    }
    if (!database_->Updatable()) {
        throw RuntimeError(error::kReadOnly);
    }
    if (IsInUse()) {
        throw RuntimeError(error::kTableInUse, basic::Describe(error::kTableInUse, name_));
    }
    database_->File()->AddColumn(name_, ColumnOf(field));
    ReadFields();
}

/// The engine shares one table among all who have it open: another holder is a recordset of this program.
bool TableDef::IsInUse() const {
    return database_->File()->OpenTable(name_).use_count() > 1;
}

}  // namespace quardele::dao
