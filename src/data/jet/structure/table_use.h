// Which tables this process has open, through which of its Databases.
#pragma once

#include <cstdint>
#include <filesystem>

namespace quardele::jet {

class Engine;

/// Held by an open table while it lives.
class TableUse {
 public:
    TableUse(const Engine& engine, std::uint32_t page);
    ~TableUse();
    TableUse(const TableUse&) = delete;
    TableUse& operator=(const TableUse&) = delete;

    /// Whether a table of this file is open through another Database.
    [[nodiscard]] static bool IsOpenElsewhere(const Engine& engine, std::uint32_t page);

 private:
    const Engine& engine_;
    std::filesystem::path file_;
    std::uint32_t page_;
};

}  // namespace quardele::jet
