#include <sql/default_value.h>

#include <algorithm>

#include <sql/query.h>

namespace quardele::sql {

basic::Variant DefaultValue(jet::Database& database, basic::TextView expression) {
    // A default is an expression of the statements' language; it may be written with a leading "=".
    const std::size_t start = expression.find_first_not_of(u" =");
    if (start == TextView::npos) {
        return basic::Null{};
    }
    const auto query =
        Query::Prepare(database.shared_from_this(), u"SELECT " + Text(expression.substr(start)));
    return query->Run().Value(0, 0);
}

void AddDefaults(jet::Database& database, const jet::Table& table, std::vector<jet::ColumnChange>& row) {
    const std::vector<jet::Column>& columns = table.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto column = static_cast<int>(i);
        const bool given = std::any_of(row.begin(), row.end(), [column](const jet::ColumnChange& value) {
            return value.column == column;
        });
        if (!given && !columns[i].autoNumber && !columns[i].defaultValue.empty()) {
            row.push_back({column, DefaultValue(database, columns[i].defaultValue)});
        }
    }
}

}  // namespace quardele::sql
