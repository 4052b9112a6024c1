// What is told where SQLite's development files are missing.
#include "benchmarks.h"

namespace quardele::bench {

void MeasureSeeks(Report& report, int /*runs*/, const std::filesystem::path& /*file*/) {
    report.Section("Recherche par clé primaire : pas mesurée, SQLite n'est pas installé", "");
}

void MeasureChanges(Report& report, int /*runs*/, const std::filesystem::path& /*file*/) {
    report.Section("Écriture : pas mesurée, SQLite n'est pas installé", "");
}

}  // namespace quardele::bench
