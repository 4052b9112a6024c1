// Steps and tables that lie in another file.

#include <jet/database.h>

#include "../jet/support.h"
#include "sql_error.h"
#include "sql_fixture.h"

#include <sql/statement.h>

namespace quardele::sql {
namespace {

/// table2 is a link to the table of the same name in a file beside; HERE is a table of the linking file.
class LinkedStepTest : public testing::Test {
 protected:
    void SetUp() override {
        SKIP_WITHOUT_CORPUS();
        linkedFile_ = folder_.Copy(jet::test::CorpusFile("linkee2.mdb"));
        database_ = jet::Database::Open(folder_.Copy(jet::test::CorpusFile("linked.mdb")));
        Do(u"CREATE TABLE HERE (ID LONG CONSTRAINT K PRIMARY KEY, NAME TEXT(50))");
        Do(u"INSERT INTO HERE VALUES (1, 'here')");
    }

    void Do(TextView statement) const { Execute(*database_, statement); }
    [[nodiscard]] int ErrorOfAction(TextView statement) const {
        return jet::test::ErrorNumber([&] { Do(statement); });
    }
    /// What the other file holds.
    [[nodiscard]] Lines There() const {
        return Rows(jet::Database::Open(linkedFile_, jet::OpenMode::ReadOnly),
                    "SELECT filed2 FROM table2 ORDER BY ID");
    }

    jet::test::TempFolder folder_;
    std::filesystem::path linkedFile_;
    std::shared_ptr<jet::Database> database_;
};

TEST_F(LinkedStepTest, AStatementAloneChangesTheOtherFile) {
    Do(u"UPDATE table2 SET filed2 = 'one'");
    EXPECT_EQ(There(), Lines{"'one'"});
    Do(u"INSERT INTO table2 (filed2) VALUES ('two')");
    EXPECT_EQ(There(), (Lines{"'one'", "'two'"}));
    Do(u"DELETE FROM table2 WHERE filed2 = 'one'");
    EXPECT_EQ(There(), Lines{"'two'"});
}

TEST_F(LinkedStepTest, WithinAStepItIsRefusedAndTheStepGoesOn) {
    {
        jet::Step step = database_->Begin();
        Do(u"INSERT INTO HERE VALUES (2, 'more')");
        for (const TextView statement :
             {u"UPDATE table2 SET filed2 = 'one'", u"INSERT INTO table2 (filed2) VALUES ('two')",
              u"DELETE FROM table2",
              u"UPDATE HERE INNER JOIN table2 ON HERE.ID = table2.ID SET NAME = 'x', filed2 = 'x'"}) {
            EXPECT_EQ(ErrorOfAction(statement), error::kOperationNotSupported);
        }
        // What only reads there is no obstacle.
        Do(u"INSERT INTO HERE SELECT ID + 10, filed2 FROM table2");
        step.Commit();
    }
    EXPECT_EQ(There(), Lines{"'ciao brutto'"});
    EXPECT_EQ(Rows(database_, "SELECT NAME FROM HERE ORDER BY ID"),
              (Lines{"'here'", "'more'", "'ciao brutto'"}));
}

TEST_F(LinkedStepTest, OneStatementMayChangeBothFiles) {
    Do(u"UPDATE HERE INNER JOIN table2 ON HERE.ID = table2.ID SET NAME = filed2, filed2 = NAME");
    EXPECT_EQ(There(), Lines{"'here'"});
    EXPECT_EQ(Rows(database_, "SELECT NAME FROM HERE"), Lines{"'ciao brutto'"});
}

// The engine itself leaves that to its callers.
TEST_F(LinkedStepTest, WhatIsChangedThereStaysWhenTheStepHereIsDropped) {
    const auto linked = database_->OpenTable(u"table2");
    {
        const jet::Step step = database_->Begin();
        const jet::ColumnChange change{linked->FindColumn(u"filed2"), Text(u"one")};
        linked->Update(linked->Scan().NextId().value(), {&change, 1});
    }
    EXPECT_EQ(There(), Lines{"'one'"});
}

}  // namespace
}  // namespace quardele::sql
