// The entry points that libFuzzer looks for. The seeds are written into the first folder that the command
// line names.
#include <filesystem>
#include <fstream>
#include <string>

#include "harness.h"

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using quardele::fuzz::Bytes;

void WriteSeeds(const std::filesystem::path& folder) {
    int number = 0;
    for (const Bytes& seed : quardele::fuzz::Seeds()) {
        std::ofstream file(folder / ("seed-" + std::to_string(number++)), std::ios::binary);
        std::copy(seed.begin(), seed.end(), std::ostreambuf_iterator<char>(file));
    }
}

}  // namespace

int LLVMFuzzerInitialize(int* count, char*** arguments) {
    for (int i = 1; i < *count; ++i) {
        const std::filesystem::path argument = (*arguments)[i];
        if (std::filesystem::is_directory(argument)) {
            WriteSeeds(argument);
            break;
        }
    }
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quardele::fuzz::Attempt([&] { quardele::fuzz::Use({data, size}); });
    return 0;
}
