// UPDATE and DELETE: which rows, which values, all or nothing.
#include "change_fixture.h"

namespace quardele::sql {
namespace {

using testing::Contains;
using testing::Not;
using UpdateTest = ChangeTest;
using DeleteTest = ChangeTest;
using Line = jet::test::CsvLine;

TEST_F(UpdateTest, ChangesTheRowsOfTheCondition) {
    SKIP_WITHOUT_MDB_EXPORT();
    EXPECT_EQ(Do("UPDATE TTYP SET TTYP_LIBELLE = 'Vidange' WHERE TTYP_CODE = 'VID';"), 1U);
    EXPECT_EQ(Get("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE='VID'"), Lines{"'Vidange'"});
    EXPECT_THAT(Exported("TTYP"), Contains(Line{"VID", "Vidange"}));
    EXPECT_EQ(Do("update ttyp set ttyp_libelle = null where ttyp_code = 'x'"), 0U);
}

TEST_F(UpdateTest, WithoutAConditionAllRowsChange) {
    EXPECT_EQ(Do("UPDATE TTYP SET TTYP_LIBELLE = UCase(TTYP_CODE) & '-' & Len(TTYP_LIBELLE)"), 12U);
    EXPECT_EQ(Get("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE IN ('CT', 'BAT') ORDER BY 1"),
              (Lines{"'BAT-8'", "'CT-18'"}));
}

TEST_F(UpdateTest, AllValuesAreThoseFromBeforeTheStatement) {
    Do("UPDATE TTYP SET TTYP_CODE = Left(TTYP_LIBELLE, 3) & '2', TTYP_LIBELLE = TTYP_CODE WHERE TTYP_CODE = "
       "'BAT'");
    EXPECT_EQ(Get("SELECT * FROM TTYP WHERE TTYP_CODE = 'Bat2'"), Lines{"'Bat2' 'BAT'"});
}

TEST_F(UpdateTest, ARowThatMovesInTheIndexIsChangedOnce) {
    // Every new key lies behind those that the seek has still to visit.
    EXPECT_EQ(Do("UPDATE TVEH SET TVEH_IMMAT = 'Z' & TVEH_IMMAT WHERE TVEH_IMMAT >= ''"),
              Rows(Workshop(), "SELECT TVEH_IMMAT FROM TVEH").size());
    EXPECT_EQ(Get("SELECT Count(*) FROM TVEH WHERE TVEH_IMMAT LIKE 'ZZ*'"),
              Rows(Workshop(), "SELECT Count(*) FROM TVEH WHERE TVEH_IMMAT LIKE 'Z*'"));
    EXPECT_EQ(Get("SELECT Count(*) FROM TVEH WHERE TVEH_IMMAT NOT LIKE 'Z*'"), Lines{"0"});
}

TEST_F(UpdateTest, NamesMayBeQualifiedAndTheTableMayHaveAnAlias) {
    EXPECT_EQ(Do("UPDATE TTYP SET TTYP.TTYP_LIBELLE = [TTYP].[TTYP_CODE] WHERE (((TTYP.TTYP_CODE)=\"CT\"))"),
              1U);
    EXPECT_EQ(Do("UPDATE TTYP AS T SET T.TTYP_LIBELLE = 'x' WHERE T.TTYP_CODE = 'CT'"), 1U);
    EXPECT_EQ(Do("UPDATE TTYP T SET TTYP_LIBELLE = 'y' WHERE T.TTYP_LIBELLE = 'x'"), 1U);
    EXPECT_EQ(Get("SELECT TTYP_LIBELLE FROM TTYP WHERE TTYP_CODE = 'CT'"), Lines{"'y'"});
}

TEST_F(UpdateTest, TheSideOfAJoinWhoseRowsStandOnceIsChanged) {
    const Lines before =
        Get("SELECT Count(*) FROM TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT");
    const std::size_t changed =
        Do("UPDATE TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT SET TVEH_DETAIL_PERIOD = "
           "Len(TVEH_MARQUE)");
    EXPECT_EQ(Lines{std::to_string(changed)}, before);
    EXPECT_EQ(Get("SELECT Count(*) FROM TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT WHERE "
                  "TVEH_DETAIL_PERIOD <> Len(TVEH_MARQUE)"),
              Lines{"0"});
    EXPECT_EQ(ErrorOfAction("UPDATE TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT SET "
                            "TVEH_MARQUE = TVEH_DETAIL_TypTrav"),
              3073);
}

TEST_F(UpdateTest, RowsWithoutAPartnerAreNotCounted) {
    Do("CREATE TABLE A (Id LONG PRIMARY KEY)");
    Do("CREATE TABLE B (Id LONG PRIMARY KEY, V LONG)");
    Do("INSERT INTO A VALUES (1)");
    Do("INSERT INTO A VALUES (2)");
    Do("INSERT INTO B VALUES (2, 5)");
    EXPECT_EQ(Do("UPDATE A LEFT JOIN B ON A.Id = B.Id SET B.V = 6"), 1U);
    EXPECT_EQ(Get("SELECT V FROM B"), Lines{"6"});
}

TEST_F(UpdateTest, OneBadRowLeavesAllAsTheyWere) {
    const Lines before = Get("SELECT * FROM TTYP");
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = 'x', TTYP_CODE = 'CT' WHERE TTYP_CODE <> 'BAT'"),
              error::kDuplicateKey);
    EXPECT_EQ(Get("SELECT * FROM TTYP"), before);
    EXPECT_EQ(GetElsewhere("SELECT * FROM TTYP"), before);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = String(40 + Len(TTYP_CODE) - 2, 'x')"),
              error::kTextTooLong);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = 1 / (Len(TTYP_CODE) - 3)"),
              error::kDivisionByZero);
    EXPECT_EQ(Get("SELECT * FROM TTYP"), before);
}

TEST_F(UpdateTest, NamesMustBeKnownAndFieldsNamedOnce) {
    EXPECT_EQ(ErrorOfAction("UPDATE TX SET a = 1"), error::kNoSuchTable);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET a = b WHERE c = 1"), error::kTooFewParameters);
    EXPECT_NE(DescriptionOfAction("UPDATE TTYP SET a = b WHERE c = 1").find("3"), std::string::npos);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = 'a', TTYP_LIBELLE = 'b'"), 3063);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = Count(*)"), error::kNotInAggregate);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = 'a' WHERE Count(*) = 1"), 3096);
}

TEST_F(DeleteTest, TakesTheRowsOfTheCondition) {
    SKIP_WITHOUT_MDB_EXPORT();
    EXPECT_EQ(Do("DELETE FROM TTYP WHERE TTYP_CODE IN ('CT', 'VID', 'MOT')"), 2U);
    const auto lines = Exported("TTYP");
    EXPECT_EQ(lines.size(), 1U + 10U);
    EXPECT_THAT(lines, Not(Contains(Line{"CT", "Contrôle technique"})));
    EXPECT_EQ(Do("delete * from ttyp where ttyp_code = 'BAT';"), 1U);
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP"), Lines{"9"});
    EXPECT_EQ(GetElsewhere("SELECT Count(*) FROM TTYP WHERE TTYP_CODE = 'BAT'"), Lines{"0"});
}

TEST_F(DeleteTest, WithoutAConditionTheTableIsEmptyAndTakesRowsAgain) {
    const std::size_t count = Get("SELECT TVEH_IMMAT FROM TVEH").size();
    EXPECT_EQ(Do("DELETE FROM TVEH"), count);
    EXPECT_EQ(Get("SELECT * FROM TVEH"), Lines{});
    EXPECT_EQ(Do("INSERT INTO TVEH (TVEH_IMMAT) VALUES ('AA-001-AA')"), 1U);
    EXPECT_EQ(Get("SELECT TVEH_IMMAT FROM TVEH"), Lines{"'AA-001-AA'"});
}

TEST_F(DeleteTest, OfAJoinTheNamedTableLosesRows) {
    const std::string join = "TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL_Immat = TVEH_IMMAT";
    const std::size_t vehicles = Get("SELECT TVEH_IMMAT FROM TVEH").size();
    const std::size_t withVisits = Get("SELECT DISTINCT TVEH_IMMAT FROM " + join).size();
    EXPECT_EQ(ErrorOfAction("DELETE * FROM " + join), 3128);
    EXPECT_EQ(ErrorOfAction("DELETE X.* FROM " + join), 3128);
    EXPECT_EQ(Do("DELETE TVEH.* FROM " + join), withVisits);
    EXPECT_EQ(Get("SELECT TVEH_IMMAT FROM TVEH").size(), vehicles - withVisits);
}

TEST_F(DeleteTest, NamesMustBeKnown) {
    EXPECT_EQ(ErrorOfAction("DELETE FROM TX"), error::kNoSuchTable);
    EXPECT_EQ(ErrorOfAction("DELETE FROM TTYP WHERE a = 1"), error::kTooFewParameters);
    EXPECT_EQ(ErrorOfAction("DELETE FROM TTYP WHERE TTYP_CODE = 1"), error::kDataTypeMismatch);
}

TEST_F(DeleteTest, RowsThatSomebodyChangesStopTheWholeStatement) {
    const auto other = jet::Database::Open(File());
    const auto table = other->OpenTable(u"TTYP");
    const jet::RowLock lock = table->Lock(table->Scan().NextId().value());
    EXPECT_EQ(ErrorOfAction("DELETE FROM TTYP"), error::kLockedHere);
    EXPECT_EQ(ErrorOfAction("UPDATE TTYP SET TTYP_LIBELLE = 'x'"), error::kLockedHere);
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP WHERE TTYP_LIBELLE <> 'x'"), Lines{"12"});
}

}  // namespace
}  // namespace quardele::sql
