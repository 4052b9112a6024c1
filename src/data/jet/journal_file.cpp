#include "journal_file.h"

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

/// Records are written in pieces of this size, and synced ahead of the header from so many bytes on.
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

// The header, when it is whole.
std::optional<ByteString> ReadHeader(const OsFile& file, const OsFile& journal) {
    ByteString header(kHeaderSize);
    if (journal.ReadAt(0, header) != header.size() ||
        !std::equal(kMagic.begin(), kMagic.end(), header.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; })) {
        return std::nullopt;
    }
    if (header[kMagic.size()] != kVersion) {
        ThrowOtherVersion(file);
    }
    if (ByteView(header, kHeaderPage).U64(kHeaderSumAt) != HeaderSum(header)) {
        return std::nullopt;
    }
    return header;
}

// False when there is none, or another process has just deleted it.
bool OpenJournal(const OsFile& file, OsFile& journal) {
    try {
        return HasJournal(file.Path()) && journal.Open(JournalPath(file.Path()), OsFile::Access::Read);
    } catch (const basic::RuntimeError& error) {
        if (error.Number() == basic::error::kFileMissing) {
            return false;
        }
        throw;
    }
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

bool HasValidJournal(const OsFile& file) {
    OsFile journal;
    return OpenJournal(file, journal) && ReadHeader(file, journal).has_value();
}

JournalWriter::JournalWriter(const OsFile& file, const Format& format, std::uint32_t pageCount)
    : file_(file),
      pageSize_(static_cast<std::uint32_t>(format.pageSize)),
      identity_(FileIdentity(file, format)),
      pageCount_(pageCount),
      end_(kHeaderSize) {
    journal_.Create(JournalPath(file.Path()));
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
    if (end_ > kFlushSize) {
        journal_.Sync();
    }
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
    journal_.Sync();
    journal_.Close();
    SyncFolder(file_.Path().parent_path());
}

std::optional<StoredJournal> StoredJournal::Read(const OsFile& file, const Format& format) {
    StoredJournal journal;
    if (!OpenJournal(file, journal.journal_)) {
        return std::nullopt;
    }
    const auto header = ReadHeader(file, journal.journal_);
    if (!header) {
        return std::nullopt;
    }
    const ByteView view(*header, kHeaderPage);
    journal.pageSize_ = view.U32(kPageSizeAt);
    journal.pageCount_ = view.U32(kPageCountAt);
    journal.user_ = static_cast<int>(view.U32(kUserAt) % ChangeMark::kSlots);
    journal.sameFile_ = view.U64(kIdentityAt) == FileIdentity(file, format);
    ChangeMark::Bytes mark{};
    std::copy_n(header->begin() + kMarkAt, mark.size(), mark.begin());
    journal.mark_ = ChangeMark(mark);
    if (journal.pageSize_ != format.pageSize ||
        journal.IndexRecords(view.U32(kRecordsAt)) != view.U64(kRecordsSumAt)) {
        return std::nullopt;
    }
    return journal;
}

// Finds the records and gives the checksum of all of them; they need not fit into memory together.
std::uint64_t StoredJournal::IndexRecords(std::uint32_t count) {
    std::uint64_t sum = 0;
    std::uint64_t at = kHeaderSize;
    const std::size_t sumsSize = pageSize_ / kSector * sizeof(std::uint64_t);
    for (std::uint32_t i = 0; i < count; ++i) {
        ByteString bytes = Bytes(at, kRecordHeader);
        const ByteView view(bytes, kHeaderPage);
        if (bytes.size() < kRecordHeader) {
            return ~sum;
        }
        const Place place{
            .page = view.U32(0), .appended = view.U32(4) == kAppended, .at = at + kRecordHeader};
        if (place.page == kHeaderPage || place.page >= kLargestFile / pageSize_) {
            ThrowDamaged(place.page, u"journal d'écriture impossible");
        }
        const std::size_t size = place.appended ? sumsSize : 2 * std::size_t{pageSize_};
        const ByteString body = Bytes(place.at, size);
        bytes.insert(bytes.end(), body.begin(), body.end());
        sum = Checksum(bytes, sum);
        at = place.at + size;
        records_.push_back(place);
    }
    return sum;
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
    record.appended = place.appended;
    if (place.appended) {
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
