// A column appended to a table with rows.
#include "../jet/csv.h"
#include "../jet/support.h"
#include "dao_test.h"

namespace quardele::dao {
namespace {

class AppendFieldTest : public DaoTest {
 protected:
    static Field NewField(TextView name, FieldType type = FieldType::Text, int size = 100) {
        Field field = TableDef::CreateField();
        field.name = name;
        field.type = type;
        field.size = size;
        field.allowZeroLength = true;
        return field;
    }
};

TEST_F(AppendFieldTest, RowsHaveNullInItAndTakeValues) {
    TableDef table = Data().TableDefNamed(u"TTYP");
    table.AppendField(NewField(u"TTYP_Note"));
    EXPECT_EQ(table.FieldNamed(u"ttyp_note").Size(), 100);
    EXPECT_EQ(Data().TableDefNamed(u"TTYP").Fields().size(), 3U);
    const auto rows = OpenTable(u"TTYP");
    EXPECT_TRUE(rows->Value(u"TTYP_Note").IsNull());
    EXPECT_TRUE(rows->FieldNamed(u"TTYP_Note").allowZeroLength);
    rows->Edit();
    rows->SetValue(u"TTYP_Note", u"vu");
    rows->Update();
    EXPECT_EQ(OpenDynaset(u"SELECT * FROM TTYP WHERE TTYP_Note = 'vu'")->RowCount(), 1U);
    SKIP_WITHOUT_MDB_EXPORT();
    const auto lines = jet::test::ParseCsv(jet::test::MdbExport(Installed().File(kData), "TTYP"));
    EXPECT_EQ(lines[0], (jet::test::CsvLine{"TTYP_CODE", "TTYP_LIBELLE", "TTYP_Note"}));
    EXPECT_EQ(lines[1], (jet::test::CsvLine{"CT", "Contrôle technique", "vu"}));
    EXPECT_EQ(lines.size(), 13U);
}

TEST_F(AppendFieldTest, EveryTypeCanBeAppended) {
    TableDef table = Data().TableDefNamed(u"TTYP");
    const FieldType types[] = {FieldType::Boolean,  FieldType::Byte,   FieldType::Integer,    FieldType::Long,
                               FieldType::Currency, FieldType::Single, FieldType::Double,     FieldType::Date,
                               FieldType::Binary,   FieldType::Text,   FieldType::LongBinary, FieldType::Memo,
                               FieldType::Guid,     FieldType::Decimal};
    for (const FieldType type : types) {
        const Text name = u"N" + basic::NumberText(static_cast<double>(type));
        const bool sized = type == FieldType::Text || type == FieldType::Binary;
        table.AppendField(NewField(name, type, sized ? 20 : 0));
        EXPECT_EQ(Data().TableDefNamed(u"TTYP").FieldNamed(name).Type(), type);
    }
    EXPECT_EQ(OpenDynaset(u"SELECT * FROM TTYP WHERE N1 = False AND N4 Is Null")->RowCount(), 12U);
}

TEST_F(AppendFieldTest, RulesAreKept) {
    Field field = NewField(u"TTYP_Etat", FieldType::Text, 10);
    field.defaultValue = u"\"neuf\"";
    field.required = true;
    field.allowZeroLength = false;
    Data().TableDefNamed(u"TTYP").AppendField(field);
    const auto rows = OpenTable(u"TTYP");
    rows->AddNew();
    EXPECT_EQ(rows->Value(u"TTYP_Etat"), Variant(u"neuf"));
    rows->SetValue(u"TTYP_CODE", u"MOT");
    rows->SetValue(u"TTYP_Etat", Null{});
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), error::kNullRequired);
    EXPECT_EQ(ErrorOf([&] { rows->SetValue(u"TTYP_Etat", u""); }), error::kEmptyText);
}

TEST_F(AppendFieldTest, ANameThatExistsInAnotherCaseRaises3191) {
    TableDef table = Data().TableDefNamed(u"TVEH");
    const std::size_t before = table.Fields().size();
    EXPECT_EQ(ErrorOf([&] { table.AppendField(NewField(u"TVEH_NOTE1")); }), error::kFieldExists);
    EXPECT_EQ(table.Fields().size(), before);
}

// Which tables another workstation has open cannot be told.
TEST_F(AppendFieldTest, AnotherWorkstationInTheFileRaises3211) {
    test::Process other = StartElsewhere({"TTYP", "VID", "TTYP_LIBELLE", "?"});
    ASSERT_TRUE(other.WaitForSign());
    TableDef table = Data().TableDefNamed(u"TTYP");
    const std::size_t before = table.Fields().size();
    EXPECT_EQ(ErrorOf([&] { table.AppendField(NewField(u"TTYP_Note")); }), error::kTableInUse);
    EXPECT_EQ(table.Fields().size(), before);
    other.Wait();
    EXPECT_EQ(ErrorOf([&] { table.AppendField(NewField(u"TTYP_Note")); }), 0);
    EXPECT_EQ(Data().TableDefNamed(u"TTYP").Fields().size(), before + 1);
}

TEST_F(AppendFieldTest, ATableThatARecordsetHasOpenRaises3211) {
    auto rows = OpenDynaset(u"SELECT TTYP_CODE FROM TTYP");
    TableDef table = OpenAnew(kData)->TableDefNamed(u"TTYP");
    EXPECT_EQ(ErrorOf([&] { table.AppendField(NewField(u"TTYP_Note")); }), error::kTableInUse);
    EXPECT_EQ(table.Fields().size(), 2U);
    rows.reset();
    table.AppendField(NewField(u"TTYP_Note"));
    EXPECT_EQ(table.Fields().size(), 3U);
}

TEST_F(AppendFieldTest, AReadOnlyFileRaises3027) {
    const auto database = OpenAnew(kData, true);
    EXPECT_EQ(ErrorOf([&] { database->TableDefNamed(u"TTYP").AppendField(NewField(u"TTYP_Note")); }),
              error::kReadOnly);
}

}  // namespace
}  // namespace quardele::dao
