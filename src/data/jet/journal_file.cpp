#include "journal_file.h"

#include <algorithm>
#include <string_view>

#include "checksum.h"

namespace quardele::jet {

namespace {

constexpr std::string_view kMagic = "QDJOURN1";
/// Header: magic, page size, page count, number of records, 0, identity, checksum of the records, checksum of
/// all that stands before it.
constexpr std::size_t kPageSizeAt = 8;
constexpr std::size_t kPageCountAt = 12;
constexpr std::size_t kRecordsAt = 16;
constexpr std::size_t kIdentityAt = 24;
constexpr std::size_t kRecordsSumAt = 32;
constexpr std::size_t kHeaderSumAt = 40;
constexpr std::size_t kHeaderSize = kSector;
/// Record: page number, whether an old page follows, checksums of the new page's sectors, the old page.
constexpr std::size_t kRecordHeader = 8;
constexpr std::uint32_t kWithBefore = 1;

/// The header page changes behind this point only (the original engine counts commits there).
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

void AppendRecord(const JournalRecord& record, ByteString& bytes) {
    Append(bytes, record.after->number);
    Append(bytes, record.before ? kWithBefore : 0);
    const auto after = record.after->View().Span();
    for (std::size_t at = 0; at < after.size(); at += kSector) {
        Append(bytes, Checksum(after.subspan(at, kSector)));
    }
    if (record.before) {
        const auto before = record.before->View().Span();
        bytes.insert(bytes.end(), before.begin(), before.end());
    }
}

// The header, when it is whole.
std::optional<ByteString> ReadHeader(const OsFile& journal) {
    ByteString header(kHeaderSize);
    if (journal.ReadAt(0, header) != header.size() ||
        !std::equal(kMagic.begin(), kMagic.end(), header.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; })) {
        return std::nullopt;
    }
    const ByteView view(header, kHeaderPage);
    if (view.U64(kHeaderSumAt) != Checksum(std::span(header).first(kHeaderSumAt))) {
        return std::nullopt;
    }
    return header;
}

std::vector<StoredRecord> ParseRecords(const ByteView& bytes, std::uint32_t count, std::size_t pageSize) {
    std::vector<StoredRecord> records;
    std::size_t at = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        StoredRecord record;
        record.page = bytes.U32(at);
        if (record.page == kHeaderPage || record.page >= kLargestFile / pageSize) {
            ThrowDamaged(record.page, u"journal d'écriture impossible");
        }
        const bool withBefore = bytes.U32(at + 4) == kWithBefore;
        at += kRecordHeader;
        for (std::size_t sector = 0; sector < pageSize / kSector; ++sector, at += 8) {
            record.after.push_back(bytes.U64(at));
        }
        record.before.resize(pageSize);
        if (withBefore) {
            const auto before = bytes.Sub(at, pageSize).Span();
            std::copy(before.begin(), before.end(), record.before.begin());
            at += pageSize;
        }
        records.push_back(std::move(record));
    }
    return records;
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

void WriteJournal(const OsFile& file, const Format& format, std::uint32_t pageCount,
                  std::span<const JournalRecord> records) {
    ByteString bytes(kHeaderSize);
    for (const JournalRecord& record : records) {
        AppendRecord(record, bytes);
    }
    std::transform(kMagic.begin(), kMagic.end(), bytes.begin(),
                   [](char letter) { return static_cast<std::uint8_t>(letter); });
    Put(bytes, kPageSizeAt, format.pageSize);
    Put(bytes, kPageCountAt, pageCount);
    Put(bytes, kRecordsAt, static_cast<std::uint32_t>(records.size()));
    Put(bytes, kIdentityAt, FileIdentity(file, format));
    Put(bytes, kRecordsSumAt, Checksum(std::span(bytes).subspan(kHeaderSize)));
    Put(bytes, kHeaderSumAt, Checksum(std::span(bytes).first(kHeaderSumAt)));

    OsFile journal;
    journal.Create(JournalPath(file.Path()));
    journal.WriteAt(0, bytes);
    journal.Sync();
    SyncFolder(file.Path().parent_path());
}

std::optional<StoredJournal> ReadJournal(const OsFile& file, const Format& format) {
    OsFile journal;
    if (!journal.Open(JournalPath(file.Path()), OsFile::Access::Read)) {
        return std::nullopt;
    }
    const auto header = ReadHeader(journal);
    if (!header) {
        return std::nullopt;
    }
    const ByteView view(*header, kHeaderPage);
    ByteString bytes(journal.Size() - kHeaderSize);
    bytes.resize(journal.ReadAt(kHeaderSize, bytes));
    if (view.U32(kPageSizeAt) != format.pageSize || view.U64(kRecordsSumAt) != Checksum(bytes)) {
        return std::nullopt;
    }
    return StoredJournal{
        .pageCount = view.U32(kPageCountAt),
        .sameFile = view.U64(kIdentityAt) == FileIdentity(file, format),
        .records = ParseRecords(ByteView(bytes, kHeaderPage), view.U32(kRecordsAt), format.pageSize)};
}

}  // namespace quardele::jet
