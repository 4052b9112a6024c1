// Rows that a change of another row takes along, while somebody else has them.

#include "child_action.h"
#include "index_check.h"
#include "locks/lock_wait.h"
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;
using quardele::test::Argument;
using quardele::test::ChildAction;
using quardele::test::PathOf;
using quardele::test::Process;

constexpr std::int32_t kParent = 700;
constexpr std::int32_t kFirstChild = 7000;
constexpr int kChildren = 5;

[[nodiscard]] RowId ChildAt(const Table& children, int position) {
    for (const RowId row : AllRows(children)) {
        if (Get(children, row, u"id") == Variant(kFirstChild + position)) {
            return row;
        }
    }
    throw basic::RuntimeError(basic::error::kRecordDeleted);
}

/// Has locked a child: file, its position.
const ChildAction kLockChild("lock a child", [](const ChildAction::Arguments& arguments) {
    const auto children = Database::Open(PathOf(arguments[0]))->OpenTable(u"Table1");
    const RowLock lock = children->Lock(ChildAt(*children, std::stoi(arguments[1])));
    quardele::test::Stay();
});

/// Table1 refers to Table2, whose rows take theirs with them when they go, and to Table3, whose keys take
/// theirs with them when they change.
class CascadeLock : public testing::Test {
 protected:
    void SetUp() override {
        SKIP_WITHOUT_CORPUS();
        LockPatience() = std::chrono::milliseconds(60);
        file_ = folder_.Copy(CorpusFile("indexV2000.mdb"));
        database_ = Database::Open(file_);
        children_ = database_->OpenTable(u"Table1");
        deleting_ = database_->OpenTable(u"Table2");
        changing_ = database_->OpenTable(u"Table3");
        deletingParent_ = Add(*deleting_, {{u"id", kParent}});
        changingParent_ = Add(*changing_, {{u"id", kParent}});
        for (std::int32_t i = 0; i < kChildren; ++i) {
            Add(*children_, {{u"id", kFirstChild + i}, {u"otherfk1", kParent}, {u"otherfk2", kParent}});
        }
    }
    void TearDown() override { LockPatience() = usual_; }

    [[nodiscard]] Process Locker(int child) const {
        return kLockChild.Keep({Argument(file_), std::to_string(child)});
    }
    [[nodiscard]] int DeleteError() const {
        return ErrorNumber([&] { deleting_->Delete(deletingParent_); });
    }
    [[nodiscard]] int ChangeError(std::int32_t key) const {
        return ErrorNumber([&] { Set(*changing_, changingParent_, u"id", key); });
    }
    /// The children that refer to such a key.
    [[nodiscard]] int Referring(const Text& column, std::int32_t key) const {
        const auto rows = AllRows(*children_);
        return static_cast<int>(std::count_if(rows.begin(), rows.end(), [&](RowId row) {
            return Get(*children_, row, column) == Variant(key);
        }));
    }
    void ExpectUntouched() const {
        database_->Refresh();
        EXPECT_TRUE(deleting_->Fetch(deletingParent_).has_value());
        EXPECT_EQ(Get(*changing_, changingParent_, u"id"), Variant(kParent));
        EXPECT_EQ(Referring(u"otherfk1", kParent), kChildren);
        EXPECT_EQ(Referring(u"otherfk2", kParent), kChildren);
        EXPECT_EQ(FaultsOf(*children_), "");
        EXPECT_EQ(FaultsOf(*deleting_), "");
        EXPECT_EQ(FaultsOf(*changing_), "");
    }

    std::chrono::milliseconds usual_ = LockPatience();
    TempFolder folder_;
    fs::path file_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> children_;
    std::shared_ptr<Table> deleting_;
    std::shared_ptr<Table> changing_;
    RowId deletingParent_;
    RowId changingParent_;
};

TEST_F(CascadeLock, AChildThatAnotherProcessEditsKeepsItsParent) {
    Process other = Locker(3);
    EXPECT_EQ(DeleteError(), basic::error::kRecordLocked);
    ExpectUntouched();
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(DeleteError(), 0);
    EXPECT_EQ(Referring(u"otherfk1", kParent), 0);
}

TEST_F(CascadeLock, AChildThatAnotherProcessEditsKeepsItsParentsKey) {
    Process other = Locker(3);
    EXPECT_EQ(ChangeError(701), basic::error::kRecordLocked);
    ExpectUntouched();
    EXPECT_EQ(other.Wait(), 0);
    EXPECT_EQ(ChangeError(701), 0);
    EXPECT_EQ(Referring(u"otherfk2", 701), kChildren);
}

TEST_F(CascadeLock, AnotherDatabaseOfThisProcessIsToldApart) {
    const auto other = Database::Open(file_)->OpenTable(u"Table1");
    RowLock lock = other->Lock(ChildAt(*other, 2));
    EXPECT_EQ(DeleteError(), basic::error::kLockedHere);
    EXPECT_EQ(ChangeError(701), basic::error::kLockedHere);
    ExpectUntouched();
    lock.Release();
    EXPECT_EQ(ChangeError(701), 0);
}

TEST_F(CascadeLock, ARowOfOnesOwnIsNoObstacle) {
    const RowLock lock = children_->Lock(ChildAt(*children_, 2));
    EXPECT_EQ(ChangeError(701), 0);
    EXPECT_EQ(DeleteError(), 0);
}

TEST_F(CascadeLock, ARefusalWithinAStepUndoesItsOwnChangeOnly) {
    Process other = Locker(3);
    {
        Step step = database_->Begin();
        const RowId more = Add(*changing_, {{u"id", std::int32_t{900}}});
        EXPECT_EQ(DeleteError(), basic::error::kRecordLocked);
        EXPECT_EQ(ChangeError(701), basic::error::kRecordLocked);
        EXPECT_EQ(Get(*changing_, more, u"id"), Variant(std::int32_t{900}));
        step.Commit();
    }
    ExpectUntouched();
    EXPECT_EQ(ErrorNumber([&] {
                  Add(*changing_, {{u"id", std::int32_t{900}}});
              }),
              basic::error::kDuplicateKey);
}

// Until the end of the step nobody else may edit what it has taken along.
TEST_F(CascadeLock, RowsTakenAlongStayLockedToTheEndOfTheStep) {
    const auto other = Database::Open(file_)->OpenTable(u"Table1");
    const RowId child = ChildAt(*other, 2);
    const auto lockError = [&] { return ErrorNumber([&] { static_cast<void>(other->Lock(child)); }); };
    {
        Step step = database_->Begin();
        EXPECT_EQ(ChangeError(701), 0);
        EXPECT_EQ(lockError(), basic::error::kLockedHere);
        step.Commit();
    }
    EXPECT_EQ(lockError(), 0);
}

}  // namespace
}  // namespace quardele::jet::test
