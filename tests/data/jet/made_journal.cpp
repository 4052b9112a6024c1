#include "made_journal.h"

#include <algorithm>
#include <span>

#include "bytes.h"
#include "checksum.h"

namespace quardele::jet::test {

namespace {

constexpr std::size_t kPageSizeAt = 8;
constexpr std::size_t kPageCountAt = 12;
constexpr std::size_t kRecordsAt = 16;
constexpr std::size_t kUserAt = 20;
constexpr std::size_t kIdentityAt = 24;
constexpr std::size_t kRecordsSumAt = 32;
constexpr std::size_t kHeaderSumAt = 40;
constexpr std::size_t kMarkAt = 512;
constexpr std::size_t kHeaderSize = 1024;
constexpr std::size_t kRecordHeader = 8;
constexpr std::size_t kSectorSize = 512;
constexpr char kMagic[] = "QDJOURN2";

void Append(std::vector<std::uint8_t>& bytes, std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

std::vector<std::uint8_t> BytesOf(const MadeRecord& record) {
    std::vector<std::uint8_t> bytes(kRecordHeader);
    StoreLittle(std::span(bytes), record.page);
    StoreLittle(std::span(bytes).subspan(4), record.kind);
    Append(bytes, record.bytes);
    return bytes;
}

}  // namespace

MadeJournal MadeJournal::From(const std::vector<std::uint8_t>& bytes) {
    const ByteView view(bytes, 0);
    MadeJournal made;
    made.pageSize = view.U32(kPageSizeAt);
    made.pageCount = view.U32(kPageCountAt);
    made.user = view.U32(kUserAt);
    made.identity = view.U64(kIdentityAt);
    made.mark.assign(bytes.begin() + kMarkAt, bytes.begin() + kHeaderSize);
    std::size_t at = kHeaderSize;
    for (std::uint32_t i = 0; i < view.U32(kRecordsAt); ++i) {
        MadeRecord record{.page = view.U32(at), .kind = view.U32(at + 4), .bytes = {}};
        const std::size_t size =
            record.kind == 0 ? made.pageSize / kSectorSize * sizeof(std::uint64_t) : 2UL * made.pageSize;
        const auto body = view.Sub(at + kRecordHeader, size).Span();
        record.bytes.assign(body.begin(), body.end());
        made.records.push_back(std::move(record));
        at += kRecordHeader + size;
    }
    return made;
}

std::vector<std::uint8_t> MadeJournal::Bytes() const {
    std::vector<std::uint8_t> bytes(kMarkAt);
    std::copy_n(kMagic, sizeof(kMagic) - 1, bytes.begin());
    Append(bytes, mark);
    bytes.resize(kHeaderSize);
    std::uint64_t sum = 0;
    for (const MadeRecord& record : records) {
        const auto recordBytes = BytesOf(record);
        sum = Checksum(recordBytes, sum);
        Append(bytes, recordBytes);
    }
    Append(bytes, behind);
    const auto whole = std::span(bytes);
    StoreLittle(whole.subspan(kPageSizeAt), pageSize);
    StoreLittle(whole.subspan(kPageCountAt), pageCount);
    StoreLittle(whole.subspan(kRecordsAt),
                statedRecords.value_or(static_cast<std::uint32_t>(records.size())));
    StoreLittle(whole.subspan(kUserAt), user);
    StoreLittle(whole.subspan(kIdentityAt), identity);
    StoreLittle(whole.subspan(kRecordsSumAt), sum);
    const std::uint64_t headerSum =
        Checksum(whole.first(kHeaderSumAt), Checksum(whole.subspan(kMarkAt, kHeaderSize - kMarkAt)));
    StoreLittle(whole.subspan(kHeaderSumAt), headerSum);
    return bytes;
}

}  // namespace quardele::jet::test
