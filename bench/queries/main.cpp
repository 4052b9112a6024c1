// Statements of the program's lists on the files of a large workshop, beside SQLite. Prints a comparison in
// French.
//   quardele-bench-queries [--runs N] [--vehicles N] [--visits N] [--jobs N] [DATABASE]
// DATABASE is a data database; when it is not given, one is made.
#include <iostream>

#include "comparison.h"
#include "made_installation.h"
#include "program.h"
#include "search.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

struct Arguments {
    int runs = 7;
    int vehicles = 100000;
    int visits = 1000000;
    int jobs = 150000;
    fs::path database;  ///< empty: to be made
};

void MeasureAll(const Arguments& arguments) {
    const TemporaryFolder folder;
    const fs::path database =
        arguments.database.empty()
            ? MadeDatabase(folder.Path() / "QUARDELE", arguments.vehicles, arguments.visits, arguments.jobs)
            : arguments.database;
    Report report(std::cout);
    BothSides sides(database);
    MeasureStatements(report, arguments.runs, sides);
    MeasureList(report, arguments.runs, database);
    MeasureSearch(report, arguments.runs, sides, database);
}

}  // namespace

int main(int argc, char* argv[]) {
    Arguments arguments;
    Options options("quardele-bench-queries [--runs N] [--vehicles N] [--visits N] [--jobs N] [BASE]");
    options.Number("--runs", arguments.runs)
        .Number("--vehicles", arguments.vehicles)
        .Number("--visits", arguments.visits)
        .Number("--jobs", arguments.jobs)
        .Operand(arguments.database);
    return RunProgram(argc, argv, options, [&] { MeasureAll(arguments); });
}
