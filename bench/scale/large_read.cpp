#include "benchmarks.h"

#include <stdexcept>

#include <jet/database.h>

#include "command.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

constexpr const char* kVehicles = "TVEH";
constexpr const char* kVisits = "TVEH_DETAIL";

void Open(const fs::path& file) {
    (void)jet::Database::Open(file, jet::OpenMode::ReadOnly)->Catalog();
}

std::vector<std::string> NamesOf(const fs::path& file, bool ofSystem) {
    std::vector<std::string> names;
    for (const jet::CatalogEntry& entry : jet::Database::Open(file, jet::OpenMode::ReadOnly)->Catalog()) {
        if (entry.system == ofSystem && !entry.linked) {
            names.push_back(basic::ToUtf8(entry.name));
        }
    }
    return names;
}

/// A refusal would pass for speed, so it ends the benchmark.
void RunContent(const Command& command) {
    if (!Run(command)) {
        throw std::runtime_error("échec de " + command[0]);
    }
}

/// Every cell of every table as a value of its own, as the other reader gives them.
void ReadAllValues(const fs::path& file) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const std::string& name : NamesOf(file, false)) {
        const auto table = database->OpenTable(basic::FromUtf8(name));
        const auto columns = static_cast<int>(table->Columns().size());
        jet::RowScan scan = table->Scan();
        while (const auto row = scan.Next()) {
            for (int column = 0; column < columns; ++column) {
                (void)row->Value(column);
            }
        }
    }
}

void CompareDump(Report& report, int runs, const fs::path& file, const std::string& table) {
    const std::size_t rows =
        jet::Database::Open(file, jet::OpenMode::ReadOnly)->OpenTable(basic::FromUtf8(table))->RowCount();
    report.Compare("mdb dump " + table + ", " + std::to_string(rows) + " lignes",
                   Race(
                       runs,
                       [&] {
                           RunContent({QUARDELE_BENCH_MDB, "dump", file.string(), table});
                       },
                       ExportTables(file, {table})));
}

}  // namespace

void MeasureLargeOpening(Report& report, int runs, const fs::path& file) {
    constexpr double kPageSize = 4096;
    report.Section("Ouverture de la grande base, catalogue lu", "mdb-tables");
    report.Compare(file.filename().string(),
                   Race(runs, [&] { Open(file); }, {{"mdb-tables", "-1", file.string()}}));
    const std::optional<std::uint64_t> before = BytesRead();
    Open(file);
    const std::optional<std::uint64_t> after = BytesRead();
    if (before && after) {
        const double pages = static_cast<double>(*after - *before) / kPageSize;
        const double all = static_cast<double>(fs::file_size(file)) / kPageSize;
        report.Tell("pages lues, sur " + Number(all, 0), Number(pages, 0));
    }
}

void MeasureLargeDump(Report& report, int runs, const fs::path& file) {
    report.Section("Lecture complète de la grande base, par processus", "mdb-export");
    CompareDump(report, runs, file, kVehicles);
    CompareDump(report, runs, file, kVisits);
    for (const char* table : {kVehicles, kVisits}) {
        const auto peak = PeakMemoryOf({QUARDELE_BENCH_MDB, "dump", file.string(), table});
        report.Tell("mémoire de pointe de mdb dump " + std::string(table),
                    peak ? MemoryText(*peak) : "impossible");
    }
    report.Section("Toutes les valeurs de toutes les tables, en mémoire", "mdb-reader");
    report.Compare("lecture", Race(1, [&] { ReadAllValues(file); },
                                   {{"node", QUARDELE_BENCH_READER, "--count", file.string()}}));
}

}  // namespace quardele::bench
