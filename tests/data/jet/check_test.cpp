// The check of whole files: sound ones are clean, and each kind of damage is named.

#include <jet/check.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <random>

#include <gmock/gmock.h>

#include "pages/data_page.h"
#include "pages/usage_map.h"
#include "rows/long_value.h"
#include "rows/row_codec.h"
#include "support.h"
#include "table_impl.h"

namespace quardele::jet {

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << basic::ToUtf8(Describe(fault, FaultLanguage::English));
}

}  // namespace quardele::jet

namespace quardele::jet::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = 4096;

using Bytes = std::vector<std::uint8_t>;

bool Has(const std::vector<Fault>& findings, FaultCode code) {
    return std::any_of(findings.begin(), findings.end(),
                       [code](const Fault& fault) { return fault.code == code; });
}

std::vector<Fault> FaultsIn(const std::vector<Fault>& findings) {
    std::vector<Fault> faults;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(faults),
                 [](const Fault& fault) { return !fault.note; });
    return faults;
}

TEST(CheckTest, RealFilesAreClean) {
    SKIP_WITHOUT_CORPUS();
    for (const fs::path& file : CorpusFiles()) {
        EXPECT_THAT(FaultsIn(CheckFile(file)), testing::IsEmpty()) << file;
    }
}

TEST(CheckTest, TheSampleIsClean) {
    for (const fs::path& file : SampleFiles()) {
        EXPECT_THAT(CheckFile(file), testing::IsEmpty()) << file;
    }
}

TEST(CheckTest, ANewFileIsCleanWithoutNotes) {
    const TempFolder folder;
    const fs::path file = folder.Path() / "new.mdb";
    static_cast<void>(Database::Create(file));
    EXPECT_THAT(CheckFile(file), testing::IsEmpty());
}

TEST(CheckTest, LostPagesAndWrongRowCountsAreNotes) {
    SKIP_WITHOUT_CORPUS();
    const auto findings = CheckFile(CorpusFile("common1V2000.mdb"));
    EXPECT_FALSE(HasFaults(findings));
    EXPECT_TRUE(Has(findings, FaultCode::PageLost));
    EXPECT_TRUE(Has(findings, FaultCode::RowCount));
}

TEST(CheckTest, AMissingFileIsAnError) {
    EXPECT_EQ(ErrorNumber([] { static_cast<void>(CheckFile("no such file.mdb")); }), 3024);
}

TEST(CheckTest, ProgressGoesUpToTheNumberOfPages) {
    std::size_t calls = 0;
    std::size_t last = 0;
    static_cast<void>(CheckFile(SampleFile("DATA/talmeon.mdb"), [&](std::size_t done, std::size_t total) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, total);
        EXPECT_EQ(total, fs::file_size(SampleFile("DATA/talmeon.mdb")) / kPage);
        last = done;
        ++calls;
    }));
    EXPECT_GT(calls, 0U);
}

TEST(CheckTest, FindingsAreDescribedInBothLanguages) {
    const Fault fault{FaultCode::IndexMissing, false, 12, u"T", u"I", u"12:3"};
    EXPECT_EQ(Describe(fault, FaultLanguage::English),
              u"page 12, table T, index or column I: row 12:3 is missing from the index");
    EXPECT_EQ(Describe(fault, FaultLanguage::French),
              u"page 12, table T, index ou colonne I : la ligne 12:3 manque dans l'index");
}

/// A copy of a file whose bytes are changed, and what the check says of it.
class Damage : public testing::Test {
 protected:
    void SetUp() override { SKIP_WITHOUT_CORPUS(); }

    void Load(const std::string& name) {
        file_ = folder_.Copy(CorpusFile(name));
        bytes_ = ReadBytes(file_);
    }

    [[nodiscard]] std::vector<Fault> Check() const {
        WriteBytes(file_, bytes_);
        return CheckFile(file_);
    }

    [[nodiscard]] std::shared_ptr<Table> Open(TextView table) const {
        return Database::Open(file_, OpenMode::ReadOnly)->OpenTable(table);
    }

    [[nodiscard]] std::uint8_t& At(std::uint32_t page, std::size_t offset) {
        return bytes_.at(page * kPage + offset);
    }
    void Put16(std::uint32_t page, std::size_t offset, std::uint16_t value) {
        StoreLittle(std::span(bytes_).subspan(page * kPage + offset), value);
    }
    void Put32(std::uint32_t page, std::size_t offset, std::uint32_t value) {
        StoreLittle(std::span(bytes_).subspan(page * kPage + offset), value);
    }
    [[nodiscard]] std::uint16_t Get16(std::uint32_t page, std::size_t offset) const {
        return ByteView(bytes_, page).U16(page * kPage + offset);
    }

    /// Where the bytes of a slot start on its page.
    [[nodiscard]] std::size_t RowStart(RowId slot) const {
        return Get16(slot.page, kJet4.data.slots + slot.slot * std::size_t{2}) & slot::kOffsetMask;
    }
    /// Clears or sets the bit of a page in an inline map.
    void SetMapBit(RowId map, std::uint32_t page, bool value) {
        const std::size_t at = RowStart(map);
        const std::uint32_t first = ByteView(bytes_, map.page).U32(map.page * kPage + at + 1);
        std::uint8_t& byte = At(map.page, at + usage_map::kInlineHeader + (page - first) / 8);
        const auto bit = static_cast<std::uint8_t>(1U << (page - first) % 8);
        byte = static_cast<std::uint8_t>(value ? byte | bit : byte & ~bit);
    }

    TempFolder folder_;
    fs::path file_;
    Bytes bytes_;
};

constexpr RowId kFreePages{.page = kGlobalMapPage, .slot = 0};
// A tree of a root and two leaves.
constexpr std::uint32_t kRoot = 29;
constexpr std::uint32_t kFirstLeaf = 32;
constexpr std::uint32_t kSecondLeaf = 33;

TEST_F(Damage, WrongFreeSpaceIsFound) {
    Load("delV2000.mdb");
    const std::uint32_t page = Open(u"Table")->Impl().DataPages()->front();
    Put16(page, kJet4.data.freeBytes, static_cast<std::uint16_t>(Get16(page, kJet4.data.freeBytes) + 1));
    EXPECT_TRUE(Has(Check(), FaultCode::FreeBytes));
}

TEST_F(Damage, OverlappingRowsAreFound) {
    Load("compIndexV2000.mdb");
    const std::uint32_t page = Open(u"Table1")->Impl().DataPages()->front();
    Put16(page, kJet4.data.slots + 2, static_cast<std::uint16_t>(Get16(page, kJet4.data.slots) + 1));
    EXPECT_TRUE(Has(Check(), FaultCode::Row));
}

TEST_F(Damage, ARowThatDoesNotHoldTogetherIsFound) {
    Load("compIndexV2000.mdb");
    const RowId row = Open(u"Table1")->Scan().Next()->Id();
    Put16(row.page, RowStart(row), 200);
    EXPECT_TRUE(Has(Check(), FaultCode::Row));
}

TEST_F(Damage, AWrongRowCountIsNoted) {
    Load("delV2000.mdb");
    Put32(Open(u"Table")->Impl().Def().page, kJet4.def.rowCount, 9);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::RowCount));
    EXPECT_FALSE(HasFaults(findings));
}

TEST_F(Damage, AValueThatDisagreesWithItsIndexIsFoundFromBothSides) {
    Load("compIndexV2000.mdb");
    At(kFirstLeaf, kJet4.index.entries + 2) ^= 1;
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::IndexMissing));
    EXPECT_TRUE(Has(findings, FaultCode::IndexExtra));
}

TEST_F(Damage, ARowThatIsDeletedBehindTheBackOfItsIndexIsFound) {
    Load("compIndexV2000.mdb");
    const RowId row = Open(u"Table1")->Scan().Next()->Id();
    Put16(row.page, kJet4.data.slots + row.slot * std::size_t{2},
          static_cast<std::uint16_t>(RowStart(row) | slot::kDeleted));
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::IndexExtra));
    EXPECT_FALSE(Has(findings, FaultCode::IndexMissing));
}

TEST_F(Damage, BrokenLinksBetweenLeavesAreFoundInBothDirections) {
    Load("compIndexV2000.mdb");
    Put32(kFirstLeaf, kJet4.index.next, 0);
    EXPECT_TRUE(Has(Check(), FaultCode::IndexLinks));
    Load("compIndexV2000.mdb");
    Put32(kSecondLeaf, kJet4.index.previous, 0);
    EXPECT_TRUE(Has(Check(), FaultCode::IndexLinks));
}

TEST_F(Damage, ANodeThatDoesNotSeparateIsFound) {
    Load("compIndexV2000.mdb");
    At(kRoot, kJet4.index.entries + 1) = 0;
    EXPECT_TRUE(Has(Check(), FaultCode::IndexSeparator));
}

TEST_F(Damage, ATreeThatGoesInACircleIsFound) {
    Load("compIndexV2000.mdb");
    Put32(kRoot, kJet4.index.tail, kRoot);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::PageTwice));
    EXPECT_TRUE(Has(findings, FaultCode::IndexMissing));
}

TEST_F(Damage, EqualKeysInAUniqueIndexAreFound) {
    Load("indexV2000.mdb");
    const TableDef def = Open(u"Table1")->Impl().Def();
    constexpr std::uint32_t kStartOfIndex = 1923;
    for (std::size_t at = 0; at + kJet4.realIndex.size < def.bytes.size(); ++at) {
        if (ByteView(def.bytes, def.page).U32(at) == kStartOfIndex) {
            At(def.page, at + kJet4.realIndex.flags) |= index_flag::kUnique;
        }
    }
    EXPECT_TRUE(Has(Check(), FaultCode::IndexDuplicate));
}

TEST_F(Damage, AnIndexWithAForeignMapIsFound) {
    Load("compIndexV2000.mdb");
    const RealIndex index = Open(u"Table1")->Impl().Def().realIndexes.front();
    SetMapBit(index.map, index.root, false);
    EXPECT_TRUE(Has(Check(), FaultCode::IndexMap));
}

TEST_F(Damage, AUsedPageThatIsMarkedFreeIsFound) {
    Load("delV2000.mdb");
    SetMapBit(kFreePages, Open(u"Table")->Impl().DataPages()->front(), true);
    EXPECT_TRUE(Has(Check(), FaultCode::PageFree));
}

TEST_F(Damage, ALostPageIsNoted) {
    Load("delV2000.mdb");
    const auto last = static_cast<std::uint32_t>(bytes_.size() / kPage);
    bytes_.resize(bytes_.size() + kPage);
    EXPECT_THAT(Check(), testing::IsEmpty());
    SetMapBit(kFreePages, last, false);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::PageLost));
    EXPECT_FALSE(HasFaults(findings));
}

TEST_F(Damage, APageOfTwoOwnersIsFound) {
    Load("indexV2000.mdb");
    const auto first = Open(u"Table1");
    const auto second = Open(u"Table2");
    SetMapBit(first->Impl().Def().ownedMap, second->Impl().DataPages()->front(), true);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::PageTwice));
    EXPECT_TRUE(Has(findings, FaultCode::PageForeign));
}

TEST_F(Damage, APageOfATableThatItsMapDoesNotListIsFound) {
    Load("compIndexV2000.mdb");
    const auto table = Open(u"Table1");
    SetMapBit(table->Impl().Def().ownedMap, table->Impl().DataPages()->front(), false);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::PageUnlisted));
    EXPECT_TRUE(Has(findings, FaultCode::RoomForeign) || Has(findings, FaultCode::IndexExtra));
}

TEST_F(Damage, AMovedRowThatLeadsNowhereIsFound) {
    Load("overflowV2000.mdb");
    Put32(27, RowStart({.page = 27, .slot = 2}), 27U << 8);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::RowMoved));
    EXPECT_TRUE(Has(findings, FaultCode::RowOrphan));
}

/// The long value of a row of the sample, with its place.
TEST_F(Damage, LongValuesWithBrokenPiecesAreFound) {
    Load("common2V2000.mdb");
    const auto table = Open(u"MSP_PROJECTS");
    const TableDef& def = table->Impl().Def();
    const auto column = static_cast<std::size_t>(def.FindColumn(u"RESERVED_BINARY_DATA"));
    const Row row = *table->Scan().Next();
    const RowLayout layout({row.Bytes(), row.Id().page}, def, kJet4);
    const auto value = LongValueDescriptor::Load(*layout.Field(def.stored[column]));
    const auto pieces = PiecesOf(table->Impl().Pages(), value);
    ASSERT_GT(pieces.size(), 2U);

    const Bytes sound = bytes_;
    const std::size_t first = RowStart(pieces[0]);
    // The first piece leads to the third: one piece is left over, and the value too short.
    const auto third = ByteView(bytes_, 0).Sub(pieces[1].page * kPage + RowStart(pieces[1]), 4);
    std::copy_n(third.Span().begin(), 4,
                bytes_.begin() + static_cast<std::ptrdiff_t>(pieces[0].page * kPage + first));
    auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::LongValueOrphan));
    EXPECT_TRUE(Has(findings, FaultCode::LongValue));

    // The first piece leads to itself.
    bytes_ = sound;
    Put32(pieces[0].page, first, pieces[0].page << 8 | pieces[0].slot);
    EXPECT_TRUE(Has(Check(), FaultCode::LongValueTwice));

    // The pages of the column are not its own.
    bytes_ = sound;
    SetMapBit(def.stored[column].ownedMap, pieces[0].page, false);
    EXPECT_TRUE(Has(Check(), FaultCode::LongValuePlace));
}

TEST_F(Damage, ACatalogueThatLeadsNowhereIsFound) {
    Load("delV2000.mdb");
    const std::uint32_t table = Open(u"Table")->Impl().Def().page;
    At(table, 0) = 1;
    EXPECT_TRUE(Has(Check(), FaultCode::Catalog));
}

TEST_F(Damage, ADefinitionOfAnotherLengthIsFound) {
    Load("delV2000.mdb");
    const std::uint32_t table = Open(u"Table")->Impl().Def().page;
    At(table, kJet4.def.length) += 4;
    EXPECT_TRUE(Has(Check(), FaultCode::Definition));
}

TEST_F(Damage, AFileThatIsCutOffIsChecked) {
    Load("indexCodesV2000-r2009.mdb");
    bytes_.resize(bytes_.size() / 2 + 100);
    const auto findings = Check();
    EXPECT_TRUE(Has(findings, FaultCode::Header));
    EXPECT_TRUE(Has(findings, FaultCode::PageOutside));
}

TEST_F(Damage, AFileOfAnotherKindIsAFault) {
    Load("delV2000.mdb");
    At(0, header::kEngineName) = 'X';
    EXPECT_TRUE(Has(Check(), FaultCode::Header));
}

TEST_F(Damage, FindingsAreBounded) {
    Load("indexCodesV2000-r2009.mdb");
    for (std::size_t page = 3; page < bytes_.size() / kPage; ++page) {
        bytes_[page * kPage + 3] ^= 0x55;
    }
    const auto findings = Check();
    EXPECT_LT(findings.size(), 2100U);
    EXPECT_TRUE(Has(findings, FaultCode::More));
}

/// A byte that the file needs, and what it is a part of.
struct UsedByte {
    std::size_t at = 0;
    const char* part = "";
};

void AddRange(std::uint32_t page, std::size_t first, std::size_t last, const char* part,
              std::vector<UsedByte>& used) {
    for (std::size_t i = first; i < last; ++i) {
        used.push_back({page * kPage + i, part});
    }
}

void AddUsedBytes(const Page& page, std::vector<UsedByte>& used) {
    switch (page.Type()) {
        case PageType::Data: {
            const DataPage slots(page, kJet4);
            const std::size_t end = kJet4.data.slots + static_cast<std::size_t>(slots.SlotCount()) * 2;
            AddRange(page.number, kJet4.data.slots, end, "slots", used);
            AddRange(page.number, end + page.View().U16(kJet4.data.freeBytes), kPage, "rows", used);
            return;
        }
        case PageType::TableDef:
            AddRange(page.number, 0, std::min<std::size_t>(page.View().U32(kJet4.def.length), kPage),
                     "definition", used);
            return;
        case PageType::IndexLeaf:
        case PageType::IndexNode: {
            const std::size_t end = kPage - page.View().U16(kJet4.data.freeBytes);
            AddRange(page.number, kJet4.index.previous, kJet4.index.level, "links", used);
            AddRange(page.number, kJet4.index.entries, end, "entries", used);
            return;
        }
        default:
            return;
    }
}

/// The used bytes of all pages that are not free.
std::vector<UsedByte> UsedBytesOf(const fs::path& file) {
    const auto database = Database::Open(file, OpenMode::ReadOnly);
    const auto catalog = database->OpenTable(u"MSysObjects");
    const PageSource& pages = catalog->Impl().Pages();
    const auto free = ReadUsageMap(pages, kFreePages);
    std::vector<UsedByte> used;
    for (std::uint32_t page = 1; page < pages.PageCount(); ++page) {
        if (!std::binary_search(free.begin(), free.end(), page)) {
            AddUsedBytes(*pages.Read(page), used);
        }
    }
    return used;
}

/// How many of the bytes that were changed the check has noticed.
struct Share {
    int changed = 0;
    int noticed = 0;
    [[nodiscard]] double Value() const { return changed == 0 ? 0 : 1.0 * noticed / changed; }
};

// What the content of a cell or a name is, no check can know; of what a file says twice, every contradiction
// shows.
TEST_F(Damage, ChangedBytesAreNoticedWhereverTheFileSaysThingsTwice) {
    std::mt19937 random(20020815);
    std::map<std::string, Share> shares;
    for (const char* name :
         {"indexV2000.mdb", "compIndexV2000.mdb", "common2V2000.mdb", "overflowV2000.mdb"}) {
        Load(name);
        const Bytes sound = bytes_;
        std::map<std::string, std::vector<UsedByte>> parts;
        for (const UsedByte& byte : UsedBytesOf(file_)) {
            parts[byte.part].push_back(byte);
        }
        const std::size_t notes = Check().size();
        for (const auto& [part, used] : parts) {
            for (int i = 0; i < 60; ++i) {
                bytes_ = sound;
                bytes_[used[random() % used.size()].at] ^= static_cast<std::uint8_t>(1 + random() % 255);
                const bool isNoticed = Check().size() != notes;
                ++shares[part].changed;
                shares[part].noticed += isNoticed ? 1 : 0;
            }
        }
    }
    for (const auto& [part, share] : shares) {
        std::cout << part << ": " << share.noticed << " of " << share.changed << '\n';
    }
    EXPECT_GT(shares["entries"].Value(), 0.95);
    EXPECT_GT(shares["links"].Value(), 0.9);
    EXPECT_GT(shares["slots"].Value(), 0.9);
    EXPECT_GT(shares["rows"].Value(), 0.2);
    EXPECT_GT(shares["definition"].Value(), 0.2);
}

}  // namespace
}  // namespace quardele::jet::test
