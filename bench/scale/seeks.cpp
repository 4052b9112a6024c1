#include "benchmarks.h"

#include <array>
#include <random>
#include <stdexcept>

#include "table_rows.h"
#include "temporary_folder.h"

namespace quardele::bench {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kSeeks = 100000;
constexpr std::array<basic::TextView, 3> kRead = {u"TVEH_CODCLI", u"TVEH_MARQUE", u"TVEH_ComplIdent"};

/// Registrations in no order, for both sides; a vehicle may be sought more than once.
struct Sought {
    std::vector<basic::Variant> ours;
    std::vector<SqliteValue> theirs;
};

Sought PickKeys(const TableRows& rows) {
    std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same in every run
    Sought sought;
    for (std::size_t i = 0; i < kSeeks; ++i) {
        const std::size_t row = random() % rows.ours.size();
        sought.ours.push_back(rows.ours[row][0].value);
        sought.theirs.push_back(rows.theirs[row][0]);
    }
    return sought;
}

/// Returns the bytes read, to be compared.
std::size_t SeekOurs(const jet::Table& table, const std::vector<basic::Variant>& keys) {
    std::array<int, kRead.size()> columns{};
    for (std::size_t i = 0; i < kRead.size(); ++i) {
        columns[i] = table.FindColumn(kRead[i]);
    }
    jet::IndexCursor cursor = table.OpenIndex(table.FindIndex(u"PrimaryKey"));
    std::string text;
    std::size_t read = 0;
    for (const basic::Variant& key : keys) {
        if (!cursor.Seek(jet::SeekOperator::Equal, {&key, 1})) {
            throw std::runtime_error("clé introuvable");
        }
        const auto row = table.Fetch(cursor.Current());
        for (const int column : columns) {
            text.clear();
            row->AppendUtf8At(column, text);
            read += text.size();
        }
    }
    return read;
}

std::size_t SeekTheirs(SqliteFile& file, const std::vector<SqliteValue>& keys) {
    SqliteStatement select(file, "SELECT " + basic::ToUtf8(kRead[0]) + ", " + basic::ToUtf8(kRead[1]) + ", " +
                                     basic::ToUtf8(kRead[2]) + " FROM TVEH WHERE TVEH_IMMAT = ?");
    std::string text;
    std::size_t read = 0;
    file.Execute("BEGIN");  // or else every statement would lock the file for itself
    for (const SqliteValue& key : keys) {
        select.Bind(1, key);
        if (!select.Step()) {
            throw std::runtime_error("clé introuvable");
        }
        for (int column = 0; column < static_cast<int>(kRead.size()); ++column) {
            text = select.TextAt(column);
            read += text.size();
        }
        select.Reset();
    }
    file.Execute("COMMIT");
    return read;
}

}  // namespace

void MeasureSeeks(Report& report, int runs, const fs::path& file) {
    const TemporaryFolder folder;
    const TableRows rows = ReadRows(file, u"TVEH", kSeeks);
    SqliteFile sqlite(folder.Path() / "vehicules.sqlite");
    sqlite.CreateLike(*rows.table);
    sqlite.Execute("BEGIN");
    InsertTheirs(sqlite, rows, 0, rows.theirs.size());
    sqlite.Execute("COMMIT");
    const Sought sought = PickKeys(rows);
    std::size_t ours = 0;
    std::size_t theirs = 0;
    report.Section("Recherche par clé primaire, trois colonnes lues", "SQLite");
    report.Compare(
        std::to_string(kSeeks) + " recherches parmi " + std::to_string(rows.ours.size()) + " véhicules",
        RaceTimed(
            runs, [&] { return TimeOf([&] { ours = SeekOurs(*rows.table, sought.ours); }); },
            Side([&] { return TimeOf([&] { theirs = SeekTheirs(sqlite, sought.theirs); }); })));
    if (ours != theirs) {
        throw std::runtime_error("les deux côtés n'ont pas lu la même chose");
    }
}

}  // namespace quardele::bench
