#include "indexes/key_encoder.h"

#include <algorithm>

#include <jet/collation.h>

#include <basic/runtime_error.h>

#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

constexpr std::uint8_t kNullAscending = 0x00;
constexpr std::uint8_t kNullDescending = 0xFF;
constexpr std::uint8_t kValueAscending = 0x7F;
constexpr std::uint8_t kValueDescending = 0x80;
constexpr std::uint8_t kTopBit = 0x80;
/// Longer texts, memos above all, are sorted by their start.
constexpr std::size_t kMostUnits = 255;

void InvertFrom(ByteString& key, std::size_t start) {
    std::transform(key.begin() + static_cast<std::ptrdiff_t>(start), key.end(),
                   key.begin() + static_cast<std::ptrdiff_t>(start),
                   [](std::uint8_t byte) { return static_cast<std::uint8_t>(~byte); });
}

void AppendReversed(const ByteView& data, ByteString& key) {
    key.insert(key.end(), data.Span().rbegin(), data.Span().rend());
}

// Two's complement, most significant byte first, with the sign turned so that negative numbers come first.
void AppendInteger(const ByteView& data, bool ascending, ByteString& key) {
    const std::size_t start = key.size();
    AppendReversed(data, key);
    key[start] ^= kTopBit;
    if (!ascending) {
        InvertFrom(key, start);
    }
}

void AppendFloat(const ByteView& data, bool ascending, ByteString& key) {
    const std::size_t start = key.size();
    AppendReversed(data, key);
    const bool negative = (key[start] & kTopBit) != 0;
    if (!negative) {
        key[start] ^= kTopBit;
    }
    if (negative == ascending) {
        InvertFrom(key, start);
    }
}

// A sign byte, which is not inverted in descending order, and the magnitude.
void AppendNumeric(const ByteView& data, bool ascending, ByteString& key) {
    constexpr std::size_t kWords = 4;
    const bool negative = (data.U8(0) & kTopBit) != 0;
    key.push_back(negative ? 0x00 : 0xFF);
    const std::size_t start = key.size();
    for (std::size_t word = 0; word < kWords; ++word) {
        AppendReversed(data.Sub(1 + word * 4, 4), key);
    }
    if (negative == ascending) {
        InvertFrom(key, start);
    }
}

// Blocks of eight bytes, each followed by 9, the last one padded and followed by its length.
void AppendBlocks(std::span<const std::uint8_t> data, bool ascending, ByteString& key) {
    constexpr std::size_t kBlock = 8;
    constexpr std::uint8_t kMore = 9;
    while (!data.empty()) {
        const auto block = data.first(std::min(kBlock, data.size()));
        data = data.subspan(block.size());
        const std::size_t start = key.size();
        key.insert(key.end(), block.begin(), block.end());
        key.resize(start + kBlock, 0);
        if (data.empty()) {
            key.push_back(static_cast<std::uint8_t>(block.size()));
        }
        if (!ascending) {
            InvertFrom(key, start);
        }
        if (!data.empty()) {
            key.push_back(kMore);
        }
    }
}

// In the order in which a GUID is written: the first three groups are stored little-endian.
void AppendGuid(const ByteView& data, bool ascending, ByteString& key) {
    ByteString written(data.Span().begin(), data.Span().end());
    std::reverse(written.begin(), written.begin() + 4);
    std::reverse(written.begin() + 4, written.begin() + 6);
    std::reverse(written.begin() + 6, written.begin() + 8);
    AppendBlocks(written, ascending, key);
}

}  // namespace

TextView KeyPart(TextView text) {
    return text.substr(0, kMostUnits);
}

void AppendTextKey(TextView text, bool ascending, ByteString& key) {
    key.push_back(ascending ? kValueAscending : kValueDescending);
    const std::string sortKey = SortKey(KeyPart(text));
    const std::size_t start = key.size();
    key.insert(key.end(), sortKey.begin(), sortKey.end());
    if (!ascending) {
        InvertFrom(key, start);
        key.push_back(0);
    }
}

void AppendKey(const StoredColumn& column, bool ascending, const std::optional<ByteView>& data,
               const Format& format, ByteString& key) {
    if (!data) {
        key.push_back(ascending ? kNullAscending : kNullDescending);
        return;
    }
    if (column.IsText()) {
        return AppendTextKey(DecodeText(*data, format), ascending, key);
    }
    key.push_back(ascending ? kValueAscending : kValueDescending);
    if (const auto size = NaturalSize(column.type); size && data->Size() != *size) {
        ThrowDamaged(data->Page(), u"valeur de longueur impossible");
    }
    switch (column.type) {
        case ColumnType::Boolean:
            key.push_back((data->U8(0) != 0) == ascending ? 0x00 : 0xFF);
            return;
        case ColumnType::Byte:
            key.push_back(ascending ? data->U8(0) : static_cast<std::uint8_t>(~data->U8(0)));
            return;
        case ColumnType::Integer:
        case ColumnType::Long:
        case ColumnType::Currency:
            return AppendInteger(*data, ascending, key);
        case ColumnType::Single:
        case ColumnType::Double:
        case ColumnType::Date:
            return AppendFloat(*data, ascending, key);
        case ColumnType::Binary:
            return AppendBlocks(data->Span(), ascending, key);
        case ColumnType::Guid:
            return AppendGuid(*data, ascending, key);
        case ColumnType::Numeric:
            return AppendNumeric(*data, ascending, key);
        default:
            throw basic::RuntimeError(basic::error::kOperationNotSupported);
    }
}

}  // namespace quardele::jet
