// The programs written by others that read a workbook back.
#pragma once

#include <filesystem>
#include <string>

#include "modelled_sheet.h"

namespace quardele::workbook::test {

/// Units that texts rarely have.
enum class Units { Null, LineBreaks, Tabs, Controls, HighControls, Pairs, LoneHalves, NoCharacters };

/// What a reader makes of such units: the text as it was written, another text beside cells that are right,
/// or no sheet that could be compared.
enum class Told { Rightly, Otherwise, NotAtAll };

/// One independent reader. Names and presence are of the machine that runs the tests.
class WorkbookReader {
 public:
    virtual ~WorkbookReader() = default;
    [[nodiscard]] virtual std::string Name() const = 0;
    [[nodiscard]] virtual bool IsHere() const = 0;
    /// What the reader sees. Its working files go into `folder`.
    [[nodiscard]] virtual SheetInWords Read(const std::filesystem::path& file,
                                            const std::filesystem::path& folder) const = 0;
    /// What it can tell of a sheet: some know no types, or leave empty rows out.
    [[nodiscard]] virtual SheetInWords AsItTells(SheetInWords wanted) const { return wanted; }
    /// Whether it tells moments from numbers.
    [[nodiscard]] virtual bool KnowsMoments() const { return true; }
    /// Whether it reads letters other than those of French without fault of its own.
    [[nodiscard]] virtual bool KnowsAllLetters() const { return true; }
    /// Halves of pairs are written as U+FFFD.
    [[nodiscard]] virtual Told Tells(Units /*kind*/) const { return Told::Rightly; }
    /// Whether it reads texts that reach over more than two records.
    [[nodiscard]] virtual bool KnowsLongTexts() const { return true; }
};

/// xlrd, LibreOffice Calc, libfreexl, xls2csv of catdoc, ssconvert of Gnumeric.
[[nodiscard]] const std::vector<const WorkbookReader*>& WorkbookReaders();

}  // namespace quardele::workbook::test
