#include "seed_files.h"

#include <algorithm>

#include "../data/jet/support.h"

namespace quardele::fuzz {

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kAnySize = std::uintmax_t{1} << 30;

void UseTables(const fs::path& file, const std::function<void(const jet::TableImpl&)>& use) {
    const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
    for (const jet::CatalogEntry& entry : database->Catalog()) {
        if (!entry.linked) {
            Attempt([&] { use(database->OpenTable(entry.name)->Impl()); });
        }
    }
}

}  // namespace

std::vector<fs::path> SeedFiles(std::uintmax_t largest) {
    std::vector<fs::path> files = jet::test::SampleFiles();
    const auto corpus = jet::test::CorpusFiles();
    files.insert(files.end(), corpus.begin(), corpus.end());
    std::erase_if(files, [largest](const fs::path& file) { return fs::file_size(file) > largest; });
    return files;
}

void ForEachTable(const std::function<void(const jet::TableImpl&)>& use) {
    for (const fs::path& file : SeedFiles(kAnySize)) {
        Attempt([&] { UseTables(file, use); });
    }
}

std::vector<Bytes> Thinned(std::vector<Bytes> inputs, std::size_t most) {
    std::sort(inputs.begin(), inputs.end());
    inputs.erase(std::unique(inputs.begin(), inputs.end()), inputs.end());
    std::vector<Bytes> kept;
    const std::size_t step = std::max<std::size_t>(1, inputs.size() / most);
    for (std::size_t i = 0; i < inputs.size(); i += step) {
        kept.push_back(std::move(inputs[i]));
    }
    return kept;
}

}  // namespace quardele::fuzz
