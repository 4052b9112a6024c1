// Journals that say anything, beside a data file: as they come, or with checksums that fit what they say. A
// file is brought to one of its ends or not touched.
#include <jet/recovery.h>

#include <algorithm>
#include <stdexcept>

#include "../data/jet/made_journal.h"
#include "../data/jet/support.h"
#include "commit/journal.h"
#include "commit/journal_file.h"
#include "commit/journal_state.h"
#include "file/file_header.h"
#include "input_reader.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = jet::kJet4.pageSize;
constexpr std::uint32_t kPagesBefore = 6;

constexpr std::uint32_t kChanged[] = {3, 5, 6, 7};
constexpr int kUser = 1;

[[nodiscard]] jet::Page MadePage(std::uint32_t number, std::uint8_t content) {
    jet::Page page;
    page.number = number;
    page.size = kPage;
    for (std::size_t i = 0; i < kPage; ++i) {
        page.bytes[i] = static_cast<std::uint8_t>(content + number + i / 512);
    }
    return page;
}

/// A data file in the middle of a change, and the journal that the engine has written for it.
class HalfWritten {
 public:
    HalfWritten() : path_(folder_.Path() / "half.mdb") {
        Bytes bytes = jet::NewHeaderPage();
        for (std::uint32_t number = 1; number < kPagesBefore; ++number) {
            AppendBytes(bytes, MadePage(number, 0).View().Span());
        }
        jet::test::WriteBytes(path_, bytes);
        static_cast<void>(file_.Open(path_, jet::OsFile::Access::ReadWrite));
        WriteJournal();
        const jet::Page changed = MadePage(kChanged[0], 1);
        file_.WriteAt(std::uint64_t{changed.number} * kPage, changed.View().Span());
        half_ = jet::test::ReadBytes(path_);
    }

    [[nodiscard]] const fs::path& Path() const { return path_; }
    [[nodiscard]] const Bytes& Half() const { return half_; }
    [[nodiscard]] const Bytes& Journal() const { return journal_; }
    [[nodiscard]] jet::OsFile& File() { return file_; }

    void PutBack() {
        file_.Resize(half_.size());
        file_.WriteAt(0, half_);
    }

 private:
    void WriteJournal() {
        jet::JournalWriter writer(file_, jet::kJet4, kPagesBefore);
        for (const std::uint32_t number : kChanged) {
            const auto before = std::make_shared<jet::Page>(MadePage(number, 0));
            writer.Add(number < kPagesBefore ? before : nullptr, MadePage(number, 1));
        }
        writer.FlushRecords();
        writer.Finish(jet::ChangeMark::Read(file_, jet::kJet4), kUser);
        journal_ = jet::test::ReadBytes(jet::JournalPath(path_));
    }

    jet::test::TempFolder folder_;
    fs::path path_;
    jet::OsFile file_;
    Bytes half_;
    Bytes journal_;
};

[[nodiscard]] HalfWritten& TheFile() {
    static HalfWritten instance;
    return instance;
}

[[nodiscard]] std::uint32_t Long(InputReader& input) {
    const std::uint32_t low = input.Word();
    return low | std::uint32_t{input.Word()} << 16;
}

/// The engine's journal with other numbers: pages, records, user, then for each record its page, its kind and
/// how much of its bytes is left.
[[nodiscard]] Bytes WithOtherNumbers(InputReader& input) {
    auto made = jet::test::MadeJournal::From(TheFile().Journal());
    made.pageCount ^= Long(input);
    made.user ^= Long(input);
    made.pageSize ^= Long(input);
    if (const std::uint32_t stated = Long(input); stated != 0) {
        made.statedRecords = stated;
    }
    for (jet::test::MadeRecord& record : made.records) {
        record.page ^= Long(input);
        record.kind ^= Long(input);
        record.bytes.resize(record.bytes.size() - std::min<std::size_t>(input.Word(), record.bytes.size()));
        if (const std::uint16_t at = input.Word(); at < record.bytes.size()) {
            record.bytes[at] ^= input.Byte();
        }
    }
    made.records.resize(std::min<std::size_t>(made.records.size(), 4U - input.Byte() % 5U));
    const BytesView behind = input.Take(input.Byte());
    made.behind.assign(behind.begin(), behind.end());
    return made.Bytes();
}

void Expect(bool condition, const char* what) {
    if (!condition) {
        throw std::logic_error(what);
    }
}

[[nodiscard]] bool IsBroughtBack(jet::JournalState state) {
    return state == jet::JournalState::NotStarted || state == jet::JournalState::Half;
}

/// What looks at every page of a journal, as the command does that shows it.
void Show(const fs::path& path) {
    const jet::Recovery recovery(path);
    for (std::size_t i = 0; i < recovery.PageCount(); ++i) {
        static_cast<void>(recovery.Page(i));
    }
}

}  // namespace

// 0 and a journal, or 1 and other numbers for the engine's own one.
void Use(BytesView bytes) {
    InputReader input(bytes);
    HalfWritten& file = TheFile();
    const bool made = input.Byte() % 2 == 1;
    const BytesView raw = made ? BytesView() : input.Take(bytes.size());
    jet::test::WriteBytes(jet::JournalPath(file.Path()),
                          made ? WithOtherNumbers(input) : Bytes(raw.begin(), raw.end()));
    Attempt([&] { Show(file.Path()); });
    auto state = jet::JournalState::Unreadable;
    Attempt([&] {
        state = jet::StateOf(file.File(), jet::kJet4, jet::StoredJournal::Read(file.File(), jet::kJet4));
    });
    Attempt([&] { jet::RecoverFromJournal(file.File(), jet::kJet4); });
    if (IsBroughtBack(state)) {
        Expect(file.File().Size() % kPage == 0, "brought back to a part of a page");
        file.PutBack();
    } else {
        Expect(jet::test::ReadBytes(file.Path()) == file.Half(), "changed without a reason");
    }
    fs::remove(jet::JournalPath(file.Path()));
    fs::remove(jet::JournalPath(file.Path()).string() + ".autre");
}

std::vector<Bytes> Seeds() {
    const Bytes& journal = TheFile().Journal();
    Bytes whole = {0};
    AppendBytes(whole, journal);
    Bytes withoutHeader = {0};
    withoutHeader.resize(1 + 1024);
    AppendBytes(withoutHeader, BytesView(journal).subspan(1024));
    Bytes cutOff = whole;
    cutOff.resize(whole.size() / 2);
    Bytes sameNumbers(100);
    sameNumbers[0] = 1;
    Bytes otherPages = sameNumbers;
    otherPages[1] = 1;   // the number of pages before
    otherPages[17] = 3;  // the page of the first record
    return {whole, withoutHeader, cutOff, sameNumbers, otherPages};
}

}  // namespace quardele::fuzz
