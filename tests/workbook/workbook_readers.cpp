#include "workbook_readers.h"

#include <array>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <sstream>
#include <string_view>

#include "../data/jet/csv.h"
#include "../data/jet/support.h"
#include "../interop/json_line.h"
#include "freexl_reader.h"

namespace quardele::workbook::test {

namespace fs = std::filesystem;

namespace {

bool Runs(const std::string& command) {
    return std::system((command + " > /dev/null 2>&1").c_str()) == 0;
}

/// The number that a text of digits means, in the form of all readers.
std::string SameNumber(const std::string& words) {
    return NumberInWords(std::strtod(words.c_str() + 2, nullptr));
}

/// What read_workbook.py prints; its last line is the name of the sheet.
SheetInWords ReadByScript(const std::string& reader, const fs::path& file) {
    SheetInWords sheet;
    std::istringstream lines(jet::test::Output(
        {"/usr/bin/python3", QUARDELE_SOURCE_DIR "/tests/workbook/read_workbook.py", reader, file.string()}));
    for (std::string line; std::getline(lines, line);) {
        auto cells = jet::test::ParseJsonLine(line);
        for (CellInWords& cell : cells) {
            if (cell && cell->starts_with("n:")) {
                cell = SameNumber(*cell);
            }
        }
        while (!cells.empty() && !cells.back()) {
            cells.pop_back();
        }
        sheet.push_back(std::move(cells));
    }
    EXPECT_EQ(sheet.back().front(), "Feuille1");
    sheet.pop_back();
    return sheet;
}

class Xlrd : public WorkbookReader {
 public:
    std::string Name() const override { return "xlrd"; }
    bool IsHere() const override { return Runs("/usr/bin/python3 -c 'import xlrd'"); }
    SheetInWords Read(const fs::path& file, const fs::path& /*folder*/) const override {
        return ReadByScript("xlrd", file);
    }
};

/// A blank or an accent that stands in the URL of its profile as it is ends the office with an exception.
std::string FileUrl(const fs::path& path) {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string url = "file://";
    for (const char letter : path.string()) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte < 0x80 &&
            (std::isalnum(byte) != 0 || letter == '/' || letter == '-' || letter == '_' || letter == '.')) {
            url += letter;
        } else {
            url += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
        }
    }
    return url;
}

class Calc : public WorkbookReader {
 public:
    std::string Name() const override { return "LibreOffice Calc"; }
    bool IsHere() const override { return Runs("command -v soffice") && Runs("command -v localc"); }
    /// XML has no control characters; one line end is as good as another.
    Told Tells(Units kind) const override {
        const bool other = kind == Units::Null || kind == Units::LineBreaks || kind == Units::Controls ||
                           kind == Units::NoCharacters;
        return other ? Told::Otherwise : Told::Rightly;
    }
    SheetInWords Read(const fs::path& file, const fs::path& folder) const override {
        (void)jet::test::Output({"soffice", "-env:UserInstallation=" + FileUrl(folder / "profile"),
                                 "--headless", "--convert-to", "fods", "--outdir", folder.string(),
                                 file.string()});
        return ReadByScript("office", folder / file.filename().replace_extension(".fods"));
    }
};

class Gnumeric : public WorkbookReader {
 public:
    std::string Name() const override { return "ssconvert"; }
    bool IsHere() const override { return Runs("command -v ssconvert"); }
    /// As Calc; but U+FFFE and U+FFFF stand in its XML, which is none then.
    Told Tells(Units kind) const override {
        if (kind == Units::NoCharacters) {
            return Told::NotAtAll;
        }
        const bool other = kind == Units::Null || kind == Units::LineBreaks || kind == Units::Controls;
        return other ? Told::Otherwise : Told::Rightly;
    }
    SheetInWords Read(const fs::path& file, const fs::path& folder) const override {
        const fs::path converted = folder / file.filename().replace_extension(".gnumeric");
        (void)jet::test::Output({"ssconvert", file.string(), converted.string()});
        return ReadByScript("gnumeric", converted);
    }
};

/// Knows neither types nor our date formats: it gives the texts of cells, moments as days since 1900, and
/// leaves empty rows out. Letters beyond those of Western Europe whose lower byte is small confuse it
/// (version 0.95).
class Catdoc : public WorkbookReader {
 public:
    std::string Name() const override { return "xls2csv"; }
    bool IsHere() const override { return Runs("command -v xls2csv"); }
    bool KnowsMoments() const override { return false; }
    bool KnowsAllLetters() const override { return false; }
    /// It takes high control characters for letters of Windows, and each half of a pair for itself.
    Told Tells(Units kind) const override {
        if (kind == Units::Null) {
            return Told::NotAtAll;
        }
        const bool other = kind == Units::Controls || kind == Units::HighControls || kind == Units::Pairs;
        return other ? Told::Otherwise : Told::Rightly;
    }
    SheetInWords Read(const fs::path& file, const fs::path& /*folder*/) const override {
        // All texts in quotes; a form feed follows the last row.
        std::string csv = jet::test::Output({"xls2csv", "-q", "3", "-d", "utf-8", file.string()});
        if (!csv.empty() && csv.back() == '\f') {
            csv.pop_back();
        }
        SheetInWords sheet;
        for (auto& line : jet::test::ParseCsv(csv)) {
            WithoutEmptyEnds(line);
            if (!line.empty()) {
                sheet.push_back(std::move(line));
            }
        }
        return sheet;
    }
    SheetInWords AsItTells(SheetInWords wanted) const override {
        std::erase_if(wanted, [](const auto& row) { return row.empty(); });
        for (auto& row : wanted) {
            for (CellInWords& cell : row) {
                if (cell) {
                    cell = cell->substr(2);
                }
            }
        }
        return wanted;
    }

 private:
    static void WithoutEmptyEnds(std::vector<CellInWords>& row) {
        for (CellInWords& cell : row) {
            if (cell && cell->empty()) {
                cell.reset();
            }
        }
        while (!row.empty() && !row.back()) {
            row.pop_back();
        }
    }
};

}  // namespace

const std::vector<const WorkbookReader*>& WorkbookReaders() {
    static const Xlrd xlrd;
    static const Calc calc;
    static const Catdoc catdoc;
    static const Gnumeric gnumeric;
    static const std::vector<const WorkbookReader*> all{&xlrd, &calc, &FreeXl(), &catdoc, &gnumeric};
    return all;
}

}  // namespace quardele::workbook::test
