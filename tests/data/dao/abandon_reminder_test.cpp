// Giving up a reminder: the last visit of a line of the joined list is set to 1 January 2100.
#include <string>

#include <basic/conversion.h>

#include "../jet/support.h"
#include "dao_test.h"

namespace quardele::dao {
namespace {

class AbandonReminderTest : public DaoTest {
 protected:
    /// What the list's form does for one line.
    static void Abandon(Recordset& list, TextView registration, TextView work) {
        list.FindFirst(u"TVEH_Immat ='" + Text(registration) + u"' and TVEH_DETAIL_TYPTRAV = '" + Text(work) +
                       u"'");
        if (!list.NoMatch()) {
            list.Edit();
            list.SetValue(u"TVEH_DETAIL_datvis", basic::CDate(u"01/01/2100"));
            list.Update();
        }
    }
};

TEST_F(AbandonReminderTest, IsSeenByAnIndependentProgramAndChangesNothingElse) {
    SKIP_WITHOUT_MDB_EXPORT();
    const auto file = Installed().File(kData);
    std::string expected = jet::test::MdbExport(file, "TVEH_DETAIL");
    const auto list = OpenDynaset(DueBefore(u"12/31/2026"));
    Abandon(*list, u"CF-974-BL", u"TAC");
    const std::string line = "\n\"CF-974-BL\",\"TAC\",\"2024-08-07 00:00:00\",24\n";
    const std::size_t place = expected.find(line);
    ASSERT_NE(place, std::string::npos);
    expected.replace(place, line.size(), "\n\"CF-974-BL\",\"TAC\",\"2100-01-01 00:00:00\",24\n");
    EXPECT_EQ(jet::test::MdbExport(file, "TVEH_DETAIL"), expected);
}

TEST_F(AbandonReminderTest, LineStaysInTheListUntilTheNextQuery) {
    const auto list = OpenDynaset(DueBefore(u"12/31/2026"));
    list->MoveLast();
    const std::size_t count = list->RecordCount();
    Abandon(*list, u"CF-974-BL", u"TAC");
    EXPECT_EQ(list->RowCount(), count);
    EXPECT_EQ(list->Value(u"TVEH_DETAIL_DATVIS"), Variant(basic::DateOf(2100, 1, 1)));
    EXPECT_EQ(list->Value(u"DatePrev"), Variant(basic::DateOf(2102, 1, 1)));
    list->Requery();
    EXPECT_EQ(list->RowCount(), count - 1);
    list->FindFirst(u"TVEH_Immat ='CF-974-BL' and TVEH_DETAIL_TYPTRAV = 'TAC'");
    EXPECT_TRUE(list->NoMatch());
}

TEST_F(AbandonReminderTest, UnknownLineWritesNothing) {
    const auto list = OpenDynaset(DueBefore(u"12/31/2026"));
    Abandon(*list, u"AUCUN", u"TAC");
    EXPECT_TRUE(list->NoMatch());
    EXPECT_EQ(list->EditMode(), EditMode::None);
    EXPECT_EQ(ErrorOf([&] { (void)list->LastModified(); }), error::kNoCurrentRecord);
}

}  // namespace
}  // namespace quardele::dao
