// Rows of one page that grow into what others have left behind.

#include <algorithm>

#include "pages/data_page_editor.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet::test {
namespace {

class DataPageEditing : public testing::Test {
 protected:
    void SetUp() override {
        Page& page = pages_.Append();
        number_ = page.number;
        DataPageEditor::Initialise(page, pages_.Layout(), kGlobalMapPage);
    }
    /// Fills the page: a row, one that will have moved, and one behind them that takes all the rest.
    void FillPage(std::size_t movedLength) {
        DataPageEditor editor(pages_, number_);
        ASSERT_TRUE(editor.Add(0, kNeighbour).has_value());
        ByteString moved(movedLength, 0xEE);
        std::copy(kPointer.begin(), kPointer.end(), moved.begin());
        ASSERT_TRUE(editor.Add(slot::kMoved, moved).has_value());
        ASSERT_TRUE(editor.Add(0, ByteString(editor.FreeBytes() - 2, 0x33)).has_value());
        ASSERT_EQ(editor.FreeBytes(), 0U);
        editor.Store();
    }
    [[nodiscard]] ByteString Row(int slotNumber) const {
        const PagePtr page = pages_.Read(number_);
        const auto bytes = DataPage(*page, pages_.Layout()).Row(slotNumber).Span();
        return {bytes.begin(), bytes.end()};
    }
    [[nodiscard]] std::uint16_t FlagsOf(int slotNumber) const {
        return DataPage(*pages_.Read(number_), pages_.Layout()).Flags(slotNumber);
    }

    const ByteString kNeighbour = ByteString(20, 0x11);
    const ByteString kPointer = {0x07, 0x65, 0x43, 0x21};
    TempFolder folder_;
    std::shared_ptr<Table> table_ =
        Database::Open(folder_.Copy(SampleFile("SIGNETS.MDB")))->OpenTable(u"MSysObjects");
    Transaction pages_{table_->Impl().Owner().Cache()};
    std::uint32_t number_ = 0;
};

// Other programs write the pointer over the row's first bytes and leave the rest of it where it was.
TEST_F(DataPageEditing, AMovedRowKeepsItsPointerWhenANeighbourTakesWhatItHasLeftBehind) {
    constexpr std::size_t kLeftBehind = 30;
    FillPage(kRowPointerSize + kLeftBehind);
    const ByteString behind = Row(2);
    const ByteString grown(kNeighbour.size() + kLeftBehind, 0x22);
    DataPageEditor editor(pages_, number_);
    ASSERT_TRUE(editor.Replace(0, 0, grown));
    editor.Store();
    EXPECT_EQ(Row(0), grown);
    EXPECT_EQ(Row(1), kPointer);
    EXPECT_EQ(FlagsOf(1), slot::kMoved);
    EXPECT_EQ(Row(2), behind);
}

TEST_F(DataPageEditing, ARowThatNeedsMoreThanAllJunkIsRefusedAndNothingChanges) {
    constexpr std::size_t kLeftBehind = 30;
    FillPage(kRowPointerSize + kLeftBehind);
    const PagePtr page = pages_.Read(number_);
    const ByteString before(page->View().Span().begin(), page->View().Span().end());
    DataPageEditor editor(pages_, number_);
    EXPECT_FALSE(editor.Replace(0, 0, ByteString(kNeighbour.size() + kLeftBehind + 1)));
    editor.Store();
    const auto after = pages_.Read(number_)->View().Span();
    EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin(), after.end()));
}

}  // namespace
}  // namespace quardele::jet::test
