// The tree of an action statement as it was written: of a statement that changes rows or the structure.
#pragma once

#include <optional>
#include <variant>
#include <vector>

#include <jet/types.h>

#include "syntax/ast.h"

namespace quardele::sql {

/// INSERT INTO. VALUES counts as a query without tables.
struct InsertAction {
    Text table;
    std::vector<Text> columns;  ///< none: all of the table
    Statement source;
};

struct Assignment {
    ExpressionPtr target;  ///< a name
    ExpressionPtr value;
};

struct UpdateAction {
    std::vector<FromItem> from;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

struct DeleteAction {
    std::vector<FromItem> from;
    Text target;  ///< the label of the table that loses rows; may be empty when there is one only
    ExpressionPtr where;
};

struct CreateTableAction {
    jet::TableDesign design;
};

struct CreateIndexAction {
    Text table;
    jet::IndexDesign design;
};

/// A column with the indexes of its constraints, or, without one, a constraint of the table.
struct AlterTableAction {
    Text table;
    std::optional<jet::Column> column;
    std::vector<jet::IndexDesign> indexes;
};

struct DropTableAction {
    Text table;
};

using Action = std::variant<InsertAction, UpdateAction, DeleteAction, CreateTableAction, CreateIndexAction,
                            AlterTableAction, DropTableAction>;

}  // namespace quardele::sql
