#include "sqlite.h"

#include <sqlite3.h>

#include <stdexcept>
#include <utility>

#include <basic/conversion.h>

namespace quardele::bench {

namespace {

[[noreturn]] void Throw(sqlite3* file) {
    throw std::runtime_error(std::string("SQLite : ") + sqlite3_errmsg(file));
}

std::string Quoted(const jet::Text& name) {
    return '"' + basic::ToUtf8(name) + '"';
}

std::string TypeOf(const jet::Column& column) {
    switch (column.type) {
        case jet::ColumnType::Text:
        case jet::ColumnType::Memo:
            return "TEXT";
        case jet::ColumnType::Single:
        case jet::ColumnType::Double:
        case jet::ColumnType::Date:
            return "REAL";
        default:
            return "INTEGER";
    }
}

std::string ColumnsOf(const jet::Table& table, const jet::Index& index) {
    std::string columns;
    for (const jet::IndexColumn& part : index.columns) {
        columns += (columns.empty() ? "" : ", ") +
                   Quoted(table.Columns()[static_cast<std::size_t>(part.column)].name) +
                   (part.ascending ? "" : " DESC");
    }
    return "(" + columns + ")";
}

SqliteValue ValueOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return sqlite3_value_int64(value);
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        default:
            return std::string(static_cast<const char*>(sqlite3_value_blob(value)),
                               static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
}

void GiveResult(sqlite3_context* context, const SqliteValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        sqlite3_result_text(context, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
    } else if (const auto* const whole = std::get_if<std::int64_t>(&value)) {
        sqlite3_result_int64(context, *whole);
    } else if (const auto* const number = std::get_if<double>(&value)) {
        sqlite3_result_double(context, *number);
    } else {
        sqlite3_result_null(context);
    }
}

}  // namespace

SqliteValue ValueFor(const basic::Variant& value) {
    if (value.IsNull()) {
        return {};
    }
    if (value.IsText()) {
        return basic::ToUtf8(value.As<basic::Text>());
    }
    if (value.Is<basic::Currency>()) {
        return value.As<basic::Currency>().tenThousandths;
    }
    return value.IsDate() ? SqliteValue(value.As<basic::Date>().days)
                          : SqliteValue(static_cast<std::int64_t>(basic::CDbl(value)));
}

SqliteFile::SqliteFile(const std::filesystem::path& file) {
    if (sqlite3_open(file.c_str(), &file_) != SQLITE_OK) {
        Throw(file_);
    }
}

SqliteFile::~SqliteFile() {
    sqlite3_close(file_);
}

void SqliteFile::Execute(const std::string& statement) {
    if (sqlite3_exec(file_, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        Throw(file_);
    }
}

void SqliteFile::CreateLike(const jet::Table& table) {
    std::string create = "CREATE TABLE " + Quoted(table.Name()) + " (";
    for (const jet::Column& column : table.Columns()) {
        create += Quoted(column.name) + ' ' + TypeOf(column) + ", ";
    }
    std::string others;
    for (const jet::Index& index : table.Indexes()) {
        if (index.primary) {
            create += "PRIMARY KEY " + ColumnsOf(table, index);
        } else {
            others += "CREATE INDEX " + Quoted(table.Name() + u"_" + index.name) + " ON " +
                      Quoted(table.Name()) + ' ' + ColumnsOf(table, index) + ";";
        }
    }
    Execute(create + ");" + others);
}

void SqliteFile::AddFunction(const char* name, double (*function)(double, double)) {
    using Function = double (*)(double, double);
    // The library keeps the function as the only thing that it hands back.
    auto* const kept = new Function(function);  // NOLINT(cppcoreguidelines-owning-memory): freed by the file
    const auto call = [](sqlite3_context* context, int, sqlite3_value** arguments) {
        if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
            sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
            sqlite3_result_null(context);
            return;
        }
        const auto& made = *static_cast<const Function*>(sqlite3_user_data(context));
        sqlite3_result_double(context,
                              made(sqlite3_value_double(arguments[0]), sqlite3_value_double(arguments[1])));
    };
    const auto forget = [](void* unused) { delete static_cast<Function*>(unused); };
    if (sqlite3_create_function_v2(file_, name, 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, kept, call, nullptr,
                                   nullptr, forget) != SQLITE_OK) {
        Throw(file_);
    }
}

void SqliteFile::AddFunction(const char* name, int arguments,
                             std::function<SqliteValue(const std::vector<SqliteValue>&)> function) {
    using Function = decltype(function);
    auto* const kept = new Function(std::move(function));  // NOLINT(cppcoreguidelines-owning-memory)
    const auto call = [](sqlite3_context* context, int count, sqlite3_value** values) {
        std::vector<SqliteValue> given;
        for (int i = 0; i < count; ++i) {
            given.push_back(ValueOf(values[i]));
        }
        GiveResult(context, (*static_cast<const Function*>(sqlite3_user_data(context)))(given));
    };
    const auto forget = [](void* unused) { delete static_cast<Function*>(unused); };
    if (sqlite3_create_function_v2(file_, name, arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, kept, call,
                                   nullptr, nullptr, forget) != SQLITE_OK) {
        Throw(file_);
    }
}

void SqliteFile::AddCollation(const char* name,
                              std::function<int(std::string_view, std::string_view)> compare) {
    using Compare = decltype(compare);
    auto* const kept = new Compare(std::move(compare));  // NOLINT(cppcoreguidelines-owning-memory)
    const auto call = [](void* function, int leftSize, const void* left, int rightSize, const void* right) {
        return (*static_cast<const Compare*>(function))(
            {static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
            {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
    };
    const auto forget = [](void* unused) { delete static_cast<Compare*>(unused); };
    if (sqlite3_create_collation_v2(file_, name, SQLITE_UTF8, kept, call, forget) != SQLITE_OK) {
        // Unlike a function, a collation that is refused is left to the caller.
        forget(kept);
        Throw(file_);
    }
}

SqliteStatement::SqliteStatement(SqliteFile& file, const std::string& text) : file_(file.file_) {
    Check(sqlite3_prepare_v2(file_, text.c_str(), -1, &statement_, nullptr));
}

SqliteStatement::~SqliteStatement() {
    sqlite3_finalize(statement_);
}

void SqliteStatement::Bind(int parameter, const SqliteValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        Check(sqlite3_bind_text(statement_, parameter, text->data(), static_cast<int>(text->size()),
                                SQLITE_STATIC));
    } else if (const auto* const whole = std::get_if<std::int64_t>(&value)) {
        Check(sqlite3_bind_int64(statement_, parameter, *whole));
    } else if (const auto* const number = std::get_if<double>(&value)) {
        Check(sqlite3_bind_double(statement_, parameter, *number));
    } else {
        Check(sqlite3_bind_null(statement_, parameter));
    }
}

void SqliteStatement::BindAll(const std::vector<SqliteValue>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        Bind(static_cast<int>(i) + 1, values[i]);
    }
}

bool SqliteStatement::Step() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        Throw(file_);
    }
    return result == SQLITE_ROW;
}

void SqliteStatement::Run() {
    while (Step()) {
    }
    Reset();
}

void SqliteStatement::Reset() {
    Check(sqlite3_reset(statement_));
}

std::string_view SqliteStatement::TextAt(int column) const {
    const auto* const text =
        static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(statement_, column)));
    return text == nullptr
               ? std::string_view()
               : std::string_view(text, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column)));
}

int SqliteStatement::ColumnCount() const {
    return sqlite3_column_count(statement_);
}

SqliteValue SqliteStatement::ValueAt(int column) const {
    switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_NULL:
            return {};
        case SQLITE_INTEGER:
            return sqlite3_column_int64(statement_, column);
        case SQLITE_FLOAT:
            return sqlite3_column_double(statement_, column);
        default:
            return std::string(TextAt(column));
    }
}

void SqliteStatement::Check(int result) const {
    if (result != SQLITE_OK) {
        Throw(file_);
    }
}

std::string InsertInto(const jet::Table& table) {
    std::string parameters = "?";
    for (std::size_t i = 1; i < table.Columns().size(); ++i) {
        parameters += ", ?";
    }
    return "INSERT INTO " + Quoted(table.Name()) + " VALUES (" + parameters + ")";
}

}  // namespace quardele::bench
