#include "workshop.h"

#include <basic/date.h>

namespace quardele::jet::test {

namespace {

constexpr int kPlateSize = 200;

Column ColumnOf(Text name, ColumnType type, int size = 0) {
    Column column;
    column.name = std::move(name);
    column.type = type;
    column.size = size;
    return column;
}

TableDesign VehiclesDesign() {
    TableDesign design;
    design.name = u"VEHICLES";
    design.columns = {ColumnOf(u"NUMBER", ColumnType::Long), ColumnOf(u"PLATE", ColumnType::Text, kPlateSize),
                      ColumnOf(u"KM", ColumnType::Long), ColumnOf(u"NOTES", ColumnType::Memo)};
    design.columns[0].autoNumber = true;
    IndexDesign key{.name = u"PrimaryKey", .columns = {{u"NUMBER"}}};
    key.primary = true;
    IndexDesign plate{.name = u"PLATES", .columns = {{u"PLATE"}}};
    plate.unique = true;
    design.indexes = {key, plate};
    return design;
}

Text Numbered(const char16_t* start, int number) {
    return start + basic::FromUtf8(std::to_string(number));
}

std::vector<ColumnChange> ChangesOf(const Table& table, const std::vector<NamedValue>& values) {
    std::vector<ColumnChange> changes;
    for (const NamedValue& value : values) {
        changes.push_back({table.FindColumn(value.column), value.value});
    }
    return changes;
}

void InsertVehicles(Database& database, int from, int to) {
    const auto vehicles = database.OpenTable(u"VEHICLES");
    Step step = database.Begin();
    for (int i = from; i < to; ++i) {
        InsertRow(*vehicles, {{u"PLATE", Numbered(u"PLATE ", i * 7919 % 100000)},
                              {u"KM", std::int32_t{i}},
                              {u"NOTES", Numbered(u"seen ", i)}});
    }
    step.Commit();
}

void SetNotes(Database& database, int position, Text notes) {
    const auto vehicles = database.OpenTable(u"VEHICLES");
    UpdateRow(*vehicles, RowAt(*vehicles, position), {{u"NOTES", std::move(notes)}});
}

void DeleteVehicles(Database& database, int from, int count) {
    const auto vehicles = database.OpenTable(u"VEHICLES");
    Step step = database.Begin();
    std::vector<RowId> rows;
    for (int i = 0; i < count; ++i) {
        rows.push_back(RowAt(*vehicles, from + i));
    }
    for (const RowId row : rows) {
        vehicles->Delete(row);
    }
    step.Commit();
}

TableDesign VisitsDesign() {
    TableDesign design;
    design.name = u"VISITS";
    design.columns = {ColumnOf(u"VEHICLE", ColumnType::Long), ColumnOf(u"DAY", ColumnType::Date),
                      ColumnOf(u"PRICE", ColumnType::Currency)};
    design.indexes = {IndexDesign{.name = u"BY_VEHICLE", .columns = {{u"VEHICLE"}, {u"DAY", false}}}};
    return design;
}

void InsertVisits(Database& database) {
    const auto visits = database.OpenTable(u"VISITS");
    Step step = database.Begin();
    for (int i = 0; i < 3; ++i) {
        InsertRow(*visits, {{u"VEHICLE", std::int32_t{5 - i}}, {u"DAY", basic::DateOf(2026, 1, 2 + i)}});
    }
    step.Commit();
}

void ChangeTwoTables(Database& database) {
    const auto vehicles = database.OpenTable(u"VEHICLES");
    const auto visits = database.OpenTable(u"VISITS");
    Step step = database.Begin();
    InsertRow(*visits, {{u"VEHICLE", std::int32_t{12}}, {u"DAY", basic::DateOf(2026, 3, 4)}});
    vehicles->Delete(RowAt(*vehicles, 3));
    UpdateRow(*vehicles, RowAt(*vehicles, 4), {{u"PLATE", Text(150, u'é')}, {u"KM", basic::Null{}}});
    step.Commit();
}

}  // namespace

std::filesystem::path MakeWorkshop(const std::filesystem::path& folder, int vehicles) {
    std::filesystem::path file = folder / "workshop.mdb";
    const auto database = Database::Create(file);
    database->CreateTable(VehiclesDesign());
    InsertVehicles(*database, 0, vehicles);
    return file;
}

void UpdateRow(Table& table, RowId row, const std::vector<NamedValue>& values) {
    table.Update(row, ChangesOf(table, values));
}

RowId InsertRow(Table& table, const std::vector<NamedValue>& values) {
    return table.Insert(ChangesOf(table, values));
}

RowId RowAt(const Table& table, int position) {
    RowScan scan = table.Scan();
    for (int i = 0; i < position; ++i) {
        static_cast<void>(scan.NextId());
    }
    return scan.NextId().value();
}

std::vector<Change> MixedChanges() {
    return {
        {"insert a row",
         [](Database& database) {
             InsertRow(*database.OpenTable(u"VEHICLES"),
                       {{u"PLATE", Text(u"AA-1")}, {u"NOTES", Text(u"new")}});
         }},
        {"insert rows until indexes split",
         [](Database& database) { InsertVehicles(database, 50000, 50220); }},
        {"a memo gets a page", [](Database& database) { SetNotes(database, 10, Text(1500, u'Ω')); }},
        {"a memo gets a chain of pages",
         [](Database& database) { SetNotes(database, 11, Text(9000, u'é')); }},
        {"a memo grows into a chain", [](Database& database) { SetNotes(database, 10, Text(5000, u'a')); }},
        {"a key changes",
         [](Database& database) {
             const auto vehicles = database.OpenTable(u"VEHICLES");
             UpdateRow(*vehicles, RowAt(*vehicles, 20), {{u"PLATE", Text(u"ZZ-9")}});
         }},
        {"rows grow out of their page",
         [](Database& database) {
             const auto vehicles = database.OpenTable(u"VEHICLES");
             Step step = database.Begin();
             for (int i = 30; i < 40; ++i) {
                 UpdateRow(*vehicles, RowAt(*vehicles, i), {{u"PLATE", Numbered(u"", i) + Text(180, u'Ω')}});
             }
             step.Commit();
         }},
        {"a memo shrinks", [](Database& database) { SetNotes(database, 11, u"short"); }},
        {"a row with a long memo goes", [](Database& database) { DeleteVehicles(database, 10, 1); }},
        {"rows go until pages are free", [](Database& database) { DeleteVehicles(database, 60, 180); }},
        {"a column comes",
         [](Database& database) {
             database.AddColumn(u"VEHICLES", ColumnOf(u"COLOUR", ColumnType::Text, 20));
         }},
        {"a new column is filled",
         [](Database& database) {
             const auto vehicles = database.OpenTable(u"VEHICLES");
             UpdateRow(*vehicles, RowAt(*vehicles, 2), {{u"COLOUR", Text(u"bleu")}});
         }},
        {"a table comes", [](Database& database) { database.CreateTable(VisitsDesign()); }},
        {"a new table is filled", InsertVisits},
        {"an index comes",
         [](Database& database) {
             database.CreateIndex(u"VEHICLES", IndexDesign{.name = u"BY_KM", .columns = {{u"KM"}}});
         }},
        {"rules of a column change",
         [](Database& database) {
             Column rules = ColumnOf(u"COLOUR", ColumnType::Text, 20);
             rules.defaultValue = u"\"blanc\"";
             database.SetColumnRules(u"VEHICLES", u"COLOUR", rules);
         }},
        {"two tables change in one step", ChangeTwoTables},
        {"a table goes", [](Database& database) { database.DropTable(u"VISITS"); }},
    };
}

std::string ContentsOf(const std::filesystem::path& file) {
    std::string contents;
    const auto database = Database::Open(file);
    for (const CatalogEntry& entry : database->Catalog()) {
        if (entry.system) {
            continue;
        }
        const auto table = database->OpenTable(entry.name);
        contents += basic::ToUtf8(entry.name) + '\n';
        for (const Column& column : table->Columns()) {
            contents += basic::ToUtf8(column.name + u"=" + column.defaultValue) + '|';
        }
        for (const Index& index : table->Indexes()) {
            contents += '#' + basic::ToUtf8(index.name);
        }
        RowScan scan = table->Scan();
        while (const auto row = scan.Next()) {
            contents += '\n';
            for (std::size_t i = 0; i < table->Columns().size(); ++i) {
                const Variant value = row->Value(static_cast<int>(i));
                contents += value.IsText()   ? basic::ToUtf8(value.As<Text>())
                            : value.IsNull() ? std::string("Null")
                                             : std::to_string(row->NumberAt(static_cast<int>(i)));
                contents += '|';
            }
        }
        contents += '\n';
    }
    return contents;
}

}  // namespace quardele::jet::test
