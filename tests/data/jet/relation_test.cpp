// Rows of tables that an enforced relationship binds together.

#include "index_check.h"
#include "opened_table.h"

namespace quardele::jet::test {
namespace {

using basic::Null;

constexpr int kNoParent = 3201;
constexpr int kHasChildren = 3200;

/// Table1 refers to Table2, whose rows take theirs with them when they go, and to Table3, whose keys take
/// theirs with them when they change.
class Relation : public testing::Test {
 protected:
    void SetUp() override {
        SKIP_WITHOUT_CORPUS();
        database_ = Database::Open(folder_.Copy(CorpusFile("indexV2000.mdb")));
        child_ = database_->OpenTable(u"Table1");
        deleting_ = database_->OpenTable(u"Table2");
        changing_ = database_->OpenTable(u"Table3");
    }

    void ExpectSound() const {
        EXPECT_EQ(FaultsOf(*child_), "");
        EXPECT_EQ(FaultsOf(*deleting_), "");
        EXPECT_EQ(FaultsOf(*changing_), "");
    }
    [[nodiscard]] std::vector<RowId> ChildrenOf(const Text& column, const Variant& key) const {
        std::vector<RowId> rows;
        for (const RowId row : AllRows(*child_)) {
            if (Get(*child_, row, column) == key) {
                rows.push_back(row);
            }
        }
        return rows;
    }

    TempFolder folder_;
    std::shared_ptr<Database> database_;
    std::shared_ptr<Table> child_;
    std::shared_ptr<Table> deleting_;
    std::shared_ptr<Table> changing_;
};

TEST_F(Relation, AChildNeedsItsParent) {
    const RowId row = AllRows(*child_)[0];
    EXPECT_EQ(ErrorNumber([&] { Set(*child_, row, u"otherfk1", std::int32_t{12345}); }), kNoParent);
    EXPECT_EQ(ErrorNumber([&] {
                  Add(*child_, {{u"id", std::int32_t{990}}, {u"otherfk1", std::int32_t{12345}}});
              }),
              kNoParent);
    const RowId parent = Add(*deleting_, {{u"id", std::int32_t{12345}}});
    EXPECT_EQ(Get(*deleting_, parent, u"id"), Variant(std::int32_t{12345}));
    Set(*child_, row, u"otherfk1", std::int32_t{12345});
    // Who refers to nothing needs nobody.
    const RowId alone = Add(*child_, {{u"id", std::int32_t{991}}});
    EXPECT_TRUE(Get(*child_, alone, u"otherfk1").IsNull());
    ExpectSound();
}

TEST_F(Relation, ChildrenGoWithTheirParentOrKeepIt) {
    const RowId parent = Add(*deleting_, {{u"id", std::int32_t{700}}});
    const RowId other = Add(*changing_, {{u"id", std::int32_t{800}}});
    for (std::int32_t i = 0; i < 20; ++i) {
        Add(*child_, {{u"id", 7000 + i}, {u"otherfk1", std::int32_t{700}}, {u"otherfk2", std::int32_t{800}}});
    }
    const std::size_t count = child_->RowCount();
    EXPECT_EQ(ErrorNumber([&] { changing_->Delete(other); }), kHasChildren);
    EXPECT_TRUE(changing_->Fetch(other).has_value());
    deleting_->Delete(parent);
    EXPECT_EQ(child_->RowCount(), count - 20);
    EXPECT_EQ(ChildrenOf(u"otherfk1", std::int32_t{700}).size(), 0u);
    changing_->Delete(other);
    ExpectSound();
}

TEST_F(Relation, ChildrenFollowANewKeyOrKeepTheOldOne) {
    const RowId parent = Add(*deleting_, {{u"id", std::int32_t{700}}});
    const RowId other = Add(*changing_, {{u"id", std::int32_t{800}}});
    const RowId child = Add(
        *child_,
        {{u"id", std::int32_t{7000}}, {u"otherfk1", std::int32_t{700}}, {u"otherfk2", std::int32_t{800}}});
    EXPECT_EQ(ErrorNumber([&] { Set(*deleting_, parent, u"id", std::int32_t{701}); }), kHasChildren);
    Set(*changing_, other, u"id", std::int32_t{801});
    EXPECT_EQ(Get(*child_, child, u"otherfk2"), Variant(std::int32_t{801}));
    EXPECT_EQ(Get(*child_, child, u"otherfk1"), Variant(std::int32_t{700}));
    ExpectSound();
}

TEST_F(Relation, ARefusalInTheMiddleOfAStepUndoesItsOwnChangesOnly) {
    const RowId other = Add(*changing_, {{u"id", std::int32_t{800}}});
    Step step = database_->Begin();
    Add(*child_, {{u"id", std::int32_t{7000}}, {u"otherfk2", std::int32_t{800}}});
    EXPECT_EQ(ErrorNumber([&] { changing_->Delete(other); }), kHasChildren);
    Add(*child_, {{u"id", std::int32_t{7001}}, {u"otherfk2", std::int32_t{800}}});
    step.Commit();
    EXPECT_EQ(ChildrenOf(u"otherfk2", std::int32_t{800}).size(), 2u);
    ExpectSound();
}

}  // namespace
}  // namespace quardele::jet::test
