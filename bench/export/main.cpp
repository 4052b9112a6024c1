// A list of 50 000 rows and 15 columns as a workbook: ours beside what one would convert it with. All sides
// read the same text file and write an Excel 97-2003 file. Prints a comparison in French.
//   quardele-bench-export [--runs N]
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include <basic/date.h>
#include <workbook/workbook.h>

#include "program.h"
#include "race.h"
#include "report.h"
#include "temporary_folder.h"

namespace fs = std::filesystem;
using namespace quardele;
using namespace quardele::bench;

namespace {

constexpr int kRows = 50000;
constexpr int kColumns = 15;

/// Columns take turns: a text, of which some repeat as makes and customers do; a number; a day.
std::string TextOf(int row, int column) {
    switch (column % 3) {
        case 0:
            return column % 2 == 0 ? "AB-" + std::to_string(row * 7 + column) + "-CD"
                                   : "Société Générale " + std::to_string(row % 400);
        case 1:
            return std::to_string(row * 37 % 300000) + (column == 4 ? ".25" : "");
        default:
            return std::to_string(2000 + row % 27) + "-0" + std::to_string(1 + row % 9) + "-1" +
                   std::to_string(column % 10);
    }
}

void WriteList(const fs::path& path) {
    std::ofstream list(path);
    for (int column = 0; column < kColumns; ++column) {
        list << (column == 0 ? "" : ";") << "Colonne " << column;
    }
    list << '\n';
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            list << (column == 0 ? "" : ";") << TextOf(row, column);
        }
        list << '\n';
    }
}

workbook::Cell CellOf(const std::string& text, int column) {
    switch (column % 3) {
        case 0:
            return basic::FromUtf8(text);
        case 1:
            return std::strtod(text.c_str(), nullptr);
        default:
            return basic::DateOf(std::atoi(text.c_str()), std::atoi(text.c_str() + 5),
                                 std::atoi(text.c_str() + 8));
    }
}

std::vector<std::string> Parts(const std::string& line) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = line.find(';'); end != std::string::npos; end = line.find(';', start)) {
        parts.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(line.substr(start));
    return parts;
}

void Export(const fs::path& list, const fs::path& file) {
    std::ifstream lines(list);
    std::string line;
    std::getline(lines, line);
    std::vector<workbook::Column> columns;
    for (const std::string& heading : Parts(line)) {
        columns.push_back({.heading = basic::FromUtf8(heading)});
    }
    workbook::Workbook book(u"Feuille1", columns);
    std::vector<workbook::Cell> cells(columns.size());
    while (std::getline(lines, line)) {
        int column = 0;
        for (const std::string& text : Parts(line)) {
            cells[static_cast<std::size_t>(column)] = CellOf(text, column);
            ++column;
        }
        book.AddRow(cells);
    }
    std::ofstream out(file, std::ios::binary);
    book.Write(out);
}

void Compare(int runs) {
    const TemporaryFolder folder;
    const fs::path list = folder.Path() / "liste.csv";
    WriteList(list);
    const auto ours = [&] { Export(list, folder.Path() / "ours.xls"); };
    const std::string profile = "-env:UserInstallation=file://" + (folder.Path() / "profile").string();
    // Semicolons, UTF-8, the first line is a row; third columns are dates in the order year, month, day.
    const std::string format = "--infilter=CSV:59,34,76,1,3/5/6/5/9/5/12/5/15/5,1033";
    const Command office{"soffice", profile,    "--headless",           format,       "--convert-to",
                         "xls",     "--outdir", folder.Path().string(), list.string()};
    const Command xlwt{"/usr/bin/python3", QUARDELE_BENCH_XLWT_SCRIPT, list.string(),
                       (folder.Path() / "xlwt.xls").string()};
    Report report(std::cout);
    report.Section("Export Excel, 50 000 lignes de 15 colonnes", "autrement");
    report.Compare("depuis un fichier texte / LibreOffice", Race(runs, ours, {office}));
    report.Compare("depuis un fichier texte / Python, xlwt", Race(runs, ours, {xlwt}));
}

}  // namespace

int main(int argc, char* argv[]) {
    int runs = 5;
    Options options("quardele-bench-export [--runs N]");
    options.Number("--runs", runs);
    return RunProgram(argc, argv, options, [&] { Compare(runs); });
}
