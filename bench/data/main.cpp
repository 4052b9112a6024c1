// Benchmarks of the data engine beside the tools that one would use instead. Prints a comparison in French.
//   quardele-bench-data [--runs N] [--vehicles N] [--visits N] [--corpus FOLDER] [INSTALLATION]
// INSTALLATION is a folder laid out as C:\QUARDELE is; when it is not given, one is made of so many vehicles
// and visits. The corpus is a folder of any Access files; it is left out where there is none.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>

#include <workshop/installation.h>

#include "benchmarks.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

/// 20 November 2026: some weeks before the reference date of the measures.
constexpr quardele::basic::Date kToday{46346};

struct Arguments {
    int runs = 9;
    fs::path corpus = QUARDELE_BENCH_CORPUS;
    int vehicles = 1500;
    int visits = 4500;
    fs::path installation;  ///< empty: to be made
};

constexpr const char* kUsage =
    "Utilisation : quardele-bench-data [--runs N] [--vehicles N] [--visits N] [--corpus DOSSIER] "
    "[INSTALLATION]\n";

/// The number that an option sets, if it is one that does.
int* NumberOf(const std::string& option, Arguments& arguments) {
    if (option == "--runs") {
        return &arguments.runs;
    }
    if (option == "--vehicles") {
        return &arguments.vehicles;
    }
    return option == "--visits" ? &arguments.visits : nullptr;
}

std::optional<Arguments> Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (int* const number = NumberOf(words[i], arguments); number != nullptr && hasValue) {
            *number = std::atoi(words[++i].c_str());  // NOLINT(cert-err34-c): 0 is refused below
        } else if (words[i] == "--corpus" && hasValue) {
            arguments.corpus = words[++i];
        } else if (words[i].starts_with("-") || i + 1 != words.size()) {
            return {};
        } else {
            arguments.installation = words[i];
        }
    }
    const bool possible = arguments.runs > 0 && arguments.vehicles > 0 && arguments.visits > 0;
    return possible ? std::optional(arguments) : std::nullopt;
}

void MeasureAll(const Arguments& arguments) {
    const TemporaryFolder folder;
    fs::path installation = arguments.installation;
    if (installation.empty()) {
        installation = folder.Path() / "QUARDELE";
        auto scale = quardele::workshop::ScaleFor(arguments.vehicles, kToday);
        scale.visits = arguments.visits;
        quardele::workshop::MakeInstallation(installation, scale);
    }
    Report report(std::cout);
    const fs::path database = installation / "DATA" / "talmeon.mdb";
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
