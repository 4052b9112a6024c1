#include "comparison.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include <jet/check.h>

#include "other_readers.h"

namespace quardele::jet::test {

namespace fs = std::filesystem;

namespace {

using TextOf = CellText (*)(const Column&, const Variant&);
using Rows = std::vector<std::vector<CellText>>;

std::string Shown(const std::vector<CellText>& row) {
    constexpr std::size_t kLongest = 60;
    std::string text;
    for (const CellText& cell : row) {
        const std::string shown = cell ? "\"" + *cell + "\"" : "Null";
        text += shown.size() <= kLongest
                    ? shown + " "
                    : shown.substr(0, kLongest) + "... (" + std::to_string(shown.size()) + ") ";
    }
    return text;
}

ReadTable InWords(const TableContents& contents, TextOf textOf) {
    ReadTable table;
    for (const Column& column : contents.columns) {
        table.columns.push_back(basic::ToUtf8(column.name));
    }
    for (const auto& values : contents.rows) {
        auto& row = table.rows.emplace_back();
        for (std::size_t i = 0; i < values.size(); ++i) {
            row.push_back(textOf(contents.columns[i], values[i]));
        }
    }
    return table;
}

/// The first rows that the one has and the other has not.
void ExpectSameRows(Rows expected, Rows read) {
    std::sort(expected.begin(), expected.end());
    std::sort(read.begin(), read.end());
    Rows missing;
    Rows added;
    std::set_difference(expected.begin(), expected.end(), read.begin(), read.end(),
                        std::back_inserter(missing));
    std::set_difference(read.begin(), read.end(), expected.begin(), expected.end(),
                        std::back_inserter(added));
    EXPECT_EQ(read.size(), expected.size());
    EXPECT_TRUE(missing.empty()) << missing.size() << " rows are not read, as " << Shown(missing.front());
    EXPECT_TRUE(added.empty()) << added.size() << " rows are read that are not there, as "
                               << Shown(added.front());
}

void ExpectSameTable(const Text& name, const TableContents& contents, TextOf textOf, ReadTable read) {
    SCOPED_TRACE("table " + basic::ToUtf8(name));
    ReadTable expected = InWords(contents, textOf);
    if (contents.rows.empty() && read.columns.empty()) {
        read.columns = expected.columns;
    }
    EXPECT_EQ(read.columns, expected.columns);
    ExpectSameRows(std::move(expected.rows), std::move(read.rows));
}

template <class Table>
std::set<std::string> NamesOf(const std::map<std::string, Table>& tables) {
    std::set<std::string> names;
    for (const auto& [name, table] : tables) {
        names.insert(name);
    }
    return names;
}

std::set<std::string> NamesOf(const Contents& contents) {
    std::set<std::string> names;
    for (const auto& [name, table] : contents) {
        names.insert(basic::ToUtf8(name));
    }
    return names;
}

void CompareWithOurReading(const fs::path& file, const Contents& expected) {
    SCOPED_TRACE("our own reading");
    const Contents ours = ReadContents(file);
    EXPECT_EQ(NamesOf(ours), NamesOf(expected));
    for (const auto& [name, table] : expected) {
        if (const auto read = ours.find(name); read != ours.end()) {
            ExpectSameTable(name, table, ExactText, InWords(read->second, ExactText));
        }
    }
}

void CompareWithMdbTools(const fs::path& file, const Contents& expected) {
    SCOPED_TRACE("mdbtools");
    const auto schema = ReadByMdbSchema(file);
    EXPECT_EQ(NamesOf(schema), NamesOf(expected));
    for (const auto& [name, table] : expected) {
        const std::string utf8 = basic::ToUtf8(name);
        std::vector<std::string> columns;
        for (const Column& column : table.columns) {
            columns.push_back(basic::ToUtf8(column.name));
            columns.push_back(SchemaType(column));
        }
        EXPECT_EQ(schema.contains(utf8) ? schema.at(utf8) : std::vector<std::string>(), columns) << utf8;
        ExpectSameTable(name, table, ExportText, ReadByMdbExport(file, utf8));
    }
}

void CompareWithMdbReader(const fs::path& file, const Contents& expected) {
    SCOPED_TRACE("mdb-reader");
    auto theirs = ReadByMdbReader(file);
    EXPECT_EQ(NamesOf(theirs), NamesOf(expected));
    for (const auto& [name, table] : expected) {
        ExpectSameTable(name, table, ExactText, std::move(theirs[basic::ToUtf8(name)]));
    }
}

}  // namespace

void ExpectAllReadersAgree(const fs::path& file, const Contents& expected) {
    CompareWithOurReading(file, expected);
    if (HasMdbTools()) {
        CompareWithMdbTools(file, expected);
    }
    if (HasMdbReader()) {
        CompareWithMdbReader(file, expected);
    }
}

void ExpectSound(const fs::path& file, bool ours) {
    for (const Fault& fault : CheckFile(file)) {
        EXPECT_TRUE(fault.note && !ours) << basic::ToUtf8(Describe(fault, FaultLanguage::English));
    }
}

}  // namespace quardele::jet::test
