// CREATE TABLE, CREATE INDEX, ALTER TABLE and DROP TABLE.
#include "change_fixture.h"
#include "syntax/action_parser.h"

namespace quardele::sql {
namespace {

using jet::ColumnType;
using testing::ElementsAre;
using DefinitionTest = ChangeTest;
using Line = jet::test::CsvLine;

jet::TableDesign DesignOf(const std::string& statement) {
    return std::get<CreateTableAction>(ParseAction(basic::FromUtf8(statement))).design;
}

struct TypeCase {
    const char* type;
    ColumnType column;
    int size = 0;
    int precision = 0;
    int scale = 0;
    bool autoNumber = false;
};

void PrintTo(const TypeCase& c, std::ostream* out) {
    *out << c.type;
}

class TypeNameTest : public testing::TestWithParam<TypeCase> {};

TEST_P(TypeNameTest, MeansItsColumnType) {
    const TypeCase& expected = GetParam();
    const jet::Column column = DesignOf(std::string("CREATE TABLE T (c ") + expected.type + ")").columns[0];
    EXPECT_EQ(column.type, expected.column);
    EXPECT_EQ(column.size, expected.size);
    EXPECT_EQ(column.precision, expected.precision);
    EXPECT_EQ(column.scale, expected.scale);
    EXPECT_EQ(column.autoNumber, expected.autoNumber);
    EXPECT_FALSE(column.required);
    EXPECT_TRUE(column.allowZeroLength);
}

INSTANTIATE_TEST_SUITE_P(
    All, TypeNameTest,
    testing::Values(TypeCase{"TEXT", ColumnType::Text, 255}, TypeCase{"text(20)", ColumnType::Text, 20},
                    TypeCase{"CHAR(1)", ColumnType::Text, 1},
                    TypeCase{"VARCHAR ( 255 )", ColumnType::Text, 255}, TypeCase{"MEMO", ColumnType::Memo},
                    TypeCase{"LONGTEXT", ColumnType::Memo}, TypeCase{"BYTE", ColumnType::Byte},
                    TypeCase{"SHORT", ColumnType::Integer}, TypeCase{"INTEGER2", ColumnType::Integer},
                    TypeCase{"SMALLINT", ColumnType::Integer}, TypeCase{"LONG", ColumnType::Long},
                    TypeCase{"INTEGER", ColumnType::Long}, TypeCase{"INT", ColumnType::Long},
                    TypeCase{"COUNTER", ColumnType::Long, 0, 0, 0, true},
                    TypeCase{"AUTOINCREMENT", ColumnType::Long, 0, 0, 0, true},
                    TypeCase{"CURRENCY", ColumnType::Currency}, TypeCase{"MONEY", ColumnType::Currency},
                    TypeCase{"SINGLE", ColumnType::Single}, TypeCase{"REAL", ColumnType::Single},
                    TypeCase{"DOUBLE", ColumnType::Double}, TypeCase{"FLOAT", ColumnType::Double},
                    TypeCase{"DATETIME", ColumnType::Date}, TypeCase{"DATE", ColumnType::Date},
                    TypeCase{"TIME", ColumnType::Date}, TypeCase{"BIT", ColumnType::Boolean},
                    TypeCase{"YESNO", ColumnType::Boolean}, TypeCase{"LOGICAL", ColumnType::Boolean},
                    TypeCase{"BOOLEAN", ColumnType::Boolean}, TypeCase{"GUID", ColumnType::Guid},
                    TypeCase{"BINARY(16)", ColumnType::Binary, 16},
                    TypeCase{"VARBINARY", ColumnType::Binary, 255}, TypeCase{"LONGBINARY", ColumnType::Ole},
                    TypeCase{"OLEOBJECT", ColumnType::Ole}, TypeCase{"IMAGE", ColumnType::Ole},
                    TypeCase{"DECIMAL", ColumnType::Numeric, 0, 18},
                    TypeCase{"NUMERIC(28, 4)", ColumnType::Numeric, 0, 28, 4}));

TEST(CreateTableTest, ReadsRulesAndConstraintsOfColumns) {
    const jet::TableDesign design = DesignOf(
        "create table [Mes clients] (Code COUNTER PRIMARY KEY, [Nom du client] TEXT(40) NOT NULL DEFAULT "
        "'sans' & \" nom\", Siret TEXT(14) CONSTRAINT ParSiret UNIQUE, Vu DATETIME DEFAULT Date() UNIQUE)");
    EXPECT_EQ(design.name, u"Mes clients");
    ASSERT_EQ(design.columns.size(), 4U);
    EXPECT_EQ(design.columns[1].name, u"Nom du client");
    EXPECT_TRUE(design.columns[1].required);
    EXPECT_EQ(basic::ToUtf8(design.columns[1].defaultValue), "'sans' & \" nom\"");
    EXPECT_EQ(basic::ToUtf8(design.columns[3].defaultValue), "Date()");
    ASSERT_EQ(design.indexes.size(), 3U);
    EXPECT_EQ(design.indexes[0].name, u"PrimaryKey");
    EXPECT_TRUE(design.indexes[0].primary && design.indexes[0].unique && design.indexes[0].required);
    EXPECT_EQ(design.indexes[1].name, u"ParSiret");
    EXPECT_EQ(design.indexes[1].columns.at(0).column, u"Siret");
    EXPECT_TRUE(design.indexes[1].unique);
    EXPECT_FALSE(design.indexes[1].primary);
    EXPECT_EQ(design.indexes[2].name, u"Vu");
}

TEST(CreateTableTest, ReadsConstraintsOfTheTableAndNamesThoseWithoutAName) {
    const jet::TableDesign design = DesignOf(
        "CREATE TABLE T (a LONG, b LONG, CONSTRAINT Cle PRIMARY KEY (a DESC, b), "
        "UNIQUE (b), UNIQUE (b, a ASC));");
    ASSERT_EQ(design.indexes.size(), 3U);
    EXPECT_EQ(design.indexes[0].name, u"Cle");
    ASSERT_EQ(design.indexes[0].columns.size(), 2U);
    EXPECT_FALSE(design.indexes[0].columns[0].ascending);
    EXPECT_TRUE(design.indexes[0].columns[1].ascending);
    EXPECT_EQ(design.indexes[1].name, u"b");
    EXPECT_EQ(design.indexes[2].name, u"b1");
}

TEST(CreateIndexTest, ReadsItsOptions) {
    const auto design = [](const char* statement) {
        return std::get<CreateIndexAction>(ParseAction(basic::FromUtf8(statement))).design;
    };
    const jet::IndexDesign plain = design("CREATE INDEX I ON T (a, b DESC)");
    EXPECT_FALSE(plain.unique || plain.primary || plain.required || plain.ignoreNulls);
    EXPECT_EQ(plain.columns.size(), 2U);
    EXPECT_TRUE(design("CREATE UNIQUE INDEX I ON T (a)").unique);
    EXPECT_TRUE(design("CREATE INDEX I ON T (a) WITH PRIMARY").primary);
    EXPECT_TRUE(design("CREATE INDEX I ON T (a) WITH DISALLOW NULL").required);
    EXPECT_TRUE(design("create index I on T (a) with ignore null").ignoreNulls);
}

TEST_F(DefinitionTest, ATableIsMadeAndTakesRowsThatOtherProgramsRead) {
    SKIP_WITHOUT_MDB_EXPORT();
    EXPECT_EQ(Do("CREATE TABLE TNOTE (Num COUNTER PRIMARY KEY, Immat TEXT(15) NOT NULL, Texte MEMO, Vu BIT, "
                 "Montant "
                 "CURRENCY DEFAULT 12.5, Le DATETIME, CONSTRAINT ParImmat UNIQUE (Immat, Le))"),
              0U);
    EXPECT_EQ(Do("INSERT INTO TNOTE (Immat, Texte, Le) VALUES ('AA-001-AA', 'Été', #7/31/2026#)"), 1U);
    EXPECT_EQ(Do("INSERT INTO TNOTE (Immat, Vu, Montant) VALUES ('AA-002-AA', True, 3)"), 1U);
    EXPECT_EQ(Get("SELECT * FROM TNOTE"), (Lines{"1 'AA-001-AA' 'Été' False 12.5 EUR #07/31/2026#",
                                                 "2 'AA-002-AA' Null True 3 EUR Null"}));
    EXPECT_EQ(ErrorOfAction("INSERT INTO TNOTE (Texte) VALUES ('x')"), error::kNullRequired);
    EXPECT_EQ(ErrorOfAction("INSERT INTO TNOTE (Immat, Le) VALUES ('aa-001-aa', #7/31/2026#)"),
              error::kDuplicateKey);
    EXPECT_THAT(Exported("TNOTE"),
                ElementsAre(Line{"Num", "Immat", "Texte", "Vu", "Montant", "Le"},
                            Line{"1", "AA-001-AA", "Été", "0", "12.5000", "2026-07-31 00:00:00"},
                            Line{"2", "AA-002-AA", std::nullopt, "1", "3.0000", std::nullopt}));
}

TEST_F(DefinitionTest, ATableThatCannotBeMadeLeavesNothing) {
    EXPECT_EQ(ErrorOfAction("CREATE TABLE TTYP (a LONG)"), 3010);
    EXPECT_EQ(ErrorOfAction("CREATE TABLE TNEUF (a LONG, A LONG)"), 3191);
    EXPECT_EQ(ErrorOfAction("CREATE TABLE TNEUF (a LONG, UNIQUE (b))"), 3409);
    EXPECT_EQ(ErrorOfAction("CREATE TABLE TNEUF (a LONG DEFAULT b)"), error::kTooFewParameters);
    EXPECT_FALSE(Data()->HasTable(u"TNEUF"));
}

TEST_F(DefinitionTest, DefinitionsAndRowsCanBeOneStep) {
    const auto run = [&](bool commit) {
        jet::Step step = Data()->Begin();
        Do("CREATE TABLE A (x LONG)");
        Do("INSERT INTO A VALUES (1)");
        Do("INSERT INTO A SELECT x + 1 FROM A");
        EXPECT_EQ(ErrorOfAction("CREATE TABLE A (x LONG)"), 3010);
        if (commit) {
            step.Commit();
        }
    };
    run(false);
    EXPECT_FALSE(Data()->HasTable(u"A"));
    run(true);
    EXPECT_EQ(GetElsewhere("SELECT x FROM A ORDER BY x"), (Lines{"1", "2"}));
}

TEST_F(DefinitionTest, AnIndexServesItsTableAndKeepsItsRules) {
    Do("CREATE INDEX ParMarque ON TVEH (TVEH_MARQUE DESC)");
    const auto table = Data()->OpenTable(u"TVEH");
    const int index = table->FindIndex(u"ParMarque");
    ASSERT_GE(index, 0);
    EXPECT_FALSE(table->Indexes()[static_cast<std::size_t>(index)].columns[0].ascending);
    EXPECT_EQ(Get("SELECT Count(*) FROM TVEH WHERE TVEH_MARQUE = 'RENAULT'"),
              Rows(Workshop(), "SELECT Count(*) FROM TVEH WHERE TVEH_MARQUE = 'RENAULT'"));
    EXPECT_EQ(ErrorOfAction("CREATE UNIQUE INDEX U ON TVEH (TVEH_MARQUE)"), error::kDuplicateKey);
    EXPECT_EQ(ErrorOfAction("CREATE INDEX U ON TX (a)"), error::kNoSuchTable);
    Do("CREATE UNIQUE INDEX U ON TTYP (TTYP_LIBELLE)");
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP VALUES ('BA2', 'batterie')"), error::kDuplicateKey);
}

TEST_F(DefinitionTest, AColumnIsAddedWithItsConstraint) {
    Do("ALTER TABLE TTYP ADD COLUMN TTYP_Rang LONG DEFAULT 7 CONSTRAINT ParRang UNIQUE");
    EXPECT_EQ(Get("SELECT Count(*) FROM TTYP WHERE TTYP_Rang Is Null"), Lines{"12"});
    Do("INSERT INTO TTYP (TTYP_CODE) VALUES ('MOT')");
    EXPECT_EQ(Get("SELECT TTYP_Rang FROM TTYP WHERE TTYP_CODE = 'MOT'"), Lines{"7"});
    EXPECT_EQ(ErrorOfAction("INSERT INTO TTYP (TTYP_CODE) VALUES ('MO2')"), error::kDuplicateKey);
    EXPECT_EQ(ErrorOfAction("ALTER TABLE TTYP ADD TTYP_RANG TEXT"), 3191);
    EXPECT_EQ(ErrorOfAction("ALTER TABLE TX ADD a TEXT"), error::kNoSuchTable);
}

TEST_F(DefinitionTest, AColumnWhoseConstraintFailsIsNotAdded) {
    EXPECT_NE(ErrorOfAction("ALTER TABLE TTYP ADD COLUMN TTYP_Rang LONG PRIMARY KEY"), 0);
    EXPECT_EQ(Data()->OpenTable(u"TTYP")->FindColumn(u"TTYP_Rang"), -1);
    EXPECT_EQ(Get("SELECT * FROM TTYP WHERE TTYP_CODE = 'CT'"), Lines{"'CT' 'Contrôle technique'"});
}

TEST_F(DefinitionTest, ATableIsDropped) {
    Do("DROP TABLE TAFF_DETAIL;");
    EXPECT_FALSE(Data()->HasTable(u"TAFF_DETAIL"));
    EXPECT_EQ(ErrorOfAction("DROP TABLE TAFF_DETAIL"), error::kNoSuchTable);
    EXPECT_EQ(ErrorOfAction("DROP TABLE MSysObjects"), 3371);
    EXPECT_EQ(GetElsewhere("SELECT Count(*) FROM TTYP"), Lines{"12"});
}

}  // namespace
}  // namespace quardele::sql
