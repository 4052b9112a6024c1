// What a file can hold, dump writes and import reads without loss: values of every type by chance, those at
// the edges among them.

#include <array>
#include <cmath>
#include <limits>

#include "../interop/random_values.h"
#include "cell_parser.h"
#include "cell_text.h"
#include "mdb_program.h"
#include "row_writer.h"

namespace quardele::mdb::test {
namespace {

using jet::Column;
using jet::ColumnType;
using jet::test::Random;

constexpr int kRows = 1500;

constexpr std::array kTypes = {
    ColumnType::Boolean, ColumnType::Byte,   ColumnType::Integer, ColumnType::Long,   ColumnType::Currency,
    ColumnType::Single,  ColumnType::Double, ColumnType::Date,    ColumnType::Text,   ColumnType::Binary,
    ColumnType::Ole,     ColumnType::Memo,   ColumnType::Guid,    ColumnType::Numeric};

Column ColumnOf(ColumnType type, std::size_t number) {
    Column column;
    column.name = u"c" + basic::FromUtf8(std::to_string(number));
    column.type = type;
    column.size = type == ColumnType::Text || type == ColumnType::Binary ? 120 : 0;
    column.precision = 18;
    column.scale = 5;
    return column;
}

/// Any number of days that a file can hold: with fractions of seconds, at the ends of the calendar, beyond
/// it.
double RandomDays(Random& random) {
    switch (random.Below(6)) {
        case 0:
            return std::ldexp(static_cast<double>(random.Bits() >> 11), random.Between(-1000, 900)) *
                   (random.Chance(50) ? 1 : -1);
        case 1:
            return random.Pick(std::array{-657434.0, -657434.99999, -657435.0, 2958465.0, 2958465.999999,
                                          2958466.0, -0.25, -1e-9, 1e-9, -1.0, -1.9999999, 0.5 / 86400});
        case 2:
            return random.Between(-600000, 2900000) + random.Between(0, 86399999) / 86400000.0;
        case 3:
            return static_cast<double>(random.Bits() >> 11) * 0x1p-53 * 60000;
        default:
            return random.Between(0, 60000) + random.Between(0, 86399) / 86400.0;
    }
}

jet::Variant ValueOf(Random& random, const Column& column) {
    if (column.type == ColumnType::Date && random.Chance(80)) {
        return basic::Date{RandomDays(random)};
    }
    return jet::test::RandomValue(random, column, {.keyText = false, .noNull = false, .longestText = 100});
}

class ValueRoundTripTest : public MdbTest {
 protected:
    ValueRoundTripTest() {
        for (const ColumnType type : kTypes) {
            columns_.push_back(ColumnOf(type, columns_.size()));
        }
    }
    void SetUp() override {
        MdbTest::SetUp();
        copy_ = PathOf("copy.mdb");
        ASSERT_EQ(Mdb({"create", copy_}).exitCode, 0);
        for (const std::string& file : {file_, copy_}) {
            jet::Database::Open(file)->CreateTable({.name = u"T", .columns = columns_, .indexes = {}});
        }
    }
    void AddRows(std::uint64_t seed) const {
        Random random(seed);
        const auto database = jet::Database::Open(file_);
        const auto table = database->OpenTable(u"T");
        jet::Step step = database->Begin();
        for (int row = 0; row < kRows; ++row) {
            std::vector<jet::ColumnChange> values;
            for (std::size_t i = 0; i < columns_.size(); ++i) {
                values.push_back({static_cast<int>(i), ValueOf(random, columns_[i])});
            }
            table->Insert(values);
        }
        step.Commit();
    }
    static std::vector<std::vector<jet::Variant>> RowsOf(const std::string& file) {
        std::vector<std::vector<jet::Variant>> rows;
        const auto database = jet::Database::Open(file, jet::OpenMode::ReadOnly);
        const auto table = database->OpenTable(u"T");
        jet::RowScan scan = table->Scan();
        while (const auto row = scan.Next()) {
            auto& values = rows.emplace_back();
            for (std::size_t i = 0; i < kTypes.size(); ++i) {
                values.push_back(row->Value(static_cast<int>(i)));
            }
        }
        return rows;
    }

    std::vector<Column> columns_;
    std::string copy_;
};

TEST_F(ValueRoundTripTest, WhatDumpWritesImportReadsWithoutLoss) {
    AddRows(1);
    const Outcome import = Mdb({"import", copy_, "T", "-"}, Dump("T"));
    ASSERT_EQ(import.exitCode, 0) << import.err;
    const auto expected = RowsOf(file_);
    const auto read = RowsOf(copy_);
    ASSERT_EQ(read.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        for (std::size_t i = 0; i < kTypes.size(); ++i) {
            EXPECT_TRUE(read[row][i].Stored() == expected[row][i].Stored())
                << "row " << row << ", type " << static_cast<int>(kTypes[i]);
        }
    }
    EXPECT_EQ(Mdb({"dump", copy_, "T"}).out, Dump("T"));
}

/// The cell of a JSON object with one member, as a field that import would read.
CsvField FieldOf(const std::string& line) {
    std::string value = line.substr(line.find(':') + 1);
    value.resize(value.rfind('}'));
    if (value == "null") {
        return {};
    }
    if (value == "true" || value == "false") {
        return {value == "true" ? "1" : "0", false};
    }
    if (value.front() != '"') {
        return {value, false};
    }
    std::string text;
    for (std::size_t i = 1; i + 1 < value.size(); ++i) {
        if (value[i] != '\\') {
            text += value[i];
        } else if (value[++i] == 'u') {
            text += static_cast<char>(std::stoi(value.substr(i + 1, 4), nullptr, 16));
            i += 4;
        } else {
            text += value[i];
        }
    }
    return {text, true};
}

TEST_F(ValueRoundTripTest, JsonSaysTheSame) {
    AddRows(2);
    const auto rows = RowsOf(file_);
    for (std::size_t i = 0; i < kTypes.size(); ++i) {
        const std::string name = basic::ToUtf8(columns_[i].name);
        const Column column =
            jet::Database::Open(file_, jet::OpenMode::ReadOnly)->OpenTable(u"T")->Columns()[i];
        const std::string json = Mdb({"query", file_, "SELECT " + name + " FROM T", "--json"}).out;
        std::size_t at = json.find('\n') + 1;
        for (const auto& row : rows) {
            const std::size_t end = json.find('\n', at);
            const CsvField field = FieldOf(json.substr(at, end - at));
            EXPECT_TRUE(ParseCell(field, column).Stored() == row[i].Stored()) << json.substr(at, end - at);
            at = end + 1;
        }
        EXPECT_EQ(json.substr(at), "]\n");
    }
}

TEST(MomentTextTest, WholeSecondsAreWrittenWithoutAFraction) {
    for (const auto& [days, expected] : std::initializer_list<std::pair<double, const char*>>{
             {43890.0, "2020-02-29 00:00:00"},
             {43890 + 49506 / 86400.0, "2020-02-29 13:45:06"},
             {43890 + 49506.5 / 86400.0, "2020-02-29 13:45:06.5"},
             {-1.25, "1899-12-29 06:00:00"},
             {0.0, "1899-12-30 00:00:00"},
             {-0.25, "-0.25"},
             {3e6, "3e+06"},
             {2958465.5, "9999-12-31 12:00:00"}}) {
        TextBuffer text;
        AppendMoment(days, text);
        EXPECT_EQ(text.View(), expected);
    }
}

TEST_F(ValueRoundTripTest, NumbersThatAreNoneAreShownAndRefused) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    std::FILE* file = std::tmpfile();
    {
        Output out(file);
        RowWriter writer(out, RowFormat::Json, {u"x", u"d"});
        writer.BeginRow();
        writer.WriteCell(-kInfinity);
        writer.WriteCell(basic::Date{kInfinity});
        writer.EndRow();
        EXPECT_EQ(out.Buffer().View(), "[\n{\"x\":\"-inf\",\"d\":\"inf\"}");
    }
    std::fclose(file);
    for (const char* word : {"inf", "-inf", "nan"}) {
        const Outcome import = Mdb({"import", copy_, "T", "-"}, std::string("c7\n") + word + "\n");
        EXPECT_EQ(import.exitCode, 1);
        EXPECT_THAT(import.err, testing::HasSubstr(std::string("\"") + word + "\" is no date"));
    }
}

TEST_F(ValueRoundTripTest, FractionsOfSecondsAreReadAsWritten) {
    const auto import = [this](const std::string& text) {
        return Mdb({"import", copy_, "T", "-"}, "c7\n" + text + "\n");
    };
    for (const char* wrong :
         {"2020-02-29 13:45:06.", "2020-02-29 13:45:60.5", "2020-02-29 13:45:06.5x", "2020-02-29 13:45:6.5",
          "2020-02-29 13:45", "2020-02-29T13:45:06", "2020-02-29 ", "43890.5", "-1"}) {
        EXPECT_THAT(import(wrong).err, testing::HasSubstr("is no date")) << wrong;
    }
    EXPECT_EQ(import("2020-02-29 13:45:06.125000").exitCode, 0);
    EXPECT_EQ(Mdb({"query", copy_, "SELECT c7 FROM T"}).out, "c7\n2020-02-29 13:45:06.125\n");
}

}  // namespace
}  // namespace quardele::mdb::test
