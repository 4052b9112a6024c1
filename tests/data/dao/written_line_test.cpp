// What stands in the way of showing a line of a join after it was written does not look like a failure to
// write it.
#include "dao_test.h"

namespace quardele::dao {
namespace {

class WrittenLineTest : public DaoTest {
 protected:
    /// Two orders of one group, beside the group's only remark.
    void SetUp() override {
        for (const char* statement :
             {"CREATE TABLE TCOM (ID LONG CONSTRAINT PK PRIMARY KEY, G LONG, N LONG)",
              "CREATE TABLE TREM (RID LONG CONSTRAINT PK PRIMARY KEY, RG LONG)",
              "INSERT INTO TCOM VALUES (1, 7, 0)", "INSERT INTO TCOM VALUES (2, 7, 0)",
              "INSERT INTO TREM VALUES (1, 7)"}) {
            ExecuteElsewhere(statement);
        }
    }
};

TEST_F(WrittenLineTest, UpdateSucceedsAlthoughTheOtherPartOfTheLineIsDeletedMeanwhile) {
    const auto rows = OpenDynaset(u"SELECT ID, N, RID FROM TCOM INNER JOIN TREM ON TCOM.G = TREM.RG");
    rows->Edit();
    rows->SetValue(u"N", std::int32_t{5});
    ExecuteElsewhere("DELETE FROM TREM");
    EXPECT_EQ(ErrorOf([&] { rows->Update(); }), 0);
    EXPECT_EQ(rows->EditMode(), EditMode::None);
    EXPECT_EQ(rows->Value(u"N"), Variant(std::int32_t{5}));
    EXPECT_EQ(ErrorOf([&] { (void)rows->Value(u"RID"); }), error::kRecordDeleted);
    rows->MoveLast();
    rows->SetBookmark(rows->LastModified());
    EXPECT_EQ(rows->Value(u"N"), Variant(std::int32_t{5}));
}

}  // namespace
}  // namespace quardele::dao
