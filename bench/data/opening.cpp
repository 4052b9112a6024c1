#include "benchmarks.h"

#include <jet/database.h>

#include "command.h"

namespace quardele::bench {

namespace {

void Open(const std::filesystem::path& file) {
    (void)jet::Database::Open(file, jet::OpenMode::ReadOnly)->Catalog();
}

void TellPagesRead(Report& report, const std::filesystem::path& file) {
    constexpr double kPageSize = 4096;
    const std::optional<std::uint64_t> before = BytesRead();
    Open(file);
    const std::optional<std::uint64_t> after = BytesRead();
    if (before && after) {
        report.Tell("lu pendant l'ouverture (pages de 4 Kio)",
                    Number(static_cast<double>(*after - *before) / kPageSize, 0));
    }
}

}  // namespace

void MeasureOpening(Report& report, int runs, const std::filesystem::path& file) {
    report.Section("Ouverture, catalogue lu", "mdb-tables");
    report.Compare(file.filename().string(),
                   Race(runs, [&] { Open(file); }, {{"mdb-tables", "-1", file.string()}}));
    TellPagesRead(report, file);
    report.Compare("lancement seul : mdb / mdb-export", Race(runs,
                                                             [] {
                                                                 Run({QUARDELE_BENCH_MDB, "--help"});
                                                             },
                                                             {{"mdb-export", "--version"}}));
}

}  // namespace quardele::bench
