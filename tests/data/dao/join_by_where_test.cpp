// Joins of which conditions in WHERE are part: what stands beside a record that was written is what the
// whole statement joins to it.
#include "dao_test.h"

namespace quardele::dao {
namespace {

class JoinByWhereTest : public DaoTest {
 protected:
    /// The vehicle and a visit of it, as a list shows them whose FROM has a comma only.
    [[nodiscard]] std::shared_ptr<Recordset> OpenVisits(TextView condition) {
        return OpenDynaset(
            u"SELECT TVEH_DETAIL_Immat, TVEH_DETAIL_TypTrav, TVEH_DETAIL_PERIOD, TVEH_IMMAT, TVEH_MARQUE "
            u"FROM TVEH_DETAIL, TVEH WHERE TVEH_DETAIL_Immat = TVEH_IMMAT AND " +
            Text(condition));
    }
};

TEST_F(JoinByWhereTest, AfterUpdateALineShowsTheRecordThatItIsLinkedWith) {
    const auto rows = OpenVisits(u"TVEH_DETAIL_Immat='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='CT'");
    ASSERT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    rows->Edit();
    rows->SetValue(u"TVEH_DETAIL_PERIOD", std::int16_t{7});
    rows->Update();
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"FQ-453-HQ"));
    rows->Edit();
    rows->SetValue(u"TVEH_MARQUE", u"LADA");
    rows->Update();
    const auto changed = OpenDynaset(u"SELECT TVEH_IMMAT FROM TVEH WHERE TVEH_MARQUE='LADA'");
    EXPECT_EQ(Rest(*changed, u"TVEH_IMMAT"), (std::vector<Variant>{Variant(u"FQ-453-HQ")}));
}

TEST_F(JoinByWhereTest, AVisitThatIsGivenToAnotherVehicleShowsThatOneOrNone) {
    const auto visits = OpenTable(u"TVEH_DETAIL");
    visits->AddNew();
    visits->SetValue(u"TVEH_DETAIL_Immat", u"FQ-453-HQ");
    visits->SetValue(u"TVEH_DETAIL_TypTrav", u"NEUF");
    visits->Update();
    const auto rows = OpenVisits(u"TVEH_DETAIL_Immat='FQ-453-HQ' AND TVEH_DETAIL_TypTrav='NEUF'");
    const auto give = [&](TextView vehicle) {
        rows->Edit();
        rows->SetValue(u"TVEH_DETAIL_Immat", Text(vehicle));
        rows->Update();
    };
    give(u"KG-361-VP");
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"KG-361-VP")) << "although the condition refuses it";
    give(u"ZZ-999-ZZ");
    EXPECT_TRUE(rows->Value(u"TVEH_IMMAT").IsNull()) << "there is no such vehicle";
}

TEST_F(JoinByWhereTest, ANewVisitShowsItsVehicle) {
    const auto rows = OpenVisits(u"TVEH_DETAIL_TypTrav='CT'");
    rows->AddNew();
    rows->SetValue(u"TVEH_DETAIL_Immat", u"KG-361-VP");
    rows->SetValue(u"TVEH_DETAIL_TypTrav", u"NEUF");
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"TVEH_IMMAT"), Variant(u"KG-361-VP"));
}

class HalfAndHalfTest : public DaoTest {
 protected:
    void SetUp() override {
        for (const char* statement :
             {"CREATE TABLE TLIEU (LX LONG, LY LONG, NOM TEXT(20), CONSTRAINT PK PRIMARY KEY (LX, LY))",
              "CREATE TABLE TPLACE (ID LONG CONSTRAINT PK PRIMARY KEY, PX LONG, PY LONG)",
              "INSERT INTO TLIEU VALUES (1, 1, 'un')", "INSERT INTO TLIEU VALUES (1, 2, 'deux')",
              "INSERT INTO TPLACE VALUES (10, 1, 2)"}) {
            ExecuteElsewhere(statement);
        }
    }
};

TEST_F(HalfAndHalfTest, AKeyOfTwoColumnsMayBeHalfInOnAndHalfInWhere) {
    const auto rows =
        OpenDynaset(u"SELECT ID, PX, PY, NOM FROM TPLACE INNER JOIN TLIEU ON PX = LX WHERE PY = LY");
    rows->Edit();
    rows->SetValue(u"ID", std::int32_t{11});
    rows->Update();
    EXPECT_EQ(rows->Value(u"NOM"), Variant(u"deux"));
    rows->AddNew();
    rows->SetValue(u"ID", std::int32_t{12});
    rows->SetValue(u"PX", std::int32_t{1});
    rows->SetValue(u"PY", std::int32_t{2});
    rows->Update();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"NOM"), Variant(u"deux"));
}

TEST_F(HalfAndHalfTest, AConditionOfOnThatLooksAtTheWrittenTableAloneCounts) {
    const auto rows = OpenDynaset(
        u"SELECT ID, PX, PY, NOM FROM TPLACE INNER JOIN TLIEU ON (PX = LX AND PY = LY AND ID < 20)");
    rows->Edit();
    rows->SetValue(u"ID", std::int32_t{15});
    rows->Update();
    EXPECT_EQ(rows->Value(u"NOM"), Variant(u"deux"));
    rows->Edit();
    rows->SetValue(u"ID", std::int32_t{21});
    rows->Update();
    EXPECT_EQ(rows->Value(u"ID"), Variant(std::int32_t{21}));
    EXPECT_TRUE(rows->Value(u"NOM").IsNull()) << "FROM joins nothing to it now";
}

}  // namespace
}  // namespace quardele::dao
