// Which recordsets and which of their fields can be changed.
#include <algorithm>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class UpdatableTest : public DaoTest {
 protected:
    static constexpr TextView kJoin =
        u" FROM TVEH_DETAIL INNER JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT";

    static void ExpectReadOnly(Recordset& rows) {
        EXPECT_FALSE(rows.Updatable());
        EXPECT_EQ(ErrorOf([&] { rows.Edit(); }), error::kReadOnly);
        EXPECT_EQ(ErrorOf([&] { rows.AddNew(); }), error::kReadOnly);
        EXPECT_EQ(ErrorOf([&] { rows.Delete(); }), error::kReadOnly);
        EXPECT_EQ(rows.EditMode(), EditMode::None);
    }
    /// The error of writing a field of the current record, 0 when it can be written.
    [[nodiscard]] static int ErrorOfWriting(Recordset& rows, TextView field, const Variant& value) {
        rows.Edit();
        const int number = ErrorOf([&] { rows.SetValue(field, value); });
        rows.CancelUpdate();
        return number;
    }
};

TEST_F(UpdatableTest, TablesAndDynasetsOnOneTableAre) {
    EXPECT_TRUE(OpenTable(u"TTYP")->Updatable());
    EXPECT_TRUE(OpenDynaset(u"TTYP")->Updatable());
    EXPECT_TRUE(
        OpenDynaset(u"SELECT TOP 3 * FROM TTYP WHERE TTYP_CODE > 'C' ORDER BY TTYP_LIBELLE")->Updatable());
    EXPECT_TRUE(OpenDynaset(u"SELECT * FROM TTYP WHERE false")->Updatable()) << "an empty set takes new rows";
}

TEST_F(UpdatableTest, WhatBringsRowsTogetherIsNot) {
    for (const TextView statement :
         {u"SELECT DISTINCT TTYP_CODE FROM TTYP", u"SELECT TVEH_CODCLI FROM TVEH GROUP BY TVEH_CODCLI",
          u"SELECT Count(*) AS N FROM TVEH", u"SELECT TTYP_CODE FROM TTYP UNION SELECT TPAYS_CODE FROM TPAYS",
          u"SELECT TTYP_CODE FROM TTYP UNION ALL SELECT TPAYS_CODE FROM TPAYS"}) {
        SCOPED_TRACE(basic::ToUtf8(statement));
        ExpectReadOnly(*OpenDynaset(statement));
    }
}

TEST_F(UpdatableTest, ExpressionsOnlyAreNot) {
    ExpectReadOnly(*OpenDynaset(u"SELECT Len([TTYP_CODE]) AS L, 1 AS UN FROM TTYP"));
}

TEST_F(UpdatableTest, SnapshotsAndFilesOpenedForReadingAreNot) {
    ExpectReadOnly(*Data().OpenRecordset(u"TTYP", RecordsetType::Snapshot));
    const auto readOnly = OpenAnew(kData, true);
    EXPECT_FALSE(readOnly->Updatable());
    ExpectReadOnly(*readOnly->OpenRecordset(u"TTYP", RecordsetType::Table));
    ExpectReadOnly(*readOnly->OpenRecordset(u"TTYP", RecordsetType::Dynaset));
}

TEST_F(UpdatableTest, RowsWithoutAnyJoinConditionAreNot) {
    ExpectReadOnly(*OpenDynaset(u"SELECT * FROM TTYP, TPAYS"));
}

TEST_F(UpdatableTest, ExpressionsBesideColumnsRaise3164) {
    const auto rows = OpenDynaset(u"SELECT TTYP_CODE, TTYP_LIBELLE, Len([TTYP_LIBELLE]) AS L FROM TTYP");
    EXPECT_EQ(ErrorOfWriting(*rows, u"TTYP_LIBELLE", u"X"), 0);
    EXPECT_EQ(ErrorOfWriting(*rows, u"L", std::int32_t{3}), error::kFieldNotUpdatable);
}

TEST_F(UpdatableTest, AColumnUnderAnotherNameIsWrittenToItsOwn) {
    const auto rows =
        OpenDynaset(u"SELECT TTYP_CODE AS Code, TTYP_LIBELLE AS Lib FROM TTYP WHERE TTYP_CODE='CT'");
    EXPECT_EQ(rows->FieldNamed(u"Lib").sourceTable, u"TTYP");
    EXPECT_EQ(rows->FieldNamed(u"Lib").sourceField, u"TTYP_LIBELLE");
    rows->Edit();
    rows->SetValue(u"Lib", u"Contrôle");
    rows->Update();
    EXPECT_EQ(OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_CODE='CT'")->Value(u"TTYP_LIBELLE"),
              Variant(u"Contrôle"));
}

TEST_F(UpdatableTest, OfAJoinTheManySideCanBeWrittenAndTheOneSideNot) {
    const auto rows = OpenDynaset(u"SELECT TVEH_MARQUE, TVEH_DETAIL_PERIOD" + Text(kJoin));
    EXPECT_TRUE(rows->Updatable());
    EXPECT_EQ(ErrorOfWriting(*rows, u"TVEH_DETAIL_PERIOD", std::int16_t{5}), 0);
    EXPECT_EQ(ErrorOfWriting(*rows, u"TVEH_MARQUE", u"LADA"), error::kFieldNotUpdatable);
}

TEST_F(UpdatableTest, AVisitThatIsGivenToAnotherVehicleShowsThatOne) {
    const auto visits = OpenTable(u"TVEH_DETAIL");
    visits->AddNew();
    visits->SetValue(u"TVEH_DETAIL_Immat", u"FQ-453-HQ");
    visits->SetValue(u"TVEH_DETAIL_TypTrav", u"NEUF");
    visits->Update();
    for (const TextView kind : {u"INNER", u"LEFT"}) {
        const auto rows =
            OpenDynaset(u"SELECT TVEH_DETAIL_Immat, TVEH_IMMAT, TVEH_MARQUE FROM TVEH_DETAIL " + Text(kind) +
                        u" JOIN TVEH ON TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT "
                        u"WHERE TVEH_DETAIL_Immat='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='NEUF'");
        const auto give = [&](TextView vehicle) {
            rows->Edit();
            rows->SetValue(u"TVEH_DETAIL_Immat", Text(vehicle));
            rows->Update();
        };
        give(u"KG-361-VP");
        EXPECT_EQ(rows->Value(u"TVEH_DETAIL_Immat"), Variant(u"KG-361-VP"));
        EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"KG-361-VP")) << "although the condition refuses it";
        EXPECT_EQ(rows->RowCount(), 1U);
        give(u"ZZ-999-ZZ");
        EXPECT_EQ(rows->Value(u"TVEH_DETAIL_Immat"), Variant(u"ZZ-999-ZZ"));
        EXPECT_TRUE(rows->Value(u"TVEH_IMMAT").IsNull()) << "there is no such vehicle";
        give(u"FQ-453-HQ");
        EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    }
}

TEST_F(UpdatableTest, ANewVisitThatTheConditionRefusesShowsItsVehicle) {
    const auto rows = OpenDynaset(u"SELECT TVEH_DETAIL_Immat, TVEH_DETAIL_TypTrav, TVEH_IMMAT" + Text(kJoin) +
                                  u" WHERE TVEH_DETAIL_TypTrav='CT'");
    rows->AddNew();
    rows->SetValue(u"TVEH_DETAIL_Immat", u"KG-361-VP");
    rows->SetValue(u"TVEH_DETAIL_TypTrav", u"NEUF");
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"KG-361-VP"));
}

TEST_F(UpdatableTest, OfAJoinASideWhoseKeyIsUniqueInTheResultCanBeWritten) {
    const auto rows = OpenDynaset(u"SELECT TVEH_MARQUE, TVEH_DETAIL_PERIOD" + Text(kJoin) +
                                  u" WHERE TVEH_IMMAT='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'");
    EXPECT_EQ(ErrorOfWriting(*rows, u"TVEH_DETAIL_PERIOD", std::int16_t{5}), 0);
    EXPECT_EQ(ErrorOfWriting(*rows, u"TVEH_MARQUE", u"LADA"), 0);
}

TEST_F(UpdatableTest, AJoinOfOneSideOnlyShownIsNot) {
    ExpectReadOnly(*OpenDynaset(u"SELECT TVEH_MARQUE" + Text(kJoin)));
}

TEST_F(UpdatableTest, DeletingFromAJoinTakesTheManySideInWhicheverOrderItIsWritten) {
    const TextView conditions = u" WHERE TVEH_IMMAT='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'";
    const auto rows = OpenDynaset(
        u"SELECT TVEH.*, TVEH_DETAIL.* FROM TVEH INNER JOIN TVEH_DETAIL ON "
        u"TVEH_DETAIL.TVEH_DETAIL_Immat = TVEH.TVEH_IMMAT" +
        Text(conditions));
    ASSERT_EQ(rows->RowCount(), 1U) << "the vehicle's key is unique in the result too";
    const std::size_t visits = OpenTable(u"TVEH_DETAIL")->RecordCount();
    rows->Delete();
    EXPECT_EQ(OpenTable(u"TVEH")->RecordCount(), 1500U);
    EXPECT_EQ(OpenTable(u"TVEH_DETAIL")->RecordCount(), visits - 1);
}

TEST_F(UpdatableTest, FieldsTellWhereTheirValuesAreStored) {
    const auto rows =
        OpenDynaset(u"SELECT TVEH_MARQUE, Len([TVEH_MARQUE]) AS L, TVEH_DETAIL_PERIOD AS P" + Text(kJoin));
    const auto& fields = rows->Fields();
    ASSERT_EQ(fields.size(), 3U);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        EXPECT_EQ(fields[i].ordinalPosition, static_cast<int>(i));
    }
    EXPECT_EQ(fields[0].sourceTable, u"TVEH");
    EXPECT_EQ(fields[0].sourceField, u"TVEH_MARQUE");
    EXPECT_EQ(fields[1].sourceTable, u"");
    EXPECT_EQ(fields[1].sourceField, u"");
    EXPECT_EQ(fields[2].sourceTable, u"TVEH_DETAIL");
    EXPECT_EQ(fields[2].sourceField, u"TVEH_DETAIL_PERIOD");
    const TableDef table = Data().TableDefNamed(u"TVEH");
    EXPECT_EQ(table.FieldNamed(u"TVEH_IMMAT").ordinalPosition, 0);
    EXPECT_EQ(table.FieldNamed(u"TVEH_IMMAT").sourceTable, u"TVEH");
    EXPECT_EQ(OpenTable(u"TVEH")->FieldNamed(u"TVEH_IMMAT").sourceField, u"TVEH_IMMAT");
}

}  // namespace
}  // namespace quardele::dao
