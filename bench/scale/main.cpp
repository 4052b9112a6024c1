// Benchmarks of the data engine on the files of a large workshop. Prints a comparison in French.
//   quardele-bench-scale [--runs N] [--vehicles N] [--visits N] [DATABASE]
// DATABASE is a data database; when it is not given, one is made of so many vehicles and visits.
#include <iostream>

#include "benchmarks.h"
#include "made_installation.h"
#include "program.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

struct Arguments {
    int runs = 5;
    int vehicles = 100000;
    int visits = 1000000;
    fs::path database;  ///< empty: to be made
};

void MeasureAll(const Arguments& arguments) {
    const TemporaryFolder folder;
    fs::path database = arguments.database;
    Report report(std::cout);
    if (database.empty()) {
        report.Section("Base d'un grand atelier", "");
        const Duration time = TimeOf([&] {
            database = MadeDatabase(folder.Path() / "QUARDELE", arguments.vehicles, arguments.visits);
        });
        report.Tell("création de toute l'installation", TimeText(time));
        report.Tell("taille de la base de données", MemoryText(fs::file_size(database)));
    }
    MeasureLargeOpening(report, arguments.runs, database);
    MeasureLargeDump(report, arguments.runs, database);
    MeasureSeeks(report, arguments.runs, database);
    MeasureChanges(report, arguments.runs, database);
}

}  // namespace

int main(int argc, char* argv[]) {
    Arguments arguments;
    Options options("quardele-bench-scale [--runs N] [--vehicles N] [--visits N] [BASE]");
    options.Number("--runs", arguments.runs)
        .Number("--vehicles", arguments.vehicles)
        .Number("--visits", arguments.visits)
        .Operand(arguments.database);
    return RunProgram(argc, argv, options, [&] { MeasureAll(arguments); });
}
