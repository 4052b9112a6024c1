#include "support.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>

#include "child_process.h"

namespace quardele::jet::test {

namespace fs = std::filesystem;

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
    return fs::path(QUARDELE_INSTALLATION_DIR) / "QUARDELE" / name;
}

std::vector<fs::path> SampleFiles() {
    return DataFilesBelow(QUARDELE_INSTALLATION_DIR);
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
    path_ = fs::canonical(path_);  // as the engine names the files in it
}

TempFolder::~TempFolder() {
    std::error_code failure;
    fs::remove_all(path_, failure);
}

fs::path TempFolder::Copy(const fs::path& file) const {
    const fs::path copy = path_ / file.filename();
    CopyOver(file, copy);
    fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    return copy;
}

// The library's own way to replace a file fails on Windows.
void CopyOver(const fs::path& from, const fs::path& to) {
    fs::remove(to);
    fs::copy_file(from, to);
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
    quardele::test::Process process(command.front(), {command.begin() + 1, command.end()});
    process.CloseInput();
    std::string output = process.ReadOutput();
    EXPECT_EQ(process.Wait(), 0) << command.front();
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
