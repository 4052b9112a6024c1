// Files with a few bytes changed, page kind by page kind.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <vector>

namespace quardele::jet::test {

/// What a page holds.
enum class PageUse { Header, Map, Definition, IndexNode, IndexLeaf, LongValues, Catalogue, Rows, Other };

/// A file in memory, of which changed copies are made.
class MutableFile {
 public:
    explicit MutableFile(const std::filesystem::path& original);

    [[nodiscard]] const std::filesystem::path& Original() const { return original_; }
    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    /// Whether the engine writes to files of its version.
    [[nodiscard]] bool IsWritable() const;

    struct Mutation {
        PageUse use = PageUse::Other;
        std::vector<std::uint8_t> bytes;
    };
    /// A copy with up to six bytes changed, all on pages of one use, which is as likely as any other that the
    /// file has: mostly near the starts of pages and of their rows, where counts and links stand.
    [[nodiscard]] Mutation Mutated(std::mt19937& random) const;

 private:
    [[nodiscard]] PageUse UseOf(std::size_t page) const;

    std::filesystem::path original_;
    std::size_t pageSize_;
    std::vector<std::uint8_t> bytes_;
    std::map<PageUse, std::vector<std::size_t>> pages_;
};

}  // namespace quardele::jet::test
