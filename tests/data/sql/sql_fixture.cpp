#include "sql_fixture.h"

#include <basic/conversion.h>

#include "syntax/ast.h"
#include "syntax/printer.h"

namespace quardele::sql {

std::filesystem::path SampleFile(const std::string& name) {
    return std::filesystem::path(QUARDELE_INSTALLATION_DIR) / "QUARDELE" / name;
}

std::shared_ptr<jet::Database> Open(const std::string& name) {
    return jet::Database::Open(SampleFile(name), jet::OpenMode::ReadOnly);
}

std::shared_ptr<jet::Database> Workshop() {
    static const std::shared_ptr<jet::Database> database = Open("DATA/talmeon.mdb");
    return database;
}

std::shared_ptr<jet::Database> Stock() {
    static const std::shared_ptr<jet::Database> database = Open("STOCK/SERVANDA.MDB");
    return database;
}

std::shared_ptr<jet::Database> Changes() {
    static const std::shared_ptr<jet::Database> database = Open("EvolutionV95.MDB");
    return database;
}

std::string Shown(const Variant& value) {
    if (value.Is<basic::Binary>()) {
        return "<" + std::to_string(value.As<basic::Binary>().size()) + " bytes>";
    }
    if (value.Is<basic::Currency>()) {
        return Shown(basic::CDbl(value)) + " EUR";
    }
    if (value.Is<basic::Decimal>()) {
        return basic::ToUtf8(basic::CStr(value));
    }
    if (value.Is<float>()) {
        return Shown(basic::CDbl(value));
    }
    std::string text = basic::ToUtf8(Print(*MakeExpression(Literal{value})));
    const bool whole = text.size() > 2 && text.substr(text.size() - 2) == ".0" && !value.IsText();
    return whole ? text.substr(0, text.size() - 2) : text;
}

Lines LinesOf(const Query& query, const RowSet& rows) {
    Lines lines;
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        std::string line;
        for (std::size_t column = 0; column < query.Columns().size(); ++column) {
            line += column == 0 ? "" : " ";
            line += Shown(rows.Value(row, static_cast<int>(column)));
        }
        lines.push_back(line);
    }
    return lines;
}

Lines Rows(const std::shared_ptr<jet::Database>& database, const std::string& statement) {
    const auto query = Query::Prepare(database, basic::FromUtf8(statement));
    return LinesOf(*query, query->Run());
}

Lines ColumnNames(const std::shared_ptr<jet::Database>& database, const std::string& statement) {
    Lines names;
    const auto query = Query::Prepare(database, basic::FromUtf8(statement));
    for (const ResultColumn& column : query->Columns()) {
        names.push_back(basic::ToUtf8(column.name));
    }
    return names;
}

std::string Eval(const std::string& expression) {
    const Lines lines = Rows(Stock(), "SELECT " + expression);
    return lines.size() == 1 ? lines.front() : "<" + std::to_string(lines.size()) + " rows>";
}

int ErrorOfStatement(const std::shared_ptr<jet::Database>& database, const std::string& statement) {
    return ErrorOf([&] { static_cast<void>(Rows(database, statement)); });
}

std::string DescriptionOf(const std::shared_ptr<jet::Database>& database, const std::string& statement) {
    try {
        static_cast<void>(Rows(database, statement));
    } catch (const basic::RuntimeError& failure) {
        return basic::ToUtf8(failure.Description());
    }
    return {};
}

}  // namespace quardele::sql
