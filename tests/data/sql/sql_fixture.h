// What the tests of the dialect share: the files, results and values as text.
#pragma once

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <basic/runtime_error.h>
#include <sql/query.h>

namespace quardele::sql {

// Files of the installation that the build makes for tests, opened without ever being written.
[[nodiscard]] std::filesystem::path SampleFile(const std::string& name);
[[nodiscard]] std::shared_ptr<jet::Database> Open(const std::string& name);
/// Vehicles, visits, customers, jobs.
[[nodiscard]] std::shared_ptr<jet::Database> Workshop();
/// Sites.
[[nodiscard]] std::shared_ptr<jet::Database> Stock();
/// Changes of the program's versions.
[[nodiscard]] std::shared_ptr<jet::Database> Changes();

/// A value as a literal of the dialect: 'text', 12, 1.5, #12/31/2026#, True, Null. Amounts as "12.5 EUR".
[[nodiscard]] std::string Shown(const Variant& value);

/// A row: its values separated by blanks, as Shown gives them.
using Lines = std::vector<std::string>;
[[nodiscard]] Lines LinesOf(const Query& query, const RowSet& rows);
/// The rows of a statement.
[[nodiscard]] Lines Rows(const std::shared_ptr<jet::Database>& database, const std::string& statement);
/// The names of a statement's columns.
[[nodiscard]] Lines ColumnNames(const std::shared_ptr<jet::Database>& database, const std::string& statement);
/// An expression without names, as Shown.
[[nodiscard]] std::string Eval(const std::string& expression);

/// The number of the error that an action throws; 0 when it throws none.
template <class Action>
[[nodiscard]] int ErrorOf(Action action) {
    try {
        action();
    } catch (const basic::RuntimeError& failure) {
        return failure.Number();
    }
    return 0;
}
/// The number of the error of preparing and running a statement.
[[nodiscard]] int ErrorOfStatement(const std::shared_ptr<jet::Database>& database,
                                   const std::string& statement);
/// The description that goes with it, empty when there is no error.
[[nodiscard]] std::string DescriptionOf(const std::shared_ptr<jet::Database>& database,
                                        const std::string& statement);

}  // namespace quardele::sql
