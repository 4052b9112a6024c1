// Feeds a target with the same inputs at every run:
//   fuzz_x RUNS      the seeds, then so many inputs made from them
//   fuzz_x FILE...   the inputs in these files, one after the other
// Says which input failed, and leaves it beside the program as <program>.failure.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "mutator.h"

namespace {

using namespace quardele::fuzz;
namespace fs = std::filesystem;

fs::path failurePath;  // NOLINT(cert-err58-cpp)
Bytes current;         // NOLINT(cert-err58-cpp)

void KeepCurrent() {
    std::ofstream file(failurePath, std::ios::binary);
    std::copy(current.begin(), current.end(), std::ostreambuf_iterator<char>(file));
    std::cerr << "failed with the input in " << failurePath.string() << '\n';
}

// The process is lost at this point; writing a file may work all the same, and helps a lot.
extern "C" void OnSignal(int signal) {
    std::signal(signal, SIG_DFL);
    KeepCurrent();
    std::raise(signal);
}

[[nodiscard]] bool Passes(Bytes input) {
    current = std::move(input);
    try {
        Attempt([] { Use(current); });
        return true;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
    }
    KeepCurrent();
    return false;
}

[[nodiscard]] bool Run(unsigned runs) {
    const std::vector<Bytes> seeds = Seeds();
    for (const Bytes& seed : seeds) {
        if (!Passes(seed)) {
            return false;
        }
    }
    Mutator mutator(seeds);
    for (unsigned number = 0; number < runs; ++number) {
        if (!Passes(mutator.Input(number))) {
            return false;
        }
    }
    std::cout << seeds.size() << " seeds, " << runs << " inputs\n";
    return !seeds.empty();
}

[[nodiscard]] bool RunFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return Passes(Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
}

}  // namespace

int main(int count, char** arguments) {
    failurePath = fs::path(arguments[0]).concat(".failure");
    for (const int signal : {SIGSEGV, SIGFPE, SIGILL, SIGABRT}) {
        std::signal(signal, OnSignal);
    }
    bool passed = count > 1;
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        const bool isNumber = argument.find_first_not_of("0123456789") == std::string::npos;
        passed = (isNumber ? Run(static_cast<unsigned>(std::stoul(argument))) : RunFile(argument)) && passed;
    }
    return passed ? EXIT_SUCCESS : EXIT_FAILURE;
}
