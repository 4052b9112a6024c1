// What the reading commands print.

#include <regex>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using jet::test::CorpusFile;
using testing::HasSubstr;
using testing::IsEmpty;

class DumpTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec(
            "CREATE TABLE Kinds (n LONG, t TEXT(50), b BIT, d DATETIME, c CURRENCY, x DOUBLE, m MEMO, "
            "s SINGLE, i SHORT, y BYTE, k DECIMAL(10,2), g BINARY(8));"
            "INSERT INTO Kinds (n, t, b, d, c, x, m) VALUES (1, 'a \"b\", c', True, #2020-02-29 13:45:06#, "
            "12.5, 0.1, 'two\nlines');"
            "INSERT INTO Kinds (n, t, b, d, c, x, s, i, y) VALUES (-2, '', False, #12/30/1899#, -0.0001, "
            "1E100, 0.1, -5, 255);"
            "INSERT INTO Kinds (n) VALUES (3);");
    }
};

TEST_F(DumpTest, CsvHasNamesQuotesWhereNeededAndLfAtEachEnd) {
    EXPECT_EQ(Dump("Kinds"),
              "n,t,b,d,c,x,m,s,i,y,k,g\n"
              "1,\"a \"\"b\"\", c\",1,2020-02-29 13:45:06,12.5000,0.1,\"two\nlines\",,,,,\n"
              "-2,\"\",0,1899-12-30 00:00:00,-0.0001,1e+100,,0.1,-5,255,,\n"
              "3,,0,,,,,,,,,\n");
}

TEST_F(DumpTest, JsonHasOneObjectPerLine) {
    EXPECT_EQ(
        Mdb({"dump", file_, "Kinds", "--json"}).out,
        "[\n"
        R"({"n":1,"t":"a \"b\", c","b":true,"d":"2020-02-29 13:45:06","c":12.5000,"x":0.1,"m":"two\u000alines",)"
        R"("s":null,"i":null,"y":null,"k":null,"g":null},)"
        "\n"
        R"({"n":-2,"t":"","b":false,"d":"1899-12-30 00:00:00","c":-0.0001,"x":1e+100,"m":null,)"
        R"("s":0.1,"i":-5,"y":255,"k":null,"g":null},)"
        "\n"
        R"({"n":3,"t":null,"b":false,"d":null,"c":null,"x":null,"m":null,)"
        R"("s":null,"i":null,"y":null,"k":null,"g":null})"
        "\n]\n");
}

// Texts are looked at several characters at a time: a comma or an accent counts wherever it stands.
TEST_F(DumpTest, TextsOfEveryLengthComeBackAsTheyWere) {
    Exec("CREATE TABLE Lengths (t TEXT(100));");
    std::string csv = "t\n";
    for (std::size_t length = 1; length < 40; ++length) {
        csv += std::string(length, 'x') + '\n';
        for (std::size_t at = 0; at < length; ++at) {
            for (const char* unit : {",", "\"\"", "\n", "\r"}) {
                csv += '"' + std::string(at, 'x') + unit + std::string(length - at - 1, 'x') + "\"\n";
            }
            csv += std::string(at, 'x') + "é" + std::string(length - at - 1, 'y') + '\n';
            csv += std::string(at, 'x') + "€" + std::string(length - at - 1, 'y') + '\n';
        }
    }
    csv += std::string(63, 'x') + "é" + std::string(36, 'y') + '\n';
    std::string accents;
    for (int i = 0; i < 100; ++i) {
        accents += "é";
    }
    csv += accents + '\n';
    const Outcome import = Mdb({"import", file_, "Lengths", "-"}, csv);
    ASSERT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(Dump("Lengths"), csv);
}

TEST_F(DumpTest, JsonEscapesWhereverItMust) {
    Exec("CREATE TABLE Lengths (t TEXT(100));");
    std::string csv = "t\n";
    std::string json = "[";
    for (std::size_t at = 0; at < 20; ++at) {
        const std::string before(at, 'x');
        csv += '"' + before + "\ty\"\n\"" + before + "\\y\"\n";
        json += (at == 0 ? "" : ",");
        json += "\n{\"t\":\"" + before + "\\u0009y\"},\n{\"t\":\"" + before + "\\\\y\"}";
    }
    const Outcome import = Mdb({"import", file_, "Lengths", "-"}, csv);
    ASSERT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(Mdb({"dump", file_, "Lengths", "--json"}).out, json + "\n]\n");
}

TEST_F(DumpTest, ANumberIsTheShortestTextThatMeansIt) {
    Exec("CREATE TABLE Numbers (x DOUBLE);");
    const std::string csv =
        "x\n0\n1\n-1\n0.5\n-0.25\n0.001\n0.0101\n0.0009\n5e-04\n3.1416\n3.14159\n10000\n99999\n99999.9999\n"
        "99999.99999\n-99999.9999\n1e+05\n120000\n123456.78\n0.1234\n0.30000000000000004\n1e-10\n"
        "9007199254740993\n";
    const Outcome import = Mdb({"import", file_, "Numbers", "-"}, csv);
    ASSERT_EQ(import.exitCode, 0) << import.err;
    std::string expected = csv;
    expected.replace(expected.find("0.0009"), 6, "9e-04");
    expected.replace(expected.find("9007199254740993"), 16, "9007199254740992");
    EXPECT_EQ(Dump("Numbers"), expected);
}

TEST_F(DumpTest, AnEmptyTableIsItsNames) {
    Exec("CREATE TABLE Nothing (a LONG, [b, c] TEXT(10))");
    EXPECT_EQ(Dump("Nothing"), "a,\"b, c\"\n");
    EXPECT_EQ(Mdb({"dump", file_, "Nothing", "--json"}).out, "[\n]\n");
}

TEST_F(DumpTest, AnUnknownTableIsToldInBothLanguages) {
    const Outcome dump = Mdb({"dump", file_, "Lost"});
    EXPECT_EQ(dump.exitCode, 1);
    EXPECT_THAT(dump.out, IsEmpty());
    EXPECT_EQ(dump.err, "mdb: error 3078: the table does not exist (Lost)\n");
    EXPECT_THAT(MdbInFrench({"dump", file_, "Lost"}).err,
                HasSubstr("mdb : erreur 3078 : La table ou la requête source « Lost »"));
}

TEST_F(DumpTest, AQueryPrintsItsColumns) {
    const Outcome query = Mdb({"query", file_, "SELECT n, n * 2 AS double FROM Kinds ORDER BY n"});
    EXPECT_EQ(query.exitCode, 0) << query.err;
    EXPECT_EQ(query.out, "n,double\n-2,-4\n1,2\n3,6\n");
    EXPECT_EQ(Mdb({"query", file_, "SELECT n FROM Kinds WHERE n = 3", "--json"}).out, "[\n{\"n\":3}\n]\n");
}

TEST_F(DumpTest, AWrongQueryIsToldInBothLanguages) {
    const Outcome query = Mdb({"query", file_, "SELECT n FROM"});
    EXPECT_EQ(query.exitCode, 1);
    EXPECT_THAT(query.err, HasSubstr("mdb: error 3131: syntax error in FROM"));
    EXPECT_THAT(MdbInFrench({"query", file_, "SELECT n FROM"}).err,
                HasSubstr("mdb : erreur 3131 : Erreur de syntaxe"));
}

TEST_F(DumpTest, TablesAreNamedOnePerLine) {
    Exec("CREATE TABLE Étoile (a LONG)");
    EXPECT_EQ(Mdb({"tables", file_}).out, "Kinds\nÉtoile\n");
}

TEST_F(DumpTest, KeysComeInTheOrderOfTheIndex) {
    Exec(
        "CREATE TABLE K (n LONG); INSERT INTO K (n) VALUES (2); INSERT INTO K (n) VALUES (1);"
        "CREATE INDEX I ON K (n)");
    const Outcome keys = Mdb({"keys", file_, "K", "I"});
    EXPECT_EQ(keys.exitCode, 0) << keys.err;
    EXPECT_TRUE(std::regex_match(keys.out, std::regex("7f80000001 [0-9]+ 1\n7f80000002 [0-9]+ 0\n")))
        << keys.out;
    const Outcome missing = Mdb({"keys", file_, "K", "J"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.err, "mdb: the table has no index \"J\"\n");
    EXPECT_EQ(MdbInFrench({"keys", file_, "K", "J"}).err, "mdb : la table n'a pas d'index « J »\n");
}

TEST_F(DumpTest, AFileThatExistsIsNotMadeAgain) {
    const Outcome create = Mdb({"create", file_});
    EXPECT_EQ(create.exitCode, 1);
    EXPECT_THAT(create.err, HasSubstr("mdb: error 3204: the file exists already"));
    EXPECT_THAT(Dump("Kinds"), HasSubstr("2020-02-29"));
}

TEST(CorpusDumpTest, RealFilesPrintTheirGoldenRows) {
    SKIP_WITHOUT_CORPUS();
    EXPECT_EQ(Mdb({"dump", CorpusFile("delColV2000.mdb").string(), "Table1"}).out,
              "id,id2,data,data2\n0,2,foo,foo2\n3,5,bar,bar2\n");
    EXPECT_EQ(Mdb({"tables", CorpusFile("linked.mdb").string()}).out.empty(), false);
    const Outcome locked = Mdb({"tables", CorpusFile("password.mdb").string()});
    EXPECT_EQ(locked.exitCode, 1);
    EXPECT_EQ(locked.err, "mdb: error 3031: the file has a password\n");
}

}  // namespace
}  // namespace quardele::mdb::test
