#include "read_everything.h"

#include <jet/row_cells.h>

#include "support.h"

namespace quardele::jet::test {

namespace fs = std::filesystem;

namespace {

// Anything but a RuntimeError goes through and fails the test.
template <class Action>
void Attempt(const Action& action) {
    static_cast<void>(ErrorNumber(action));
}

void ReadIndexes(const Table& table) {
    for (std::size_t i = 0; i < table.Indexes().size(); ++i) {
        IndexCursor cursor = table.OpenIndex(static_cast<int>(i));
        Attempt([&] {
            for (bool found = cursor.First(); found; found = cursor.Next()) {
                static_cast<void>(cursor.Current());
            }
        });
        Attempt([&] {
            for (bool found = cursor.Last(); found; found = cursor.Previous()) {
                static_cast<void>(cursor.KeyBytes());
            }
        });
        const Variant value(u"5");
        Attempt([&] { static_cast<void>(cursor.Seek(SeekOperator::GreaterOrEqual, {&value, 1})); });
    }
}

void ReadTable(Database& database, const Text& name) {
    const auto table = database.OpenTable(name);
    RowCells cells(*table);
    Attempt([&] {
        RowScan scan = table->Scan();
        while (const auto row = scan.Next()) {
            Attempt([&] { static_cast<void>(cells.Of(*row)); });
            for (std::size_t i = 0; i < table->Columns().size(); ++i) {
                Attempt([&] { static_cast<void>(row->Value(static_cast<int>(i))); });
            }
        }
    });
    ReadIndexes(*table);
}

}  // namespace

void ReadEverything(const fs::path& file) {
    Attempt([&] {
        const auto database = Database::Open(file, OpenMode::ReadOnly);
        for (const CatalogEntry& entry : database->Catalog()) {
            Attempt([&] { ReadTable(*database, entry.name); });
        }
    });
}

}  // namespace quardele::jet::test
