#include "structure_support.h"

#include <sstream>

#include <basic/date.h>
#include <jet/check.h>

#include "pages/usage_map.h"
#include "table_impl.h"

namespace quardele::jet::test {

namespace {

/// Prints a value with its type, numbers by their bits.
struct Printer {
    std::ostream& out;

    void operator()(basic::Empty) const { out << "empty"; }
    void operator()(basic::Null) const { out << "null"; }
    void operator()(bool value) const { out << (value ? "true" : "false"); }
    void operator()(const basic::Currency& value) const { out << 'c' << value.tenThousandths; }
    void operator()(float value) const { out << 'f' << std::bit_cast<std::uint32_t>(value); }
    void operator()(double value) const { out << 'd' << std::bit_cast<std::uint64_t>(value); }
    void operator()(const basic::Date& value) const { (*this)(value.days); }
    void operator()(const basic::Decimal& value) const {
        out << (value.negative ? '-' : '+') << int{value.scale};
        for (const std::uint32_t part : value.magnitude) {
            out << '.' << part;
        }
    }
    void operator()(const basic::Guid& value) const {
        for (const std::uint8_t byte : value.bytes) {
            out << int{byte} << ' ';
        }
    }
    void operator()(const Text& value) const { out << '"' << basic::ToUtf8(value) << '"'; }
    void operator()(const basic::Binary& value) const {
        for (const std::uint8_t byte : value) {
            out << int{byte} << ' ';
        }
    }
    template <class Integer>
    void operator()(Integer value) const {
        out << int{value};
    }
};

}  // namespace

Column ColumnOf(const Text& name, ColumnType type, int size) {
    return {.name = name, .type = type, .size = size, .defaultValue = {}};
}

TableDesign EveryType() {
    TableDesign design{
        .name = u"Tout",
        .columns = {ColumnOf(u"Id", ColumnType::Long), ColumnOf(u"Vrai", ColumnType::Boolean),
                    ColumnOf(u"Octet", ColumnType::Byte), ColumnOf(u"Entier", ColumnType::Integer),
                    ColumnOf(u"Notes", ColumnType::Memo), ColumnOf(u"Prix", ColumnType::Currency),
                    ColumnOf(u"Simple", ColumnType::Single), ColumnOf(u"Double", ColumnType::Double),
                    ColumnOf(u"Jour", ColumnType::Date), ColumnOf(u"Octets", ColumnType::Binary, 12),
                    ColumnOf(u"Nom", ColumnType::Text, 40), ColumnOf(u"Image", ColumnType::Ole),
                    ColumnOf(u"Cle", ColumnType::Guid), ColumnOf(u"Nombre", ColumnType::Numeric)},
        .indexes = {{.name = u"PrimaryKey", .columns = {{.column = u"Id"}}, .primary = true},
                    {.name = u"ParNom",
                     .columns = {{.column = u"Nom"}, {.column = u"Jour", .ascending = false}},
                     .unique = true,
                     .ignoreNulls = true},
                    {.name = u"ParJour", .columns = {{.column = u"Jour"}}, .required = true},
                    {.name = u"ParNotes", .columns = {{.column = u"Notes", .ascending = false}}}}};
    design.columns[0].autoNumber = true;
    design.columns[3].defaultValue = u"7";
    design.columns[8].required = true;
    design.columns[10].allowZeroLength = false;
    design.columns[10].defaultValue = u"\"x\"";
    design.columns[13].precision = 18;
    design.columns[13].scale = 4;
    return design;
}

std::vector<ColumnChange> RowOfEveryType(int i) {
    return {{1, i % 2 == 0},
            {2, static_cast<std::uint8_t>(i % 256)},
            {3, static_cast<std::int16_t>(-i)},
            {4, Text(static_cast<std::size_t>(i % 150) * 40, u'm')},
            {5, basic::Currency{12345 * std::int64_t{i}}},
            {6, 0.5F * static_cast<float>(i)},
            {7, 1.0 / (i + 1)},
            {8, basic::Date{basic::DateOf(2026, 1 + i % 12, 1 + i % 28).days + i / 10000.0}},
            {9, basic::Binary(static_cast<std::size_t>(i % 12 + 1), 0xAB)},
            {10, basic::FromUtf8("élan " + std::to_string(i))},
            {11, basic::Binary(static_cast<std::size_t>(i % 100) * 100, 0xCD)},
            {12, basic::Guid{{1, 2, 3, static_cast<std::uint8_t>(i % 256)}}},
            {13, basic::Decimal{.negative = true, .scale = 4, .magnitude = {0, 0, 0, 98765}}}};
}

void FillEveryType(Database& database, Table& table, int rows) {
    Step step = database.Begin();
    for (int i = 0; i < rows; ++i) {
        table.Insert(RowOfEveryType(i));
    }
    step.Commit();
}

std::string Findings(const std::filesystem::path& file, bool withNotes) {
    std::string lines;
    for (const Fault& fault : CheckFile(file)) {
        if (withNotes || !fault.note) {
            lines += basic::ToUtf8(Describe(fault, FaultLanguage::English)) + "\n";
        }
    }
    return lines;
}

std::string RowText(const Table& table, const Row& row) {
    std::ostringstream text;
    for (std::size_t i = 0; i < table.Columns().size(); ++i) {
        std::visit(Printer{text}, row.Value(static_cast<int>(i)).Stored());
        text << '|';
    }
    return text.str();
}

std::vector<std::string> Rows(const Table& table) {
    std::vector<std::string> rows;
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        rows.push_back(RowText(table, *row));
    }
    return rows;
}

PageUse PagesOf(const std::filesystem::path& file) {
    const auto table = Database::Open(file, OpenMode::ReadOnly)->OpenTable(u"MSysObjects");
    const PageSource& pages = table->Impl().Pages();
    return {.all = pages.PageCount(),
            .free = ReadUsageMap(pages, {.page = kGlobalMapPage, .slot = 0}).size()};
}

}  // namespace quardele::jet::test
