// Who must be alone in a data file: one who changes structures, and one who opens it exclusively. The others
// are processes of this program, and programs that know the lock file only.

#include "child_action.h"
#include "foreign_lock.h"
#include "locks/lock_bytes.h"
#include "locks/lock_file.h"
#include "locks/lock_wait.h"
#include "support.h"
#include "workshop.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using quardele::test::Process;

constexpr TextView kTable = u"VEHICLES";

/// Has the file of its argument open.
const ChildAction kUse("use", [](const ChildAction::Arguments& arguments) {
    LockPatience() = std::chrono::milliseconds(50);
    const auto database = Database::Open(PathOf(arguments[0]));
    quardele::test::Stay();
});

/// The same, alone.
const ChildAction kUseAlone("use alone", [](const ChildAction::Arguments& arguments) {
    const auto database = Database::Open(PathOf(arguments[0]), OpenMode::Exclusive);
    quardele::test::Stay();
});

/// Takes the first free place in the lock file of its argument, as the original engine does.
const ChildAction kUseAsOthersDo("use as others do", [](const ChildAction::Arguments& arguments) {
    const fs::path locks = LockFile::PathFor(PathOf(arguments[0]));
    std::uint64_t place = 0;
    while (!LockByte(locks, lock_bytes::kUsers + place)) {
        if (++place == lock_bytes::kMostUsers) {
            throw basic::RuntimeError(basic::error::kFileInUse);
        }
    }
    quardele::test::Stay();
});

class OtherUsers : public testing::Test {
 protected:
    void SetUp() override { LockPatience() = std::chrono::milliseconds(50); }
    void TearDown() override { LockPatience() = usual_; }

    [[nodiscard]] Process Another(const ChildAction& user) const { return user.Keep({Argument(file_)}); }
    /// Whether such a user comes in now.
    [[nodiscard]] bool CanCome(const ChildAction& user) const { return user.Run({Argument(file_)}) == 0; }
    [[nodiscard]] int OpenError(OpenMode mode) const {
        return ErrorNumber([&] { static_cast<void>(Database::Open(file_, mode)); });
    }
    static void AddColumn(Database& database, const Text& name) {
        Column column;
        column.name = name;
        column.type = ColumnType::Long;
        database.AddColumn(kTable, column);
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_ = MakeWorkshop(folder_.Path(), 20);
};

class StructureBesideOthers : public OtherUsers, public testing::WithParamInterface<int> {
 protected:
    [[nodiscard]] int ChangeError(OpenMode mode = OpenMode::Shared) const {
        const auto database = Database::Open(file_, mode);
        return ErrorNumber([&] { Change(*database); });
    }

 private:
    static void Change(Database& database) {
        Column rules;
        rules.required = true;
        switch (GetParam()) {
            case 0:
                return AddColumn(database, u"MORE");
            case 1:
                return database.CreateIndex(kTable, {.name = u"MORE", .columns = {{.column = u"KM"}}});
            case 2:
                return database.SetColumnRules(kTable, u"KM", rules);
            default:
                return database.DropTable(kTable);
        }
    }
};

TEST_P(StructureBesideOthers, IsNotChangedWhileAnotherProcessIsInTheFile) {
    Process other = Another(kUse);
    EXPECT_EQ(ChangeError(), basic::error::kTableInUse);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(ChangeError(), 0);
}

TEST_P(StructureBesideOthers, IsNotChangedWhileAProgramOfAnotherMakeIsInTheFile) {
    Process other = Another(kUseAsOthersDo);
    EXPECT_EQ(ChangeError(), basic::error::kTableInUse);
    other.Kill();
    EXPECT_EQ(ChangeError(), 0);
}

TEST_P(StructureBesideOthers, IsChangedByAnExclusiveOpener) {
    EXPECT_EQ(ChangeError(OpenMode::Exclusive), 0);
}

INSTANTIATE_TEST_SUITE_P(Changes, StructureBesideOthers, testing::Range(0, 4));

TEST_F(OtherUsers, ARefusedChangeOfStructureChangesNothingAndKeepsNobodyOut) {
    const auto before = ContentsOf(file_);
    Process other = Another(kUse);
    const auto database = Database::Open(file_);
    EXPECT_EQ(ErrorNumber([&] { AddColumn(*database, u"MORE"); }), basic::error::kTableInUse);
    EXPECT_TRUE(CanCome(kUse));
    EXPECT_TRUE(CanCome(kUseAsOthersDo));
    EXPECT_EQ(database->OpenTable(kTable)->FindColumn(u"MORE"), -1);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(ContentsOf(file_), before);
}

TEST_F(OtherUsers, ANewTableIsMadeBesideThem) {
    Process other = Another(kUse);
    Process foreigner = Another(kUseAsOthersDo);
    TableDesign design;
    design.name = u"NEW";
    design.columns.emplace_back();
    design.columns[0].name = u"A";
    design.columns[0].type = ColumnType::Long;
    EXPECT_EQ(ErrorNumber([&] { Database::Open(file_)->CreateTable(design); }), 0);
    EXPECT_EQ(other.Wait(), 0);
}

// What this process has open is known table by table.
TEST_F(OtherUsers, DatabasesOfThisProcessCountByTheTablesThatTheyHaveOpen) {
    const auto mine = Database::Open(file_);
    const auto other = Database::Open(file_);
    EXPECT_EQ(ErrorNumber([&] { AddColumn(*mine, u"A"); }), 0);
    const auto table = other->OpenTable(kTable);
    EXPECT_EQ(ErrorNumber([&] { AddColumn(*mine, u"B"); }), basic::error::kTableInUse);
}

TEST_F(OtherUsers, NobodyComesInBetweenAChangeOfStructureAndTheEndOfItsStep) {
    const auto database = Database::Open(file_);
    {
        Step step = database->Begin();
        AddColumn(*database, u"A");
        AddColumn(*database, u"B");
        EXPECT_FALSE(CanCome(kUse));
        EXPECT_FALSE(CanCome(kUseAsOthersDo));
        step.Commit();
    }
    EXPECT_TRUE(CanCome(kUse));
    EXPECT_TRUE(CanCome(kUseAsOthersDo));
    EXPECT_GE(database->OpenTable(kTable)->FindColumn(u"B"), 0);
}

TEST_F(OtherUsers, AnExclusiveOpenerOfAnotherProcessIsToldApart) {
    Process other = Another(kUseAlone);
    EXPECT_EQ(OpenError(OpenMode::Shared), basic::error::kOpenExclusive);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), basic::error::kOpenExclusive);
    EXPECT_EQ(OpenError(OpenMode::Exclusive), basic::error::kFileInUse);
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(OpenError(OpenMode::Shared), 0);
}

TEST_F(OtherUsers, AnExclusiveOpenerLeavesNoPlaceToProgramsOfAnotherMake) {
    {
        const auto database = Database::Open(file_, OpenMode::Exclusive);
        EXPECT_FALSE(CanCome(kUseAsOthersDo));
        // It writes and changes structures all the same.
        AddColumn(*database, u"MORE");
        const auto table = database->OpenTable(kTable);
        UpdateRow(*table, RowAt(*table, 3), {{u"MORE", std::int32_t{5}}});
        Step step = database->Begin();
        UpdateRow(*table, RowAt(*table, 4), {{u"MORE", std::int32_t{6}}});
        step.Commit();
        EXPECT_FALSE(CanCome(kUseAsOthersDo));
    }
    EXPECT_FALSE(fs::exists(LockFile::PathFor(file_)));
    EXPECT_TRUE(CanCome(kUseAsOthersDo));
}

TEST_F(OtherUsers, AProgramOfAnotherMakeKeepsExclusiveOpenersOutAndNobodyElse) {
    Process other = Another(kUseAsOthersDo);
    EXPECT_EQ(OpenError(OpenMode::Exclusive), basic::error::kFileInUse);
    EXPECT_EQ(OpenError(OpenMode::Shared), 0);
    EXPECT_EQ(OpenError(OpenMode::ReadOnly), 0);
    other.Kill();
    EXPECT_EQ(OpenError(OpenMode::Exclusive), 0);
}

}  // namespace
}  // namespace quardele::jet::test
