#include "sql_database.h"

#include <fstream>

#include <basic/text.h>
#include <sql/statement.h>

#include "../data/jet/support.h"

namespace quardele::fuzz {

namespace fs = std::filesystem;

namespace {

/// Rows of a table: their product over the tables of a statement is what it may cost.
constexpr int kRows = 4;

std::vector<std::string> LinesOf(const char* path) {
    std::ifstream file(fs::path(QUARDELE_SOURCE_DIR) / path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> PageLines() {
    return LinesOf("docs/sql-dialect.md");
}

void CopyTable(const jet::Table& from, jet::Database& database) {
    database.CreateTable({.name = from.Name(), .columns = from.Columns(), .indexes = {}});
    const auto to = database.OpenTable(from.Name());
    jet::RowScan scan = from.Scan();
    for (int copied = 0; copied < kRows; ++copied) {
        const auto row = scan.Next();
        if (!row) {
            return;
        }
        std::vector<jet::ColumnChange> values;
        for (int column = 0; column < static_cast<int>(from.Columns().size()); ++column) {
            values.push_back({column, row->Value(column)});
        }
        to->Insert(values);
    }
}

void CopyTables(const fs::path& file, jet::Database& database) {
    const auto from = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const jet::CatalogEntry& entry : from->Catalog()) {
        if (!entry.linked && !database.HasTable(entry.name)) {
            CopyTable(*from->OpenTable(entry.name), database);
        }
    }
}

/// What the page does before its examples.
void RunSetup(jet::Database& database) {
    bool inside = false;
    for (const std::string& line : PageLines()) {
        if (line.starts_with("```")) {
            inside = line == "```setup";
        } else if (inside) {
            sql::Execute(database, basic::FromUtf8(line));
        }
    }
}

/// What stands in back quotes in the first cell of a table's row.
std::string QuotedCell(const std::string& line) {
    constexpr std::size_t kStart = 3;
    const std::size_t end = line.find("` |");
    return line.starts_with("| `") && end != std::string::npos ? line.substr(kStart, end - kStart)
                                                               : std::string();
}

Bytes BytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

}  // namespace

std::shared_ptr<jet::Database> SqlDatabase() {
    static const jet::test::TempFolder folder;
    static const std::shared_ptr<jet::Database> database = [] {
        auto made = jet::Database::Create(folder.Path() / "donnees.mdb");
        jet::Step step = made->Begin();
        CopyTables(jet::test::SampleFile("DATA/talmeon.mdb"), *made);
        CopyTables(jet::test::SampleFile("STOCK/SERVANDA.MDB"), *made);
        sql::Execute(*made, u"CREATE UNIQUE INDEX Cle ON TVEH (TVEH_IMMAT) WITH PRIMARY");
        sql::Execute(*made, u"CREATE INDEX ParImmat ON TVEH_DETAIL (TVEH_DETAIL_Immat)");
        RunSetup(*made);
        step.Commit();
        return made;
    }();
    return database;
}

std::vector<Bytes> SqlActionSeeds() {
    std::vector<Bytes> seeds;
    bool inside = false;
    for (const std::string& line : PageLines()) {
        const std::string example = QuotedCell(line);
        if (line.starts_with("```")) {
            inside = line == "```action" || line == "```setup";
        } else if (inside) {
            seeds.push_back(BytesOf(line));
        } else if (example.find(' ') != std::string::npos && !example.starts_with("SELECT ")) {
            seeds.push_back(BytesOf(example));
        }
    }
    return seeds;
}

std::vector<Bytes> SqlSeeds() {
    std::vector<Bytes> seeds;
    for (const std::string& line : LinesOf("tests/data/sql/statements.txt")) {
        if (!line.empty() && line[0] != '#' && !line.starts_with("--")) {
            seeds.push_back(BytesOf(line));
        }
    }
    for (const std::string& line : PageLines()) {
        const std::string example = QuotedCell(line);
        if (line.starts_with("SELECT ") || example.starts_with("SELECT ")) {
            seeds.push_back(BytesOf(example.empty() ? line : example));
        } else if (!example.empty()) {
            seeds.push_back(BytesOf("SELECT " + example));
        }
    }
    return seeds;
}

}  // namespace quardele::fuzz
