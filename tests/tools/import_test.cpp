// Rows from comma separated values, well made and not.

#include <fstream>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ImportTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec(
            "CREATE TABLE T (id COUNTER PRIMARY KEY, t TEXT(10), n LONG DEFAULT 7, d DATETIME, b BIT, x "
            "DOUBLE, "
            "c CURRENCY, y BYTE, k DECIMAL(6,2), g BINARY(4), u GUID)");
    }

    [[nodiscard]] Outcome Import(const std::string& csv, const std::vector<std::string>& options = {}) const {
        std::vector<std::string> arguments = {"import", file_, "T", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Mdb(arguments, csv);
    }
    /// The import fails with this message, and nothing is in the table.
    void ExpectRefused(const std::string& csv, const std::string& message) const {
        const Outcome import = Import(csv);
        EXPECT_EQ(import.exitCode, 1) << csv;
        EXPECT_THAT(import.err, HasSubstr("mdb: " + message)) << csv;
        EXPECT_THAT(import.out, IsEmpty());
        EXPECT_EQ(Query("SELECT COUNT(*) AS c FROM T"), "c\n0\n") << csv;
    }
    [[nodiscard]] std::string Query(const std::string& statement) const {
        return Mdb({"query", file_, statement}).out;
    }
};

TEST_F(ImportTest, RowsComeFromAFileOrTheInput) {
    const std::string csv = PathOf("rows.csv");
    std::ofstream(csv) << "t,n\none,1\n";
    const Outcome import = Mdb({"import", file_, "T", csv});
    EXPECT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(import.out, "1 row\n");
    EXPECT_EQ(Import("t,n\ntwo,2\nthree,3\n").out, "2 rows\n");
    EXPECT_EQ(Query("SELECT id, t, n FROM T ORDER BY id"), "id,t,n\n1,one,1\n2,two,2\n3,three,3\n");
}

TEST_F(ImportTest, ColumnsComeInAnyOrderAndMissingOnesGetTheirDefaults) {
    EXPECT_EQ(Import("D,T\n2020-01-02 03:04:05,x\n").exitCode, 0);
    EXPECT_EQ(Query("SELECT t, n, d FROM T"), "t,n,d\nx,7,2020-01-02 03:04:05\n");
}

TEST_F(ImportTest, AllKindsOfValuesAreRead) {
    const std::string csv =
        "id,t,n,d,b,x,c,y,k,g,u\n"
        "5,abc,-2147483648,9999-12-31 23:59:59,1,1e-300,-922337203685477.5808,255,-9999.99,00ff,"
        "{01234567-89AB-CDEF-0123-456789ABCDEF}\n"
        "6,\"\",,,0,,,,,\"\",\n";
    const Outcome import = Import(csv);
    EXPECT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(Dump("T"), csv);
}

TEST_F(ImportTest, TextsOfAllAlphabetsComeBackAsTheyWere) {
    const std::string csv =
        "t\n\xC2\x80zz\nétéàû\nabc\x7F\nМир\n漢字かな\na\xF0\x9F\x9A\x97z\n\xEF\xBF\xBD\nœ€\n";
    EXPECT_EQ(Import(csv).out, "8 rows\n");
    EXPECT_EQ(Query("SELECT t FROM T ORDER BY id"), csv);
}

TEST_F(ImportTest, ADateMayHaveNoTimeOrBeANumberOfDaysBeyondAllDates) {
    const Outcome import = Import("d\n1999-12-31\n9999-12-31 23:59:59.9136\n3000000\n-0.25\n");
    EXPECT_EQ(import.exitCode, 0) << import.err;
    EXPECT_EQ(Query("SELECT d FROM T ORDER BY id"),
              "d\n1999-12-31 00:00:00\n9999-12-31 23:59:59.9136\n3e+06\n-0.25\n");
    EXPECT_THAT(Import("d\n2958465.999999\n").err, HasSubstr("is no date"));
}

TEST_F(ImportTest, QuotedFieldsMayHaveQuotesCommasAndLineEnds) {
    EXPECT_EQ(Import("t,n\n\"a\"\"b,\r\nc\",1\n").exitCode, 0);
    EXPECT_EQ(Query("SELECT t FROM T"), "t\n\"a\"\"b,\r\nc\"\n");
}

TEST_F(ImportTest, LinesMayEndWithCrLfOrCrAndTheLastNeedNotEnd) {
    EXPECT_EQ(Import("t,n\r\na,1\r\nb,2\rc,3").out, "3 rows\n");
    EXPECT_EQ(Query("SELECT t, n FROM T ORDER BY id"), "t,n\na,1\nb,2\nc,3\n");
}

TEST_F(ImportTest, AByteOrderMarkIsPassedOver) {
    EXPECT_EQ(Import("\xEF\xBB\xBFt,n\na,1\n").out, "1 row\n");
}

TEST_F(ImportTest, EmptyLinesArePassedOverUnlessThereIsOnlyOneColumn) {
    EXPECT_EQ(Import("t,n\n\na,1\n\n\n").out, "1 row\n");
    EXPECT_EQ(Import("t\n\nb\n").out, "2 rows\n");
    EXPECT_EQ(Query("SELECT t FROM T ORDER BY id"), "t\na\n\nb\n");
}

TEST_F(ImportTest, OddRecordsAreRefusedWithTheirLine) {
    ExpectRefused("", "the file has no line of names");
    ExpectRefused("t,z\na,1\n", "the table has no column \"z\"");
    ExpectRefused("t,T\na,1\n", "the column \"T\" is named twice");
    ExpectRefused("t,n\na,1\nb\n", "line 3: 1 fields instead of 2");
    ExpectRefused("t,n\na,1,2\n", "line 2: 3 fields instead of 2");
    ExpectRefused("t,n\na\"b,1\n", "line 2: a quote in the middle of a field");
    ExpectRefused("t,n\n\"a\"b,1\n", "line 2: text behind a closing quote");
    ExpectRefused("t,n\na,1\n\"b,1\n\n", "line 3: a quote is never closed");
    ExpectRefused("t,n\n\"a\nb\nc\",1\nd,x\n", "line 5, column \"n\": \"x\" is no number for this column");
}

TEST_F(ImportTest, BadValuesAreRefusedWithLineAndColumn) {
    ExpectRefused("t,n\nok,1\na,1.5\n", "line 3, column \"n\": \"1.5\" is no number for this column");
    ExpectRefused("n\n2147483648\n", "line 2, column \"n\": \"2147483648\" is no number");
    ExpectRefused("n\n 1\n", "line 2, column \"n\": \" 1\" is no number");
    ExpectRefused("n\n\"\"\n", "line 2, column \"n\": \"\" is no number");
    ExpectRefused("y\n256\n", "line 2, column \"y\": \"256\" is no number");
    ExpectRefused("x\n1,5\n", "line 2: 2 fields instead of 1");
    ExpectRefused("x\n1e999\n", "line 2, column \"x\": \"1e999\" is no number");
    for (const std::string word : {"nan", "inf", "-inf", "infinity"}) {
        ExpectRefused("x\n" + word + "\n", "line 2, column \"x\": \"" + word + "\" is no number");
    }
    ExpectRefused("c\n0.00001\n", "line 2, column \"c\": \"0.00001\" is no number");
    ExpectRefused("c\n922337203685477.5808\n", "line 2, column \"c\": ");
    ExpectRefused("k\n1.005\n", "line 2, column \"k\": \"1.005\" is no number");
    ExpectRefused("b\nyes\n", "line 2, column \"b\": \"yes\" is neither 1 nor 0");
    ExpectRefused("d\n2021-02-29\n", "line 2, column \"d\": \"2021-02-29\" is no date (YYYY-MM-DD HH:MM:SS)");
    ExpectRefused("d\n2021-02-28 24:00:00\n", "line 2, column \"d\": ");
    ExpectRefused("d\n28/02/2021\n", "line 2, column \"d\": ");
    ExpectRefused("d\n2026\n", "line 2, column \"d\": \"2026\" is no date");
    ExpectRefused("d\nnan\n", "line 2, column \"d\": \"nan\" is no date");
    ExpectRefused("g\n0f0\n", "line 2, column \"g\": \"0f0\" is not in hexadecimal digits");
    ExpectRefused("g\nzz\n", "line 2, column \"g\": \"zz\" is not in hexadecimal digits");
    ExpectRefused("u\n{0123}\n", "line 2, column \"u\": \"{0123}\" is no GUID");
    for (const std::string guid :
         {"{}-0123456789ABCDEF0123456789ABCDEF}}", "0123456789ABCDEF0123456789ABCDEF",
          "{01234567-89AB-CDEF-0123-456789ABCDEF", "0123456-789AB-CDEF-0123-456789ABCDEF"}) {
        ExpectRefused("u\n" + guid + "\n", "line 2, column \"u\": \"" + guid + "\" is no GUID");
    }
    ExpectRefused("\xE9\na\n", "the text is not in UTF-8");
    ExpectRefused("t\n\xE9t\xE9\n", "line 2, column \"t\": the text is not in UTF-8");
}

TEST_F(ImportTest, WhatTheEngineRefusesIsToldWithItsLine) {
    ExpectRefused("t\nok\nmuch too long a text\n",
                  "line 3: error 3163: the value is too long for its column");
    ExpectRefused("id,t\n1,a\n1,b\n", "line 3: error 3022: the change would make equal keys");
}

TEST_F(ImportTest, MessagesAreFrenchToo) {
    EXPECT_EQ(MdbInFrench({"import", file_, "T", "-"}, "n\nx\n").err,
              "mdb : ligne 2, colonne « n » : « x » n'est pas un nombre pour cette colonne\n");
    EXPECT_THAT(MdbInFrench({"import", file_, "T", "-"}, "t\nmuch too long a text\n").err,
                HasSubstr("mdb : ligne 2 : erreur 3163 : "));
    EXPECT_EQ(MdbInFrench({"import", file_, "T", PathOf("missing.csv")}).err,
              "mdb : le fichier « " + PathOf("missing.csv") + " » ne peut pas être lu\n");
}

TEST_F(ImportTest, ChunksBeforeAnErrorStay) {
    const Outcome import = Import("n\n1\n2\n3\n4\nx\n", {"--chunk", "2"});
    EXPECT_EQ(import.exitCode, 1);
    EXPECT_THAT(import.err, HasSubstr("line 6"));
    EXPECT_EQ(Query("SELECT COUNT(*) AS c FROM T"), "c\n4\n");
}

TEST_F(ImportTest, ThousandsOfRowsLeaveASoundFile) {
    std::string csv = "t,n,d,x\n";
    for (int i = 0; i < 5000; ++i) {
        csv += "t" + std::to_string(i % 97) + ',' + std::to_string(i) + ",2020-01-01 00:00:00,0.5\n";
    }
    EXPECT_EQ(Import(csv).out, "5000 rows\n");
    const Outcome check = Mdb({"check", file_, "--notes"});
    EXPECT_EQ(check.exitCode, 0);
    EXPECT_EQ(check.out, "");
    EXPECT_EQ(Query("SELECT COUNT(*) AS c, SUM(n) AS s FROM T"), "c,s\n5000,12497500\n");
}

}  // namespace
}  // namespace quardele::mdb::test
