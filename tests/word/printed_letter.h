// A letter as it comes out of the printer: converted to PDF by an office of its own, read by poppler.
#pragma once

#include <filesystem>

#include <QString>

namespace quardele::tests {

/// Where a word stands on the first page, in millimetres from the top left corner; -1 when it does not.
struct WordPlace {
    double left = -1;
    double top = -1;
    double bottom = -1;
};

class PrintedLetter {
 public:
    /// Writes the PDF file and a throw-away profile into `scratch`.
    PrintedLetter(const std::filesystem::path& letter, const std::filesystem::path& scratch);

    /// A page's text, from 1, its lines as they are seen, runs of blanks made one; empty behind the last
    /// page.
    [[nodiscard]] QString Page(int number) const;
    [[nodiscard]] WordPlace PlaceOf(const QString& word) const;

 private:
    std::filesystem::path pdf_;
};

}  // namespace quardele::tests
