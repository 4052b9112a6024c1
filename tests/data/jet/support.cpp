#include "support.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>

namespace quardele::jet::test {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> DataFilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code failure;
    for (const auto& entry : fs::recursive_directory_iterator(folder, failure)) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".mdb" || extension == ".MDB") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string Quoted(const std::string& argument) {
    std::string quoted = "'";
    for (const char unit : argument) {
        quoted += unit == '\'' ? std::string("'\\''") : std::string(1, unit);
    }
    return quoted + "'";
}

struct PipeCloser {
    void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

}  // namespace

fs::path CorpusFile(const std::string& name) {
    return fs::path(QUARDELE_CORPUS_DIR) / name;
}

bool HasCorpus() {
    std::error_code failure;
    return fs::is_directory(QUARDELE_CORPUS_DIR, failure);
}

std::vector<fs::path> CorpusFiles() {
    return DataFilesBelow(QUARDELE_CORPUS_DIR);
}

fs::path SampleFile(const std::string& name) {
    return fs::path(QUARDELE_SOURCE_DIR) / "tests" / "sample" / "QUARDELE" / name;
}

std::vector<fs::path> SampleFiles() {
    return DataFilesBelow(fs::path(QUARDELE_SOURCE_DIR) / "tests" / "sample");
}

// In memory where that is possible: every change is synced, and tests make thousands of them.
TempFolder::TempFolder() {
    std::error_code failure;
    const fs::path memory = "/dev/shm";
    const fs::path base = fs::is_directory(memory, failure) ? memory : fs::temp_directory_path();
    std::random_device random;
    do {
        path_ = base / ("jet-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
}

TempFolder::~TempFolder() {
    std::error_code failure;
    fs::remove_all(path_, failure);
}

fs::path TempFolder::Copy(const fs::path& file) const {
    const fs::path copy = path_ / file.filename();
    fs::copy_file(file, copy, fs::copy_options::overwrite_existing);
    fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    return copy;
}

std::vector<std::uint8_t> ReadBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void WriteBytes(const fs::path& file, const std::vector<std::uint8_t>& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(stream));
}

std::string Output(const std::vector<std::string>& command) {
    std::string line;
    for (const std::string& argument : command) {
        line += Quoted(argument) + ' ';
    }
    std::unique_ptr<std::FILE, PipeCloser> pipe(::popen(line.c_str(), "r"));
    std::string output;
    std::array<char, 65536> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0;) {
        output.append(buffer.data(), count);
    }
    EXPECT_EQ(::pclose(pipe.release()), 0) << line;
    return output;
}

bool HasMdbExport() {
    static const bool found = std::system("command -v mdb-export > /dev/null 2>&1") == 0;
    return found;
}

std::string MdbExport(const fs::path& file, const std::string& table) {
    return Output({"mdb-export", "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S", "-b", "hex",
                   file.string(), table});
}

}  // namespace quardele::jet::test
