// Statements of the program's lists on the files of a large workshop, beside SQLite. Prints a comparison in
// French.
//   quardele-bench-queries [--runs N] [--vehicles N] [--visits N] [--jobs N] [DATABASE]
// DATABASE is a data database; when it is not given, one is made.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>

#include <workshop/installation.h>

#include "comparison.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

/// 20 November 2026.
constexpr quardele::basic::Date kToday{46346};

struct Arguments {
    int runs = 7;
    int vehicles = 100000;
    int visits = 1000000;
    int jobs = 150000;
    fs::path database;  ///< empty: to be made
};

constexpr const char* kUsage =
    "Utilisation : quardele-bench-queries [--runs N] [--vehicles N] [--visits N] [--jobs N] [BASE]\n";

/// The number that an option sets, if it is one that does.
int* NumberOf(const std::string& option, Arguments& arguments) {
    if (option == "--runs") {
        return &arguments.runs;
    }
    if (option == "--vehicles") {
        return &arguments.vehicles;
    }
    if (option == "--visits") {
        return &arguments.visits;
    }
    return option == "--jobs" ? &arguments.jobs : nullptr;
}

std::optional<Arguments> Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (int* const number = NumberOf(words[i], arguments); number != nullptr && i + 1 < words.size()) {
            *number = std::atoi(words[++i].c_str());  // NOLINT(cert-err34-c): 0 is refused below
        } else if (words[i].starts_with("-") || i + 1 != words.size()) {
            return {};
        } else {
            arguments.database = words[i];
        }
    }
    const bool possible =
        arguments.runs > 0 && arguments.vehicles > 0 && arguments.visits > 0 && arguments.jobs > 0;
    return possible ? std::optional(arguments) : std::nullopt;
}

fs::path MadeIn(const fs::path& folder, const Arguments& arguments) {
    auto scale = quardele::workshop::ScaleFor(arguments.vehicles, kToday);
    scale.visits = arguments.visits;
    scale.jobs = arguments.jobs;
    quardele::workshop::MakeInstallation(folder, scale);
    return folder / "DATA" / "talmeon.mdb";
}

void MeasureAll(const Arguments& arguments) {
    const TemporaryFolder folder;
    const fs::path database =
        arguments.database.empty() ? MadeIn(folder.Path() / "QUARDELE", arguments) : arguments.database;
    Report report(std::cout);
    BothSides sides(database);
    MeasureStatements(report, arguments.runs, sides);
    MeasureList(report, arguments.runs, database);
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::optional<Arguments> arguments = Parse({argv + 1, argv + argc});
    if (!arguments) {
        std::cerr << kUsage;
        return 2;
    }
    try {
        MeasureAll(*arguments);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
