#include "benchmarks.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include <basic/runtime_error.h>
#include <jet/database.h>

#include "command.h"
#include "row_writer.h"

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

struct StreamCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

void ReadTable(jet::Database& database, const std::string& name) {
    const std::unique_ptr<std::FILE, StreamCloser> nowhere(std::fopen("/dev/null", "w"));
    mdb::Output out(nowhere.get());
    const auto table = database.OpenTable(basic::FromUtf8(name));
    mdb::RowWriter rows(out, mdb::RowFormat::Csv, mdb::NamesOf(table->Columns()));
    jet::RowCells cells(*table);
    jet::RowScan scan = table->Scan();
    while (const auto row = scan.Next()) {
        rows.Write(*row, cells.Of(*row));
    }
    rows.Finish();
    out.Flush();
}

void ReadTables(const fs::path& file, const std::vector<std::string>& tables) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const std::string& table : tables) {
        ReadTable(*database, table);
    }
}

/// One `mdb dump` for each table. A refusal would pass for speed, so it ends the benchmark.
void DumpTables(const fs::path& file, const std::vector<std::string>& tables) {
    for (const std::string& table : tables) {
        if (!Run({QUARDELE_BENCH_MDB, "dump", file.string(), table})) {
            throw std::runtime_error("mdb dump a échoué : " + file.string() + ", " + table);
        }
    }
}

struct FullRead {
    std::string what;
    RaceTimes inMemory;
    RaceTimes byProcesses;  ///< each side starts one process for each table
};

FullRead Measure(int runs, const fs::path& file) {
    const std::vector<std::string> tables = TablesOf(file);
    const std::vector<Command> exports = ExportTables(file, tables);
    return {.what = file.filename().string() + ", " + std::to_string(tables.size()) +
                    (tables.size() > 1 ? " tables" : " table"),
            .inMemory = Race(
                runs, [&] { ReadTables(file, tables); }, exports),
            .byProcesses = Race(
                runs, [&] { DumpTables(file, tables); }, exports)};
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

RaceTimes Sum(const std::vector<FullRead>& reads, RaceTimes FullRead::*times) {
    RaceTimes sum{.ours = {}, .theirs = Duration()};
    for (const FullRead& read : reads) {
        if (const RaceTimes& part = read.*times; part.theirs) {
            sum.ours += part.ours;
            *sum.theirs += *part.theirs;
        }
    }
    return sum;
}

void Compare(Report& report, const std::vector<FullRead>& reads, RaceTimes FullRead::*times) {
    for (const FullRead& read : reads) {
        report.Compare(read.what, read.*times);
    }
    report.Compare("ensemble", Sum(reads, times));
}

}  // namespace

void MeasureFullRead(Report& report, int runs, const fs::path& folder) {
    report.Section("Lecture complète de " + folder.filename().string() + ", en mémoire", "mdb-export");
    const std::vector<FullRead> reads = MeasureAll(report, runs, folder);
    Compare(report, reads, &FullRead::inMemory);
    report.Section("La même, un processus par table : mdb dump", "mdb-export");
    Compare(report, reads, &FullRead::byProcesses);
}

}  // namespace quardele::bench
