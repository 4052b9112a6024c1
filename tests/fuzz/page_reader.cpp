// Whole files with parts of their pages replaced: every table is scanned, every value decoded, every index
// walked.
#include <memory>

#include "../data/jet/read_everything.h"
#include "../data/jet/support.h"
#include "file/os_file.h"
#include "input_reader.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLargestFile = 300'000;
constexpr std::size_t kMostSeeds = 300;

/// A copy of a file in memory that can be changed and put back.
class PatchedFile {
 public:
    PatchedFile(const jet::test::TempFolder& folder, const fs::path& original, std::size_t number)
        : original_(jet::test::ReadBytes(original)),
          path_(folder.Path() / (std::to_string(number) + ".mdb")) {
        jet::test::WriteBytes(path_, original_);
        static_cast<void>(file_.Open(path_, jet::OsFile::Access::ReadWrite));
    }

    [[nodiscard]] const fs::path& Path() const { return path_; }
    [[nodiscard]] const Bytes& Original() const { return original_; }

    void Patch(std::size_t offset, BytesView bytes) {
        file_.WriteAt(offset, bytes);
        patches_.emplace_back(offset, bytes.size());
    }
    void PutBack() {
        for (const auto& [offset, length] : patches_) {
            file_.WriteAt(offset, BytesView(original_).subspan(offset, length));
        }
        patches_.clear();
    }

 private:
    Bytes original_;
    fs::path path_;
    jet::OsFile file_;
    std::vector<std::pair<std::size_t, std::size_t>> patches_;
};

using PatchedFiles = std::vector<std::unique_ptr<PatchedFile>>;

[[nodiscard]] PatchedFiles& Files() {
    static const jet::test::TempFolder folder;
    static PatchedFiles files = [] {
        PatchedFiles made;
        for (const fs::path& original : SeedFiles(kLargestFile)) {
            made.push_back(std::make_unique<PatchedFile>(folder, original, made.size()));
        }
        return made;
    }();
    return files;
}

}  // namespace

// The file, then patches: page (2 bytes), offset (2 bytes), length (2 bytes), bytes.
void Use(BytesView bytes) {
    InputReader input(bytes);
    PatchedFile& file = *Files()[input.Byte() % Files().size()];
    constexpr std::size_t kPage = jet::kJet4.pageSize;
    const std::size_t pages = file.Original().size() / kPage;
    while (!input.AtEnd()) {
        const std::size_t page = input.Word() % pages;
        const std::size_t offset = input.Word() % kPage;
        file.Patch(page * kPage + offset, input.Take(input.Word() % (kPage - offset + 1)));
    }
    jet::test::ReadEverything(file.Path());
    file.PutBack();
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    constexpr std::size_t kPage = jet::kJet4.pageSize;
    constexpr std::size_t kStep = 256;
    for (std::size_t file = 0; file < Files().size(); ++file) {
        const Bytes& original = Files()[file]->Original();
        for (std::size_t at = 0; at + kStep <= original.size(); at += kStep * 7) {
            Bytes input = {static_cast<std::uint8_t>(file)};
            AppendWord(input, at / kPage);
            AppendWord(input, at % kPage);
            AppendWord(input, kStep);
            AppendBytes(input, BytesView(original).subspan(at, kStep));
            seeds.push_back(std::move(input));
        }
    }
    return Thinned(std::move(seeds), kMostSeeds);
}

}  // namespace quardele::fuzz
