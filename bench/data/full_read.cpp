#include "benchmarks.h"

#include <algorithm>
#include <sstream>

#include <basic/runtime_error.h>
#include <jet/database.h>

#include "command.h"
#include "csv_writer.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> DataFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".mdb" || extension == ".MDB")) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// The user's tables that lie in the file itself.
std::vector<std::string> TablesOf(const fs::path& file) {
    std::vector<std::string> tables;
    for (const jet::CatalogEntry& entry : jet::Database::Open(file, jet::OpenMode::ReadOnly)->Catalog()) {
        if (!entry.system && !entry.linked) {
            tables.push_back(basic::ToUtf8(entry.name));
        }
    }
    return tables;
}

void ReadTable(jet::Database& database, const std::string& name) {
    std::ostringstream memory;
    const auto table = database.OpenTable(basic::FromUtf8(name));
    mdb::CsvWriter csv(memory);
    csv.WriteHeader(*table);
    jet::RowScan scan = table->Scan();
    while (const auto row = scan.Next()) {
        csv.WriteRow(*table, *row);
    }
    csv.Flush();
}

void ReadTables(const fs::path& file, const std::vector<std::string>& tables) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const std::string& table : tables) {
        ReadTable(*database, table);
    }
}

std::vector<Command> DumpTables(const fs::path& file, const std::vector<std::string>& tables) {
    std::vector<Command> commands;
    commands.reserve(tables.size());
    for (const std::string& table : tables) {
        commands.push_back({QUARDELE_BENCH_MDB, "dump", file.string(), table});
    }
    return commands;
}

struct FullRead {
    std::string what;
    Duration inProcess;
    std::optional<Duration> byMdbDump;
    std::optional<Duration> byMdbExport;
};

FullRead Measure(int runs, const fs::path& file) {
    const std::vector<std::string> tables = TablesOf(file);
    return {.what = file.filename().string() + ", " + std::to_string(tables.size()) +
                    (tables.size() > 1 ? " tables" : " table"),
            .inProcess = MedianTime(runs, [&] { ReadTables(file, tables); }),
            .byMdbDump = MedianTimeOf(runs, DumpTables(file, tables)),
            .byMdbExport = MedianTimeOf(runs, ExportTables(file, tables))};
}

/// Files without a table of their own have nothing to compare.
std::vector<FullRead> MeasureAll(Report& report, int runs, const fs::path& folder) {
    std::vector<FullRead> reads;
    for (const fs::path& file : DataFiles(folder)) {
        try {
            if (!TablesOf(file).empty()) {
                reads.push_back(Measure(runs, file));
            }
        } catch (const basic::RuntimeError& error) {
            report.Tell(file.filename().string() + " : " + basic::ToUtf8(error.Description()), "");
        }
    }
    return reads;
}

FullRead Sum(const std::vector<FullRead>& reads) {
    FullRead sum{.what = "ensemble", .inProcess = {}, .byMdbDump = Duration(), .byMdbExport = Duration()};
    for (const FullRead& read : reads) {
        if (read.byMdbDump && read.byMdbExport) {
            sum.inProcess += read.inProcess;
            *sum.byMdbDump += *read.byMdbDump;
            *sum.byMdbExport += *read.byMdbExport;
        }
    }
    return sum;
}

}  // namespace

void MeasureFullRead(Report& report, int runs, const fs::path& folder) {
    const std::string files = folder.filename().string();
    report.Section("Lecture complète de " + files + ", en mémoire", "mdb-export");
    std::vector<FullRead> reads = MeasureAll(report, runs, folder);
    reads.push_back(Sum(reads));
    for (const FullRead& read : reads) {
        report.Compare(read.what, read.inProcess, read.byMdbExport);
    }
    report.Section("La même, un processus par table : mdb dump", "mdb-export");
    for (const FullRead& read : reads) {
        if (read.byMdbDump) {
            report.Compare(read.what, *read.byMdbDump, read.byMdbExport);
        }
    }
}

}  // namespace quardele::bench
