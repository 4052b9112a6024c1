// Opening data files, and what a Database says of itself.
#include <fstream>

#include "dao_test.h"

namespace quardele::dao {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class DatabaseTest : public DaoTest {};

TEST_F(DatabaseTest, NameIsThePathThatItWasOpenedWith) {
    const Text path = basic::LCase(Installed().WindowsFile("DATA")) + u"\\TALMEON.MDB";
    EXPECT_EQ(OpenDatabase(path)->Name(), path);
}

TEST_F(DatabaseTest, MissingFileRaises3024AndNamesThePathTyped) {
    const auto open = [&] { (void)OpenAnew("DATA/rien.mdb"); };
    EXPECT_EQ(ErrorOf(open), error::kFileMissing);
    EXPECT_NE(DescriptionOfErrorOf(open).find(Installed().WindowsFile("DATA/rien.mdb")), Text::npos);
}

TEST_F(DatabaseTest, FolderWithoutTrailingBackslashRunsIntoTheFileName) {
    const Text path = Installed().WindowsFile("DATA") + u"talmeon.mdb";
    EXPECT_EQ(ErrorOf([&] { (void)OpenDatabase(path); }), error::kFileMissing);
}

TEST_F(DatabaseTest, MissingFolderRaises3044) {
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew("RIEN/talmeon.mdb"); }), error::kBadPath);
}

TEST_F(DatabaseTest, MissingTableWhoseNameStartsLikeAStatementRaises3078) {
    for (const TextView name : {u"SELECTION", u"select_2026", u"Selecté"}) {
        EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(name); }), error::kNoSuchTable)
            << basic::ToUtf8(name);
    }
    EXPECT_EQ(Data().OpenRecordset(u"SELECT[TVEH_IMMAT]FROM TVEH")->Fields().size(), 1U);
}

TEST_F(DatabaseTest, UnknownDriveAndEmptyPathRaise3044) {
    EXPECT_EQ(ErrorOf([] { (void)OpenDatabase(u"Q:\\talmeon.mdb"); }), error::kBadPath);
    EXPECT_EQ(ErrorOf([] { (void)OpenDatabase(u""); }), error::kBadPath);
}

TEST_F(DatabaseTest, FileThatIsNoDatabaseRaises3343) {
    std::ofstream(Installed().File("DATA/lettre.mdb")) << "Monsieur, la visite de votre véhicule ...";
    std::ofstream(Installed().File("DATA/vide.mdb")).close();
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew("DATA/lettre.mdb"); }), error::kNotADatabase);
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew("DATA/vide.mdb"); }), error::kNotADatabase);
}

TEST_F(DatabaseTest, FolderInPlaceOfAFileRaisesAnError) {
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew("DATA"); }), error::kCannotOpenFile);
}

TEST_F(DatabaseTest, OnlyWorkspace0Exists) {
    EXPECT_EQ(ErrorOf([] { (void)DBEngine::Instance().Workspaces(1); }), error::kNoSuchField);
}

TEST_F(DatabaseTest, OrdinaryFileIsUpdatable) {
    EXPECT_TRUE(Data().Updatable());
}

TEST_F(DatabaseTest, FileOpenedReadOnlyRefusesChanges) {
    const auto database = OpenAnew(kData, true);
    EXPECT_FALSE(database->Updatable());
    const auto rows = database->OpenRecordset(u"TVEH", RecordsetType::Table);
    EXPECT_FALSE(rows->Eof());
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->AddNew(); }), error::kReadOnly);
    EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), error::kReadOnly);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
}

TEST_F(DatabaseTest, TableNamesLeaveSystemTablesOut) {
    const auto names = Data().TableNames();
    EXPECT_THAT(names, Contains(Text(u"TVEH")));
    EXPECT_THAT(names, Contains(Text(u"TVEH_DETAIL")));
    EXPECT_THAT(names, Not(Contains(Text(u"MSysObjects"))));
}

TEST_F(DatabaseTest, TableDefinitionShowsNamesTypesSizesAndRules) {
    const TableDef table = Data().TableDefNamed(u"tveh");
    EXPECT_EQ(table.Name(), u"TVEH");
    EXPECT_EQ(table.Fields().front().Name(), u"TVEH_IMMAT");
    const Field& note = table.FieldNamed(u"TVEH_NOTE1");
    EXPECT_EQ(note.Name(), u"TVEH_Note1");
    EXPECT_EQ(note.Type(), FieldType::Text);
    EXPECT_EQ(note.Size(), 100);
    EXPECT_TRUE(note.allowZeroLength);
    EXPECT_EQ(note.defaultValue, u"\"\"");
    EXPECT_EQ(table.FieldNamed(u"TVEH_EDIT").Type(), FieldType::Boolean);
    EXPECT_EQ(Data().TableDefNamed(u"TCLI").FieldNamed(u"TCLI_ENCOURS").Type(), FieldType::Currency);
    EXPECT_EQ(Data().TableDefNamed(u"TCLI").FieldNamed(u"TCLI_REMARQUES").Type(), FieldType::Memo);
    EXPECT_EQ(Data().TableDefNamed(u"TVEH_DETAIL").FieldNamed(u"TVEH_DETAIL_DATVIS").Type(), FieldType::Date);
    EXPECT_EQ(Data().TableDefNamed(u"TVEH_DETAIL").FieldNamed(u"TVEH_DETAIL_PERIOD").Type(),
              FieldType::Integer);
    EXPECT_EQ(Data().TableDefNamed(u"TAFF").FieldNamed(u"TAFF_Numaff").Type(), FieldType::Long);
}

TEST_F(DatabaseTest, TableDefinitionShowsAnAppendedFieldAsTheFileHasIt) {
    TableDef table = Data().TableDefNamed(u"TTYP");
    const std::size_t before = table.Fields().size();
    Field field = TableDef::CreateField();
    field.name = u"TTYP_NEUF";
    table.AppendField(field);
    ASSERT_EQ(table.Fields().size(), before + 1);
    const Field& appended = table.FieldNamed(u"ttyp_neuf");
    EXPECT_EQ(appended.Size(), 255);
    EXPECT_EQ(appended.ordinalPosition, static_cast<int>(before));
    EXPECT_EQ(appended.sourceTable, u"TTYP");
}

TEST_F(DatabaseTest, UnknownTableOrFieldOfADefinitionRaises3265) {
    EXPECT_EQ(ErrorOf([&] { (void)Data().TableDefNamed(u"TRIEN"); }), error::kNoSuchField);
    const TableDef table = Data().TableDefNamed(u"TVEH");
    EXPECT_EQ(ErrorOf([&] { (void)table.FieldNamed(u"TVEH_RIEN"); }), error::kNoSuchField);
}

TEST_F(DatabaseTest, RecordsetOutlivesTheDatabaseObject) {
    const auto rows = OpenAnew(kData)->OpenRecordset(u"Select * from TVEH where false;");
    EXPECT_TRUE(rows->Eof());
    rows->Requery();
    EXPECT_TRUE(rows->Eof());
}

TEST_F(DatabaseTest, WithoutATypeATableNameOpensAsTableAndAStatementAsDynaset) {
    EXPECT_EQ(Data().OpenRecordset(u"TTYP")->Type(), RecordsetType::Table);
    EXPECT_EQ(Data().OpenRecordset(u"SELECT * FROM TTYP")->Type(), RecordsetType::Dynaset);
}

TEST_F(DatabaseTest, UnknownSourceRaises3078) {
    EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(u"TRIEN"); }), error::kNoSuchTable);
    EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(u"TRIEN", RecordsetType::Table); }),
              error::kNoSuchTable);
    EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(u""); }), error::kNoSuchTable);
    EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(u"DELETE FROM TVEH"); }), error::kNoSuchTable);
}

TEST_F(DatabaseTest, StatementDoesNotOpenAsTable) {
    EXPECT_EQ(ErrorOf([&] { (void)Data().OpenRecordset(u"SELECT * FROM TTYP", RecordsetType::Table); }),
              error::kInvalidOperation);
}

TEST_F(DatabaseTest, RecordsetKeepsTheTextThatItWasOpenedWith) {
    EXPECT_EQ(OpenDynaset(u"TTYP")->Name(), u"TTYP");
    EXPECT_EQ(OpenDynaset(u"select * from TTYP ")->Name(), u"select * from TTYP ");
}

}  // namespace
}  // namespace quardele::dao
