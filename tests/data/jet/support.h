// What the tests of the data engine share: files to read, copies to write to, other programs to ask.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <basic/runtime_error.h>
#include <jet/database.h>

namespace quardele::jet::test {

/// All data files of a folder, in order of names; none when it is missing.
[[nodiscard]] std::vector<std::filesystem::path> DataFilesBelow(const std::filesystem::path& folder);

/// A file of the corpus of real Access files; its folder may be missing.
[[nodiscard]] std::filesystem::path CorpusFile(const std::string& name);
[[nodiscard]] bool HasCorpus();
/// All data files of the corpus, in order of names.
[[nodiscard]] std::vector<std::filesystem::path> CorpusFiles();

/// A data file of the installation that the build makes for tests, by its path below QUARDELE.
[[nodiscard]] std::filesystem::path SampleFile(const std::string& name);
[[nodiscard]] std::vector<std::filesystem::path> SampleFiles();

/// A folder that goes with everything in it.
class TempFolder {
 public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    /// A copy that may be written to.
    [[nodiscard]] std::filesystem::path Copy(const std::filesystem::path& file) const;

 private:
    std::filesystem::path path_;
};

/// Copies a file to a name that another file may have, which goes.
void CopyOver(const std::filesystem::path& from, const std::filesystem::path& to);
[[nodiscard]] std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes);

/// Runs a program and gives what it wrote; fails the test when it fails.
[[nodiscard]] std::string Output(const std::vector<std::string>& command);
/// Whether the independent reader is installed.
[[nodiscard]] bool HasMdbExport();
/// A table as the independent reader shows it.
[[nodiscard]] std::string MdbExport(const std::filesystem::path& file, const std::string& table);

/// The number of the RuntimeError that the action throws; 0 when it throws none.
template <class Action>
[[nodiscard]] int ErrorNumber(const Action& action) {
    try {
        action();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

}  // namespace quardele::jet::test

#define SKIP_WITHOUT_CORPUS()                     \
    if (!::quardele::jet::test::HasCorpus()) {    \
        GTEST_SKIP() << "the corpus is not here"; \
    }                                             \
    static_assert(true)
#define SKIP_WITHOUT_MDB_EXPORT()                      \
    if (!::quardele::jet::test::HasMdbExport()) {      \
        GTEST_SKIP() << "mdb-export is not installed"; \
    }                                                  \
    static_assert(true)
