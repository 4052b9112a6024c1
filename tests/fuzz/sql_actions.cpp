// Statements of any text that change rows and structure, carried out on a small data file and taken back: an
// error or a change, and afterwards the file as it was.
#include <stdexcept>

#include <sql/query.h>
#include <sql/statement.h>

#include "sql_database.h"

namespace quardele::fuzz {

namespace {

/// The longest text that is read as a statement.
constexpr std::size_t kLongest = 65536;
constexpr std::size_t kMostStatements = 4;

/// The tables and their numbers of rows.
[[nodiscard]] std::string Contents(jet::Database& database) {
    std::string contents;
    for (const jet::CatalogEntry& entry : database.Catalog()) {
        contents += basic::ToUtf8(entry.name) + " " +
                    std::to_string(database.OpenTable(entry.name)->RowCount()) + "\n";
    }
    return contents;
}

/// Reads what the statements have left, whole.
void ReadVehicles(const std::shared_ptr<jet::Database>& database) {
    const auto query = sql::Query::Prepare(database, u"SELECT * FROM VEHICULE");
    const sql::RowSet rows = query->Run();
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        for (std::size_t column = 0; column < query->Columns().size(); ++column) {
            static_cast<void>(rows.Value(row, static_cast<int>(column)));
        }
    }
}

}  // namespace

// UTF-8.
void Use(BytesView input) {
    const BytesView start = input.first(std::min(input.size(), kLongest));
    const basic::Text text = basic::FromUtf8(std::string(start.begin(), start.end()));
    const auto database = SqlDatabase();
    static const std::string before = Contents(*database);
    {
        const jet::Step step = database->Begin();
        std::size_t done = 0;
        for (const sql::ScriptStatement& statement : sql::SplitScript(text)) {
            Attempt([&] { static_cast<void>(sql::Execute(*database, statement.text)); });
            if (++done == kMostStatements) {
                break;
            }
        }
        Attempt([&] { ReadVehicles(database); });
    }
    if (Contents(*database) != before) {
        throw std::logic_error("not taken back: " + basic::ToUtf8(text));
    }
}

std::vector<Bytes> Seeds() {
    return SqlActionSeeds();
}

}  // namespace quardele::fuzz
