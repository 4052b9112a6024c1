// Pages of PDF files as pictures.
#pragma once

#include <filesystem>

#include <QStringList>

namespace quardele::demo {

/// Runs a program to its end; false when it is missing, fails or takes more than a minute.
[[nodiscard]] bool RunToTheEnd(const QString& program, const QStringList& arguments);

/// Draws the first page of a PDF file into a .png file; false where pdftoppm is missing.
[[nodiscard]] bool PictureOfPdf(const std::filesystem::path& pdf, const std::filesystem::path& picture);

}  // namespace quardele::demo
