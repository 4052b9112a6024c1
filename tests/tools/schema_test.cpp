// Tables as statements: what they say, and that a file made by them says the same.

#include <algorithm>
#include <regex>
#include <set>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using jet::test::CorpusFile;
using testing::HasSubstr;
using testing::Not;

/// The statements alone.
std::string WithoutComments(const std::string& schema) {
    return std::regex_replace(schema, std::regex("--[^\n]*\n"), "");
}

class SchemaTest : public MdbTest {
 protected:
    /// The schema of a file that the schema of another one has made.
    [[nodiscard]] std::string SchemaAfter(const std::string& schema) const {
        const std::string copy = PathOf("copy.mdb");
        std::filesystem::remove(copy);
        EXPECT_EQ(Mdb({"create", copy}).exitCode, 0);
        const Outcome exec = Mdb({"exec", copy, "-", "--atomic"}, schema);
        EXPECT_EQ(exec.exitCode, 0) << exec.err << schema;
        EXPECT_EQ(Mdb({"check", copy, "--notes"}).out, "");
        return Mdb({"schema", copy}).out;
    }
};

TEST_F(SchemaTest, EveryTypeRuleAndIndexComesBackTheSame) {
    Exec(
        "CREATE TABLE Kinds (n LONG, t TEXT(50), b BIT, d DATETIME DEFAULT Date(), c CURRENCY, x DOUBLE, "
        "m MEMO, s SINGLE, i SHORT, y BYTE, k DECIMAL(10,2), g BINARY(8), o LONGBINARY, u GUID);"
        "CREATE TABLE Parts (id COUNTER PRIMARY KEY, name TEXT(20) NOT NULL DEFAULT \"x\", price CURRENCY);"
        "CREATE UNIQUE INDEX ByName ON Parts (name DESC, price) WITH IGNORE NULL;"
        "CREATE INDEX ByPrice ON Parts (price) WITH DISALLOW NULL;"
        "CREATE TABLE Signs (id GUID DEFAULT GenGUID(), a LONG, b LONG, PRIMARY KEY (b, a DESC))");
    const Outcome schema = Mdb({"schema", file_});
    EXPECT_EQ(schema.exitCode, 0);
    EXPECT_THAT(schema.out, HasSubstr("CREATE TABLE [Parts] (\n  [id] COUNTER,\n  [name] TEXT(20) NOT NULL "
                                      "DEFAULT \"x\",\n  [price] CURRENCY\n);\n"));
    EXPECT_THAT(
        schema.out,
        HasSubstr("CREATE UNIQUE INDEX [ByName] ON [Parts] ([name] DESC, [price]) WITH IGNORE NULL;\n"));
    EXPECT_THAT(schema.out, HasSubstr("  [id] GUID DEFAULT GenGUID(),\n"));
    EXPECT_EQ(SchemaAfter(schema.out), schema.out);
    EXPECT_EQ(Mdb({"schema", file_, "Kinds"}).out + Mdb({"schema", file_, "Parts"}).out +
                  Mdb({"schema", file_, "Signs"}).out,
              schema.out);
}

TEST_F(SchemaTest, AGuidThatComesByItselfIsNewInEveryRow) {
    Exec("CREATE TABLE Signs (id GUID DEFAULT GenGUID(), n LONG)");
    const std::string copied = SchemaAfter(Mdb({"schema", file_}).out);
    EXPECT_THAT(copied, HasSubstr("[id] GUID DEFAULT GenGUID()"));
    const std::string copy = PathOf("copy.mdb");
    ASSERT_EQ(Mdb({"import", copy, "Signs", "-"}, "n\n1\n2\n3\n").exitCode, 0);
    ASSERT_EQ(Mdb({"exec", copy, "INSERT INTO Signs (n) VALUES (4)"}).exitCode, 0);
    const std::string rows = Mdb({"dump", copy, "Signs"}).out;
    const std::regex guid("\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\},");
    std::set<std::string> guids;
    for (auto found = std::sregex_iterator(rows.begin(), rows.end(), guid); found != std::sregex_iterator();
         ++found) {
        guids.insert(found->str());
    }
    EXPECT_EQ(guids.size(), 4U) << rows;
}

TEST_F(SchemaTest, ColumnsThatAdmitNoEmptyTextAreTold) {
    Exec("CREATE TABLE T (a TEXT(5), b TEXT(5) NOT NULL, m MEMO, n LONG)");
    EXPECT_THAT(Mdb({"schema", file_}).out, Not(HasSubstr("--")));
    {
        const auto database = jet::Database::Open(file_);
        jet::Column rules;
        rules.required = true;
        rules.allowZeroLength = false;
        database->SetColumnRules(u"T", u"b", rules);
        database->SetColumnRules(u"T", u"n", rules);
    }
    const std::string schema = Mdb({"schema", file_}).out;
    EXPECT_THAT(schema, testing::EndsWith("\n);\n-- T.b: AllowZeroLength = No\n"));
    EXPECT_THAT(schema, HasSubstr("[n] LONG NOT NULL"));
    EXPECT_EQ(SchemaAfter(schema), WithoutComments(schema));
}

TEST_F(SchemaTest, RelationshipsAreToldWithTheirCascades) {
    SKIP_WITHOUT_CORPUS();
    const std::string file = CorpusFile("indexV2000.mdb").string();
    const std::string schema = Mdb({"schema", file}).out;
    EXPECT_THAT(schema, HasSubstr("-- ALTER TABLE [Table1] ADD CONSTRAINT [Table2Table1] FOREIGN KEY "
                                  "([otherfk1]) REFERENCES [Table2] ([id]) ON DELETE CASCADE;\n"));
    EXPECT_THAT(schema, HasSubstr("[Table3Table1] FOREIGN KEY ([otherfk2]) REFERENCES [Table3] ([id]) ON "
                                  "UPDATE CASCADE;\n"));
    EXPECT_THAT(Mdb({"schema", file, "Table1"}).out, HasSubstr("[Table2Table1] FOREIGN KEY"));
    EXPECT_THAT(Mdb({"schema", file, "Table2"}).out, Not(HasSubstr("FOREIGN KEY")));
}

TEST_F(SchemaTest, ARelationshipOfTwoColumnsThatCascadesBothWaysAndIsNotEnforcedIsOneComment) {
    Exec("CREATE TABLE Jobs (a LONG, b LONG); CREATE TABLE Cars (c LONG, d LONG)");
    constexpr std::int32_t kBothCascadesNotEnforced = 0x1102;
    {
        const auto database = jet::Database::Open(file_);
        const auto list = database->OpenTable(u"MSysRelationships");
        // The second pair of columns first.
        for (const std::int32_t pair : {1, 0}) {
            const auto at = [&list](jet::TextView column) { return list->FindColumn(column); };
            const std::vector<jet::ColumnChange> row = {
                {at(u"szRelationship"), jet::Text(u"CarsJobs")},
                {at(u"grbit"), kBothCascadesNotEnforced},
                {at(u"ccolumn"), std::int32_t{2}},
                {at(u"icolumn"), pair},
                {at(u"szObject"), jet::Text(u"Jobs")},
                {at(u"szColumn"), jet::Text(pair == 0 ? u"a" : u"b")},
                {at(u"szReferencedObject"), jet::Text(u"Cars")},
                {at(u"szReferencedColumn"), jet::Text(pair == 0 ? u"c" : u"d")}};
            list->Insert(row);
        }
    }
    EXPECT_THAT(Mdb({"schema", file_}).out,
                testing::EndsWith(
                    "\n-- ALTER TABLE [Jobs] ADD CONSTRAINT [CarsJobs] FOREIGN KEY ([a], [b]) REFERENCES "
                    "[Cars] ([c], [d]) ON UPDATE CASCADE ON DELETE CASCADE NOT ENFORCED;\n"));
}

TEST_F(SchemaTest, ValidationRulesAndTheirTextsAreTold) {
    SKIP_WITHOUT_CORPUS();
    const std::string schema = Mdb({"schema", CorpusFile("nwind.mdb").string(), "Order Details"}).out;
    EXPECT_THAT(schema,
                HasSubstr("\n-- Order Details.Quantity: ValidationRule = >0\n"
                          "-- Order Details.Quantity: ValidationText = Quantity must be greater than 0\n"));
    EXPECT_THAT(schema, HasSubstr("\n-- Order Details.Discount: ValidationRule = Between 0 And 1\n"));
    EXPECT_EQ(SchemaAfter(schema), WithoutComments(schema));
}

TEST_F(SchemaTest, TheStatementsOfRealFilesMakeTheSameTables) {
    SKIP_WITHOUT_CORPUS();
    int files = 0;
    for (const std::filesystem::path& source : jet::test::CorpusFiles()) {
        const Outcome schema = Mdb({"schema", source.string()});
        // Functions of Access alone in defaults, orders of other languages, names of system objects.
        if (schema.exitCode != 0 || schema.out.empty()) {
            continue;
        }
        SCOPED_TRACE(source.filename().string());
        ++files;
        EXPECT_EQ(WithoutComments(SchemaAfter(schema.out)), WithoutComments(schema.out));
    }
    EXPECT_GT(files, 10);
}

}  // namespace
}  // namespace quardele::mdb::test
