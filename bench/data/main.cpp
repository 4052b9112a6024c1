// Benchmarks of the data engine beside the tools that one would use instead. Prints a comparison in French.
//   quardele-bench-data [--runs N] [--corpus FOLDER] [INSTALLATION]
// INSTALLATION is a folder laid out as C:\QUARDELE is; the sample of the tests when it is not given. The
// corpus is a folder of any Access files; it is left out where there is none.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>

#include "benchmarks.h"

namespace fs = std::filesystem;
using namespace quardele::bench;

namespace {

struct Arguments {
    int runs = 9;
    fs::path corpus = QUARDELE_BENCH_CORPUS;
    fs::path installation = QUARDELE_BENCH_SAMPLE;
};

constexpr const char* kUsage =
    "Utilisation : quardele-bench-data [--runs N] [--corpus DOSSIER] [INSTALLATION]\n";

std::optional<Arguments> Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool hasValue = i + 1 < words.size();
        if (words[i] == "--runs" && hasValue) {
            arguments.runs = std::atoi(words[++i].c_str());  // NOLINT(cert-err34-c): 0 is refused below
        } else if (words[i] == "--corpus" && hasValue) {
            arguments.corpus = words[++i];
        } else if (words[i].starts_with("-") || i + 1 != words.size()) {
            return {};
        } else {
            arguments.installation = words[i];
        }
    }
    return arguments.runs > 0 ? std::optional(arguments) : std::nullopt;
}

void MeasureAll(const Arguments& arguments) {
    Report report(std::cout);
    const fs::path database = arguments.installation / "DATA" / "talmeon.mdb";
    MeasureOpening(report, arguments.runs, database);
    MeasureReminders(report, arguments.runs, database);
    MeasureFullRead(report, arguments.runs, arguments.installation);
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
