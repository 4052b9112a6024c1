// Seek on indexes of several columns, of dates and numbers, descending ones and ones with Nulls.
#include <sql/statement.h>

#include "dao_test.h"
#include "open_file.h"

namespace quardele::dao {
namespace {

class SeekTest : public DaoTest {
 protected:
    SeekTest() {
        Run(u"CREATE TABLE TSEEK (A TEXT(10), B INTEGER, C DATETIME, ID LONG CONSTRAINT PrimaryKey PRIMARY "
            u"KEY)");
        Run(u"CREATE INDEX AB ON TSEEK (A, B)");
        Run(u"CREATE INDEX ABD ON TSEEK (A, B DESC)");
        Run(u"CREATE INDEX C ON TSEEK (C)");
        int id = 0;
        for (const TextView row : {u"'a', 1, #01/01/2024#", u"'a', 2, #02/01/2024#", u"'b', 1, #03/01/2024#",
                                   u"'b', 2, #04/01/2024#", u"'b', 3, Null", u"'c', Null, #05/01/2024#"}) {
            Run(u"INSERT INTO TSEEK (A, B, C, ID) VALUES (" + Text(row) + u", " + basic::NumberText(++id) +
                u")");
        }
    }
    void Run(TextView statement) const {
        const auto file = OpenFile::Open(Installed().File(kData), jet::OpenMode::Shared);
        sql::Execute(*file->Database(), statement);
    }
    [[nodiscard]] std::shared_ptr<Recordset> OpenBy(TextView index) {
        auto rows = OpenTable(u"TSEEK");
        rows->SetIndex(index);
        return rows;
    }
    /// The ID of the row that a seek leads to, 0 for a miss.
    [[nodiscard]] static int Found(Recordset& rows, TextView comparison,
                                   std::initializer_list<Variant> keys) {
        rows.Seek(comparison, keys);
        return rows.NoMatch() ? 0 : rows.Value(u"ID").As<std::int32_t>();
    }
};

TEST_F(SeekTest, AllColumnsComparedInEveryWay) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"b", 2}), 4);
    EXPECT_EQ(Found(*rows, u"=", {u"b", 4}), 0);
    EXPECT_EQ(Found(*rows, u">=", {u"b", 2}), 4);
    EXPECT_EQ(Found(*rows, u">=", {u"b", 4}), 6);
    EXPECT_EQ(Found(*rows, u">=", {u"c", 4}), 0);
    EXPECT_EQ(Found(*rows, u">", {u"b", 2}), 5);
    EXPECT_EQ(Found(*rows, u">", {u"a", 2}), 3);
    EXPECT_EQ(Found(*rows, u">", {u"c", 1}), 0);
    EXPECT_EQ(Found(*rows, u"<=", {u"b", 2}), 4);
    EXPECT_EQ(Found(*rows, u"<=", {u"b", 0}), 2);
    EXPECT_EQ(Found(*rows, u"<=", {u"a", 0}), 0);
    EXPECT_EQ(Found(*rows, u"<", {u"b", 1}), 2);
    EXPECT_EQ(Found(*rows, u"<", {u"b", 3}), 4);
    EXPECT_EQ(Found(*rows, u"<", {u"a", 1}), 0);
}

TEST_F(SeekTest, LeadingColumnsOnlyTakeAllRowsWithThemForEqual) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"b"}), 3) << "the first of them";
    EXPECT_EQ(Found(*rows, u">=", {u"b"}), 3);
    EXPECT_EQ(Found(*rows, u">", {u"b"}), 6) << "behind all of them";
    EXPECT_EQ(Found(*rows, u"<=", {u"b"}), 5) << "the last of them";
    EXPECT_EQ(Found(*rows, u"<", {u"b"}), 2) << "in front of all of them";
    EXPECT_EQ(Found(*rows, u">", {u"c"}), 0);
    EXPECT_EQ(Found(*rows, u"<", {u"a"}), 0);
    EXPECT_EQ(Found(*rows, u"=", {u"ab"}), 0);
}

TEST_F(SeekTest, ADescendingColumnIsComparedInTheOrderOfTheIndex) {
    const auto rows = OpenBy(u"ABD");  // a2 a1 b3 b2 b1 cNull
    EXPECT_EQ(Found(*rows, u"=", {u"b", 2}), 4);
    EXPECT_EQ(Found(*rows, u">=", {u"b", 2}), 4);
    EXPECT_EQ(Found(*rows, u">", {u"b", 2}), 3);
    EXPECT_EQ(Found(*rows, u"<", {u"b", 2}), 5);
    EXPECT_EQ(Found(*rows, u"=", {u"b"}), 5);
}

TEST_F(SeekTest, ANullIsFoundAndLiesInFront) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"c", Null{}}), 6);
    EXPECT_EQ(Found(*rows, u"<", {u"c", 0}), 6);
    const auto dates = OpenBy(u"C");
    EXPECT_EQ(dates->Value(u"ID"), Variant(std::int32_t{5})) << "the Null comes first";
    EXPECT_EQ(Found(*dates, u"=", {Null{}}), 5);
    EXPECT_EQ(Found(*dates, u">", {Null{}}), 1);
}

TEST_F(SeekTest, DatesAreSoughtByDateOrText) {
    const auto rows = OpenBy(u"C");
    EXPECT_EQ(Found(*rows, u"=", {basic::DateOf(2024, 3, 1)}), 3);
    EXPECT_EQ(Found(*rows, u"=", {u"01/03/2024"}), 3) << "day first";
    EXPECT_EQ(Found(*rows, u">=", {basic::DateOf(2024, 3, 2)}), 4);
    EXPECT_EQ(Found(*rows, u"<", {basic::DateOf(2024, 3, 1)}), 2);
    EXPECT_EQ(ErrorOf([&] { rows->Seek(u"=", {u"demain"}); }), error::kTypeConversion);
}

TEST_F(SeekTest, MovesGoOnFromTheRowThatAPartOfTheKeyHasFound) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"b"}), 3);
    EXPECT_EQ(Rest(*rows, u"ID"),
              (std::vector<Variant>{std::int32_t{3}, std::int32_t{4}, std::int32_t{5}, std::int32_t{6}}));
}

TEST_F(SeekTest, ASeekDropsAPendingEdit) {
    const auto rows = OpenBy(u"AB");
    rows->Edit();
    rows->SetValue(u"B", std::int16_t{9});
    EXPECT_EQ(Found(*rows, u"=", {u"a", 1}), 1);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(Found(*rows, u"=", {u"a", 9}), 0);
}

TEST_F(SeekTest, ARowIsFoundUnderItsNewKeyAfterUpdate) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"a", 1}), 1);
    rows->Edit();
    rows->SetValue(u"A", u"d");
    rows->Update();
    EXPECT_EQ(rows->Value(u"ID"), Variant(std::int32_t{1})) << "it stays current";
    EXPECT_EQ(Found(*rows, u"=", {u"a", 1}), 0);
    EXPECT_EQ(Found(*rows, u"=", {u"d"}), 1);
    rows->MoveNext();
    EXPECT_TRUE(rows->Eof()) << "at its new place, the last";
}

TEST_F(SeekTest, ADeletedRowIsNotFound) {
    const auto rows = OpenBy(u"AB");
    EXPECT_EQ(Found(*rows, u"=", {u"b", 2}), 4);
    rows->Delete();
    EXPECT_EQ(Found(*rows, u"=", {u"b", 2}), 0);
    EXPECT_EQ(Found(*rows, u">=", {u"b", 2}), 5);
}

}  // namespace
}  // namespace quardele::dao
