// A letter read back from its file by an independent program.
#pragma once

#include <filesystem>
#include <vector>

#include <QStringList>

namespace quardele::tests {

struct WrittenLetter {
    /// The paragraphs of the page header.
    QStringList header;
    /// The cells of each table of the main text, row by row.
    std::vector<std::vector<QStringList>> tables;
};

/// Unpacks the file with unzip and reads its XML; empty when that does not work.
[[nodiscard]] WrittenLetter ReadLetter(const std::filesystem::path& file);

}  // namespace quardele::tests
