// A SQLite file with tables like ours, for comparison. Errors are std::runtime_error.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <jet/table.h>

struct sqlite3;
struct sqlite3_stmt;

namespace quardele::bench {

/// A value as SQLite stores it.
using SqliteValue = std::variant<std::monostate, std::int64_t, double, std::string>;
[[nodiscard]] SqliteValue ValueFor(const basic::Variant& value);

/// An open file, in SQLite's default modes: a rollback journal that is deleted, every commit synced.
class SqliteFile {
 public:
    explicit SqliteFile(const std::filesystem::path& file);
    ~SqliteFile();
    SqliteFile(const SqliteFile&) = delete;
    SqliteFile& operator=(const SqliteFile&) = delete;

    void Execute(const std::string& statement);
    /// Makes an empty table with the same columns and indexes.
    void CreateLike(const jet::Table& table);
    /// Makes a function of two numbers known to statements; Null when one of them is.
    void AddFunction(const char* name, double (*function)(double, double));
    /// The same for so many arguments of any type.
    void AddFunction(const char* name, int arguments,
                     std::function<SqliteValue(const std::vector<SqliteValue>&)> function);
    /// Makes an order of texts known: below, equal or above 0.
    void AddCollation(const char* name, std::function<int(std::string_view, std::string_view)> compare);

 private:
    friend class SqliteStatement;
    sqlite3* file_ = nullptr;
};

/// A prepared statement. Parameters count from 1, columns from 0. Must not outlive its file.
class SqliteStatement {
 public:
    SqliteStatement(SqliteFile& file, const std::string& text);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;

    /// The value must live until the statement is run.
    void Bind(int parameter, const SqliteValue& value);
    void BindAll(const std::vector<SqliteValue>& values);
    /// Runs up to the next row; false when there is none.
    bool Step();
    /// Runs to its end and makes it ready for the next run.
    void Run();
    void Reset();
    [[nodiscard]] int ColumnCount() const;
    [[nodiscard]] std::string_view TextAt(int column) const;
    /// The value of a column, without converting it; texts are copied.
    [[nodiscard]] SqliteValue ValueAt(int column) const;

 private:
    void Check(int result) const;

    sqlite3* file_;
    sqlite3_stmt* statement_ = nullptr;
};

/// INSERT with a parameter for each column.
[[nodiscard]] std::string InsertInto(const jet::Table& table);

}  // namespace quardele::bench
