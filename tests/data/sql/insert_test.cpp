// INSERT INTO: values, queries, defaults, and what is refused.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

using testing::Contains;
using testing::ElementsAre;
using InsertTest = ChangeTest;
using Line = jet::test::CsvLine;

TEST_F(InsertTest, ValuesBecomeARowThatOtherProgramsRead) {
    SKIP_WITHOUT_MDB_EXPORT();
    EXPECT_EQ(Do("INSERT INTO TTYP (TTYP_CODE, TTYP_LIBELLE) VALUES ('MOT', 'Moteur de l''utilitaire');"),
              1U);
    EXPECT_EQ(Get("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE='MOT'"), Lines{"'Moteur de l''utilitaire'"});
    const auto lines = Exported("TTYP");
    EXPECT_EQ(lines.size(), 1U + 13U);
    EXPECT_THAT(lines, Contains(Line{"MOT", "Moteur de l'utilitaire"}));
}

TEST_F(InsertTest, WithoutColumnsTheValuesGoToAllOfThem) {
    EXPECT_EQ(Do("insert into ttyp values ('MOT', 'Moteur')"), 1U);
    EXPECT_EQ(Get("SELECT * FROM TTYP WHERE TTYP_CODE='MOT'"), Lines{"'MOT' 'Moteur'"});
}

TEST_F(InsertTest, ValuesAreExpressionsAndAreConvertedToTheColumns) {
    Do("INSERT INTO TVEH_DETAIL (TVEH_DETAIL_Immat, TVEH_DETAIL_TypTrav, TVEH_DETAIL_DATVIS, "
       "TVEH_DETAIL_PERIOD) VALUES ('ZZ-' & 1 + 1, UCase('vid'), #12/31/2026#, '6')");
    EXPECT_EQ(Get("SELECT TVEH_DETAIL_TypTrav, TVEH_DETAIL_DATVIS, TVEH_DETAIL_PERIOD FROM TVEH_DETAIL WHERE "
                  "TVEH_DETAIL_Immat='ZZ-2'"),
              Lines{"'VID' #12/31/2026# 6"});
}

TEST_F(InsertTest, NumbersBeyondTheirColumnAreRefusedInsteadOfBecomingInfinity) {
    Do("CREATE TABLE S (Id LONG, V SINGLE)");
    EXPECT_EQ(ErrorOfAction("INSERT INTO S VALUES (1, 1E39)"), basic::error::kTypeConversion);
    EXPECT_EQ(ErrorOfAction("INSERT INTO S VALUES (1, -1E39)"), basic::error::kTypeConversion);
    EXPECT_EQ(Do("INSERT INTO S VALUES (2, 3.4E38)"), 1U);
    EXPECT_EQ(Get("SELECT Id FROM S"), Lines{"2"});
}

TEST_F(InsertTest, DecimalsKeepAllTheirDigits) {
    Do("CREATE TABLE P (D DECIMAL(28, 6))");
    Do("INSERT INTO P VALUES (1234567890123456789012.123456)");
    Do("INSERT INTO P VALUES ('-1234567890123456789012.123456')");
    Do("INSERT INTO P VALUES (-1234567890123456789013.123456)");
    EXPECT_EQ(Get("SELECT CStr(D) FROM P"),
              (Lines{"'1234567890123456789012,123456'", "'-1234567890123456789012,123456'",
                     "'-1234567890123456789013,123456'"}));
}

TEST_F(InsertTest, ColumnsWithoutAValueGetTheirDefault) {
    Do("INSERT INTO TVEH (TVEH_IMMAT) VALUES ('ZZ-999-ZZ')");
    EXPECT_EQ(Get("SELECT TVEH_MARQUE, TVEH_EDIT, TVEH_Note1 FROM TVEH WHERE TVEH_IMMAT='ZZ-999-ZZ'"),
              Lines{"Null False ''"});
}

TEST_F(InsertTest, NullForAColumnWithADefaultIsNull) {
    Do("INSERT INTO TVEH (TVEH_IMMAT, TVEH_Note1) VALUES ('ZZ-999-ZZ', Null)");
    EXPECT_EQ(Get("SELECT TVEH_Note1 FROM TVEH WHERE TVEH_IMMAT='ZZ-999-ZZ'"), Lines{"Null"});
}

TEST_F(InsertTest, RowsOfAQueryAreInsertedInItsOrder) {
    EXPECT_EQ(
        Do("INSERT INTO TTYP (TTYP_LIBELLE, TTYP_CODE) SELECT TPAYS_LIBELLE, 'P' & TPAYS_CODE FROM TPAYS"),
        Get("SELECT * FROM TPAYS").size());
    EXPECT_EQ(
        Get("SELECT Mid(TTYP_CODE, 2), TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE LIKE 'P*' AND TTYP_CODE <> "
            "'PNE' ORDER BY 1"),
        Get("SELECT * FROM TPAYS ORDER BY 1"));
}

TEST_F(InsertTest, AQueryOnTheTableItselfIsReadWholeBeforeTheFirstRowIsWritten) {
    EXPECT_EQ(Do("INSERT INTO TTYP SELECT '_' & Left(TTYP_CODE, 4), TTYP_LIBELLE FROM TTYP"), 12U);
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"24"});
    EXPECT_EQ(Do("INSERT INTO TTYP SELECT Left(TTYP_CODE, 3) & Count(*), First(TTYP_LIBELLE) FROM TTYP WHERE "
                 "TTYP_CODE NOT LIKE '_*' GROUP BY Left(TTYP_CODE, 3)"),
              12U);
    EXPECT_EQ(
        Do("INSERT INTO TTYP SELECT 'U' & Right(TTYP_CODE, 2), TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE='CT' "
           "UNION SELECT 'V1', 'x' FROM TTYP"),
        2U);
}

TEST_F(InsertTest, AQueryWithoutRowsInsertsNone) {
    EXPECT_EQ(Do("INSERT INTO TTYP SELECT * FROM TTYP WHERE False"), 0U);
}

TEST_F(InsertTest, OneBadRowLeavesNone) {
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP SELECT IIf(TTYP_CODE = 'REV', 'CT', 'x' & TTYP_CODE), "
                            "TTYP_LIBELLE FROM TTYP"),
              error::kDuplicateKey);
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"12"});
    EXPECT_EQ(GetElsewhere("SELECT Count(*) FROM TTYP WHERE TTYP_CODE LIKE 'x*'"), Lines{"0"});
}

TEST_F(InsertTest, RefusesWhatTheTableRefuses) {
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES ('CT', 'x')"), error::kDuplicateKey);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES (Null, 'x')"), error::kNullInPrimaryKey);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES ('MOTEUR', 'x')"), error::kTextTooLong);
    EXPECT_EQ(
        ErrorOfAction("INSERT INTO TVEH_DETAIL (TVEH_DETAIL_Immat, TVEH_DETAIL_DATVIS) VALUES ('A', 'x')"),
        error::kTypeConversion);
}

TEST_F(InsertTest, NamesOfFieldsAndTheirNumberMustFit) {
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP (TTYP_CODE, TTYP_X) VALUES ('a', 'b')"), 3127);
    EXPECT_NE(DescriptionOfAction("INSERT INTO TTYP (TTYP_X) VALUES ('a')").find("TTYP_X"),
              std::string::npos);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP (TTYP_CODE, ttyp_code) VALUES ('a', 'b')"), 3063);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP (TTYP_CODE) VALUES ('a', 'b')"), 3346);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES ('a')"), 3346);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP SELECT * FROM TVEH"), 3346);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES (a, b)"), error::kTooFewParameters);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TX VALUES ('a')"), error::kNoSuchTable);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP SELECT * FROM TX"), error::kNoSuchTable);
}

TEST_F(InsertTest, AReadOnlyFileRefuses) {
    EXPECT_EQ(ErrorOf([] { Execute(*Workshop(), u"INSERT INTO TTYP VALUES ('MOT', 'x')"); }),
              error::kReadOnly);
}

}  // namespace
}  // namespace quardele::sql
