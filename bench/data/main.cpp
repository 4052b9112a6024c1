// Benchmarks of the data engine beside the tools that one would use instead. Prints a comparison in French.
//   quardele-bench-data [--runs N] [--vehicles N] [--visits N] [--corpus FOLDER] [INSTALLATION]
// INSTALLATION is a folder laid out as C:\QUARDELE is; when it is not given, one is made of so many vehicles
// and visits. The corpus is a folder of any Access files; it is left out where there is none.
#include <iostream>

#include "benchmarks.h"
#include "made_installation.h"
#include "program.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

struct Arguments {
    int runs = 9;
    fs::path corpus = QUARDELE_BENCH_CORPUS;
    int vehicles = 1500;
    int visits = 4500;
    fs::path installation;  ///< empty: to be made
};

void MeasureAll(const Arguments& arguments) {
    const TemporaryFolder folder;
    fs::path installation = arguments.installation;
    if (installation.empty()) {
        installation = folder.Path() / "QUARDELE";
        MadeDatabase(installation, arguments.vehicles, arguments.visits);
    }
    Report report(std::cout);
    const fs::path database = DatabaseOf(installation);
    MeasureOpening(report, arguments.runs, database);
    MeasureReminders(report, arguments.runs, database);
    MeasureFullRead(report, arguments.runs, installation);
    if (fs::is_directory(arguments.corpus)) {
        MeasureFullRead(report, arguments.runs, arguments.corpus);
    }
    std::cout << '\n';
    report.Tell("mémoire de pointe", MemoryText(PeakMemory()));
}

}  // namespace

int main(int argc, char* argv[]) {
    Arguments arguments;
    Options options(
        "quardele-bench-data [--runs N] [--vehicles N] [--visits N] [--corpus DOSSIER] [INSTALLATION]");
    options.Number("--runs", arguments.runs)
        .Number("--vehicles", arguments.vehicles)
        .Number("--visits", arguments.visits)
        .Path("--corpus", arguments.corpus)
        .Operand(arguments.installation);
    return RunProgram(argc, argv, options, [&] { MeasureAll(arguments); });
}
