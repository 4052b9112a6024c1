#include "other_readers.h"

#include <cstdlib>
#include <sstream>

#include "../data/jet/csv.h"
#include "../data/jet/support.h"
#include "json_line.h"

namespace quardele::jet::test {

namespace fs = std::filesystem;

namespace {

const fs::path kReaderFolder = QUARDELE_READER_DIR;

std::vector<std::string> Plain(std::vector<CellText> cells) {
    std::vector<std::string> texts;
    for (CellText& cell : cells) {
        texts.push_back(std::move(cell).value_or(""));
    }
    return texts;
}

/// The name in brackets and the type behind it, without the comma.
std::vector<std::string> SchemaColumn(const std::string& line) {
    const std::size_t nameEnd = line.find("]\t");
    const std::size_t type = line.find_first_not_of('\t', nameEnd + 1);
    const std::size_t typeEnd = line.find_last_not_of(", ");
    return {line.substr(2, nameEnd - 2), line.substr(type, typeEnd + 1 - type)};
}

}  // namespace

bool HasMdbTools() {
    return HasMdbExport();
}

ReadTable ReadByMdbExport(const fs::path& file, const std::string& table) {
    ReadTable read;
    for (CsvLine& line : ParseCsv(MdbExport(file, table))) {
        if (read.columns.empty()) {
            read.columns = Plain(std::move(line));
        } else {
            read.rows.push_back(std::move(line));
        }
    }
    return read;
}

std::map<std::string, std::vector<std::string>> ReadByMdbSchema(const fs::path& file) {
    const std::string kCreate = "CREATE TABLE [";
    std::map<std::string, std::vector<std::string>> tables;
    std::vector<std::string>* columns = nullptr;
    std::istringstream lines(Output({"mdb-schema", "--no-indexes", "--no-relations", "--no-default-values",
                                     "--no-not-null", file.string()}));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(kCreate)) {
            columns = &tables[line.substr(kCreate.size(), line.size() - kCreate.size() - 1)];
        } else if (columns != nullptr && line.starts_with("\t[")) {
            const auto column = SchemaColumn(line);
            columns->insert(columns->end(), column.begin(), column.end());
        }
    }
    return tables;
}

bool HasMdbReader() {
    static const bool found = fs::exists(kReaderFolder / "node_modules" / "mdb-reader" / "package.json") &&
                              std::system("command -v node > /dev/null 2>&1") == 0;
    return found;
}

std::map<std::string, ReadTable> ReadByMdbReader(const fs::path& file) {
    std::map<std::string, ReadTable> tables;
    ReadTable* table = nullptr;
    std::istringstream lines(Output({"node", (kReaderFolder / "dump.mjs").string(), file.string()}));
    for (std::string line; std::getline(lines, line);) {
        auto cells = ParseJsonLine(line);
        const std::string kind = cells.front().value_or("");
        cells.erase(cells.begin());
        if (kind == "table") {
            table = &tables[cells.at(0).value_or("")];
        } else if (kind == "columns") {
            table->columns = Plain(std::move(cells));
        } else {
            table->rows.push_back(std::move(cells));
        }
    }
    return tables;
}

}  // namespace quardele::jet::test
