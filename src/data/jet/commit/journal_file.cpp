#include "commit/journal_file.h"

#include <algorithm>
#include <string_view>

#include <basic/runtime_error.h>

#include "checksum.h"

namespace quardele::jet {

namespace {

constexpr std::string_view kMagic = "QDJOURN";
constexpr std::uint8_t kVersion = '2';
/// Header: magic and version, page size, page count, number of records, user, identity, checksum of the
/// records, checksum of all that stands before it and of the mark; in the second sector the mark.
constexpr std::size_t kPageSizeAt = 8;
constexpr std::size_t kPageCountAt = 12;
constexpr std::size_t kRecordsAt = 16;
constexpr std::size_t kUserAt = 20;
constexpr std::size_t kIdentityAt = 24;
constexpr std::size_t kRecordsSumAt = 32;
constexpr std::size_t kHeaderSumAt = 40;
constexpr std::size_t kMarkAt = kSector;
constexpr std::size_t kHeaderSize = kMarkAt + ChangeMark::kSize;
/// Record: page number, kind; then the old and the new page, or of an appended page the checksums of its
/// sectors.
constexpr std::size_t kRecordHeader = 8;
constexpr std::uint32_t kAppended = 0;
constexpr std::uint32_t kReplaced = 1;

/// Records are written in pieces of this size.
constexpr std::size_t kFlushSize = 1 << 20;

/// The header page changes behind this point only.
constexpr std::size_t kUnchangingHeader = 0xE00;

template <class Integer>
void Append(ByteString& bytes, Integer value) {
    const std::size_t at = bytes.size();
    bytes.resize(at + sizeof(Integer));
    StoreLittle(std::span(bytes).subspan(at), value);
}

template <class Integer>
void Put(ByteString& bytes, std::size_t at, Integer value) {
    StoreLittle(std::span(bytes).subspan(at), value);
}

void AppendBytes(ByteString& bytes, std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

std::uint64_t HeaderSum(const ByteString& header) {
    return Checksum(std::span(header).first(kHeaderSumAt), Checksum(std::span(header).subspan(kMarkAt)));
}

[[noreturn]] void ThrowOtherVersion(const OsFile& file) {
    basic::Text description = u"Le journal « ";
    description += FileName(JournalPath(file.Path()));
    description += u" » a été écrit par une autre version du programme. Il est conservé.";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

[[noreturn]] void ThrowUnreadable(const OsFile& file) {
    basic::Text description = u"Le journal « ";
    description += FileName(JournalPath(file.Path()));
    description +=
        u" » d'une écriture interrompue ne peut pas être lu : vérifiez les droits d'accès. Il est "
        u"conservé.";
    throw basic::RuntimeError(basic::error::kCannotOpenFile, std::move(description));
}

bool IsBlank(std::span<const std::uint8_t> bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
}

bool HasMagic(const ByteString& header) {
    return std::equal(kMagic.begin(), kMagic.end(), header.begin(),
                      [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

// The header alone. Its place holds zeros until it is written, so that one of its two sectors is still blank
// when that was cut short; anything else that does not add up was changed afterwards.
StoredJournal::Condition ReadHeader(const OsFile& file, const OsFile& journal, ByteString& header) {
    header.resize(kHeaderSize);
    if (journal.ReadAt(0, header) != header.size() || IsBlank(std::span(header).first(kSector))) {
        return StoredJournal::Condition::Unfinished;
    }
    if (HasMagic(header) && header[kMagic.size()] != kVersion) {
        ThrowOtherVersion(file);
    }
    if (HasMagic(header) && ByteView(header, kHeaderPage).U64(kHeaderSumAt) == HeaderSum(header)) {
        return StoredJournal::Condition::Complete;
    }
    return IsBlank(std::span(header).subspan(kMarkAt)) ? StoredJournal::Condition::Unfinished
                                                       : StoredJournal::Condition::Damaged;
}

// False when there is none, or another process has just deleted it. One that cannot be opened is there.
bool OpenJournal(const OsFile& file, OsFile& journal) {
    if (!HasJournal(file.Path())) {
        return false;
    }
    try {
        if (!journal.Open(JournalPath(file.Path()), OsFile::Access::Read)) {
            ThrowUnreadable(file);
        }
    } catch (const basic::RuntimeError& error) {
        if (error.Number() == basic::error::kFileMissing) {
            return false;
        }
        throw;
    }
    return true;
}

}  // namespace

std::uint64_t FileIdentity(const OsFile& file, const Format& format) {
    ByteString header(std::min<std::size_t>(format.pageSize, kUnchangingHeader));
    header.resize(file.ReadAt(0, header));
    // Files made from one template have equal headers; their names tell them apart.
    const std::string name = basic::ToUtf8(basic::LCase(FileName(file.Path())));
    const ByteString letters(name.begin(), name.end());
    return Checksum(letters, Checksum(header));
}

bool HasFinishedJournal(const OsFile& file) {
    OsFile journal;
    ByteString header;
    return OpenJournal(file, journal) &&
           ReadHeader(file, journal, header) != StoredJournal::Condition::Unfinished;
}

JournalWriter::JournalWriter(const OsFile& file, const Format& format, std::uint32_t pageCount)
    : file_(file),
      pageSize_(static_cast<std::uint32_t>(format.pageSize)),
      identity_(FileIdentity(file, format)),
      pageCount_(pageCount),
      pending_(kHeaderSize) {
    journal_.Create(JournalPath(file.Path()));
    journal_.ShareLike(file.Path());
}

void JournalWriter::Add(const PagePtr& before, const Page& after) {
    const std::size_t start = pending_.size();
    const auto pageBytes = after.View().Span();
    Append(pending_, after.number);
    Append(pending_, before ? kReplaced : kAppended);
    if (before) {
        AppendBytes(pending_, before->View().Span());
        AppendBytes(pending_, pageBytes);
    } else {
        for (std::size_t at = 0; at < pageBytes.size(); at += kSector) {
            Append(pending_, Checksum(pageBytes.subspan(at, kSector)));
        }
    }
    sum_ = Checksum(std::span(pending_).subspan(start), sum_);
    ++records_;
    if (pending_.size() >= kFlushSize) {
        Flush();
    }
}

void JournalWriter::Flush() {
    if (pending_.empty()) {
        return;
    }
    journal_.WriteAt(end_, pending_);
    end_ += pending_.size();
    pending_.clear();
}

void JournalWriter::FlushRecords() {
    Flush();
    journal_.Sync();
}

void JournalWriter::Finish(const ChangeMark& mark, int user) {
    ByteString header(kMarkAt);
    std::transform(kMagic.begin(), kMagic.end(), header.begin(),
                   [](char letter) { return static_cast<std::uint8_t>(letter); });
    header[kMagic.size()] = kVersion;
    Put(header, kPageSizeAt, pageSize_);
    Put(header, kPageCountAt, pageCount_);
    Put(header, kRecordsAt, records_);
    Put(header, kUserAt, static_cast<std::uint32_t>(user));
    Put(header, kIdentityAt, identity_);
    Put(header, kRecordsSumAt, sum_);
    AppendBytes(header, mark.Stored());
    Put(header, kHeaderSumAt, HeaderSum(header));
    journal_.WriteAt(0, header);
    journal_.SyncData();
    journal_.Close();
    SyncFolder(file_.Path().parent_path());
}

StoredJournal StoredJournal::Read(const OsFile& file, const Format& format) {
    StoredJournal journal;
    if (!OpenJournal(file, journal.journal_)) {
        return journal;
    }
    ByteString header;
    journal.condition_ = ReadHeader(file, journal.journal_, header);
    if (!journal.IsComplete()) {
        return journal;
    }
    journal.TakeHeader(header);
    const ByteView view(header, kHeaderPage);
    journal.sameFile_ = view.U64(kIdentityAt) == FileIdentity(file, format);
    if (journal.pageSize_ != format.pageSize ||
        !journal.IndexRecords(view.U32(kRecordsAt), view.U64(kRecordsSumAt)) ||
        !journal.NumbersArePossible()) {
        journal.condition_ = Condition::Damaged;
    }
    return journal;
}

void StoredJournal::TakeHeader(const ByteString& header) {
    const ByteView view(header, kHeaderPage);
    pageSize_ = view.U32(kPageSizeAt);
    pageCount_ = view.U32(kPageCountAt);
    user_ = view.U32(kUserAt);
    ChangeMark::Bytes mark{};
    std::copy_n(header.begin() + kMarkAt, mark.size(), mark.begin());
    mark_ = ChangeMark(mark);
}

// Finds the records, and whether they are all there and no more than they: they need not fit into memory
// together. What they say is judged when their checksum is known to be right.
bool StoredJournal::IndexRecords(std::uint32_t count, std::uint64_t expectedSum) {
    std::uint64_t sum = 0;
    std::uint64_t at = kHeaderSize;
    const std::size_t sumsSize = pageSize_ / kSector * sizeof(std::uint64_t);
    for (std::uint32_t i = 0; i < count; ++i) {
        ByteString bytes = Bytes(at, kRecordHeader);
        if (bytes.size() < kRecordHeader) {
            return false;
        }
        const ByteView view(bytes, kHeaderPage);
        const Place place{.page = view.U32(0), .kind = view.U32(4), .at = at + kRecordHeader};
        const std::size_t size = place.kind == kAppended ? sumsSize : 2 * std::size_t{pageSize_};
        const ByteString body = Bytes(place.at, size);
        bytes.insert(bytes.end(), body.begin(), body.end());
        sum = Checksum(bytes, sum);
        at = place.at + size;
        records_.push_back(place);
    }
    return sum == expectedSum && at == journal_.Size();
}

// Pages ascend, none of them is the header, and those behind the old end were appended without a gap.
bool StoredJournal::NumbersArePossible() const {
    const std::uint64_t limit = kLargestFile / pageSize_;
    std::uint32_t last = kHeaderPage;
    for (const Place& place : records_) {
        const bool appended = place.page >= pageCount_;
        const bool follows = appended ? place.page == std::max(last + 1, pageCount_) : place.page > last;
        if (!follows || place.page >= limit || place.kind != (appended ? kAppended : kReplaced)) {
            return false;
        }
        last = place.page;
    }
    return !records_.empty() && user_ < ChangeMark::kSlots && pageCount_ > kCatalogPage &&
           pageCount_ <= limit;
}

ByteString StoredJournal::Bytes(std::uint64_t at, std::size_t size) const {
    ByteString bytes(size);
    bytes.resize(journal_.ReadAt(at, bytes));
    return bytes;
}

StoredRecord StoredJournal::At(std::size_t position) const {
    const Place& place = records_[position];
    StoredRecord record;
    record.page = place.page;
    record.appended = place.kind == kAppended;
    if (record.appended) {
        const std::size_t sectors = pageSize_ / kSector;
        const ByteString sums = Bytes(place.at, sectors * sizeof(std::uint64_t));
        for (std::size_t i = 0; i < sectors; ++i) {
            record.afterSums.push_back(ByteView(sums, place.page).U64(i * sizeof(std::uint64_t)));
        }
        record.before.resize(pageSize_);
    } else {
        record.before = Bytes(place.at, pageSize_);
        record.after = Bytes(place.at + pageSize_, pageSize_);
    }
    return record;
}

}  // namespace quardele::jet
