#include "definitions/property_blob.h"

#include <algorithm>
#include <string_view>

#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

constexpr std::string_view kMagicWide{"MR2\0", 4};
constexpr std::string_view kMagicNarrow{"KKD\0", 4};
constexpr std::uint16_t kOfTable = 0x0000;
constexpr std::size_t kBlockHeader = 6;
constexpr std::size_t kOwnerHeader = 4;
constexpr std::size_t kValueHeader = 8;
/// Marks what the database's designers set, apart from what programs add.
constexpr std::uint8_t kDesigned = 1;

[[nodiscard]] Text NameAt(const ByteView& body, std::size_t at, const Format& format) {
    const ByteView name = body.Sub(at + 2, body.U16(at));
    return format.wideText ? DecodePlainText(name) : DecodeText(name, format);
}

void CheckMagic(const ByteView& blob, const Format& format) {
    const std::string_view magic = format.wideText ? kMagicWide : kMagicNarrow;
    const ByteView start = blob.Sub(0, magic.size());
    if (!std::equal(magic.begin(), magic.end(), start.Span().begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; })) {
        ThrowDamaged(blob.Page(), u"propriétés de forme inconnue");
    }
}

ByteString Copy(const ByteView& view) {
    return {view.Span().begin(), view.Span().end()};
}

template <class Integer>
void Append(Integer value, ByteString& bytes) {
    bytes.resize(bytes.size() + sizeof value);
    StoreLittle(std::span(bytes).last(sizeof value), value);
}

void Append(const ByteString& part, ByteString& bytes) {
    bytes.insert(bytes.end(), part.begin(), part.end());
}

ByteString StoredName(TextView name) {
    const ByteString text = EncodePlainText(name);
    ByteString stored;
    Append(static_cast<std::uint16_t>(text.size()), stored);
    Append(text, stored);
    return stored;
}

}  // namespace

PropertyBlob::PropertyBlob() {
    blocks_.push_back({.type = kNameList, .head = {}, .owner = {}, .records = {}});
}

PropertyBlob::PropertyBlob(const ByteView& blob, const Format& format) : page_(blob.Page()) {
    CheckMagic(blob, format);
    for (std::size_t at = kMagicWide.size(); at < blob.Size();) {
        const std::size_t length = blob.U32(at);
        if (length < kBlockHeader) {
            ThrowDamaged(page_, u"propriétés de longueur impossible");
        }
        const ByteView body = blob.Sub(at, length).From(kBlockHeader);
        Block& block = blocks_.emplace_back();
        block.type = blob.U16(at + 4);
        if (block.type == kOfTable || block.type == kOfColumn) {
            ReadValues(body, format, block);
        } else {
            block.head = Copy(body);
        }
        if (block.type == kNameList) {
            ReadNames(body, format);
        }
        at += length;
    }
}

void PropertyBlob::ReadNames(const ByteView& body, const Format& format) {
    if (!names_.empty()) {
        ThrowDamaged(page_, u"deux listes de noms de propriétés");
    }
    for (std::size_t at = 0; at < body.Size(); at += 2 + std::size_t{body.U16(at)}) {
        names_.push_back(NameAt(body, at, format));
    }
}

void PropertyBlob::ReadValues(const ByteView& body, const Format& format, Block& block) {
    std::size_t at = body.U32(0);
    block.head = Copy(body.Sub(0, at));
    block.owner = NameAt(body, kOwnerHeader, format);
    while (at < body.Size()) {
        const std::size_t length = body.U16(at);
        if (length < kValueHeader || std::size_t{kValueHeader} + body.U16(at + 6) > length) {
            ThrowDamaged(body.Page(), u"propriété de longueur impossible");
        }
        block.records.push_back(Copy(body.Sub(at, length)));
        at += length;
    }
}

std::size_t PropertyBlob::NameOf(const ByteString& record) {
    return ByteView(record, 0).U16(4);
}

ByteView PropertyBlob::ValueOf(const ByteString& record) const {
    const ByteView view(record, page_);
    return view.Sub(kValueHeader, view.U16(6));
}

ByteString PropertyBlob::Bytes() const {
    ByteString bytes;
    for (const char letter : kMagicWide) {
        bytes.push_back(static_cast<std::uint8_t>(letter));
    }
    for (const Block& block : blocks_) {
        std::size_t length = kBlockHeader + block.head.size();
        for (const ByteString& record : block.records) {
            length += record.size();
        }
        Append(static_cast<std::uint32_t>(length), bytes);
        Append(block.type, bytes);
        Append(block.head, bytes);
        for (const ByteString& record : block.records) {
            Append(record, bytes);
        }
    }
    return bytes;
}

// New names go to the end of the list: values name them by position.
std::size_t PropertyBlob::NameIndex(TextView property) {
    const auto found = std::find(names_.begin(), names_.end(), property);
    if (found != names_.end()) {
        return static_cast<std::size_t>(found - names_.begin());
    }
    const auto list = std::find_if(blocks_.begin(), blocks_.end(),
                                   [](const Block& block) { return block.type == kNameList; });
    if (list == blocks_.end()) {
        blocks_.insert(blocks_.begin(), {.type = kNameList, .head = {}, .owner = {}, .records = {}});
        return NameIndex(property);
    }
    Append(StoredName(property), list->head);
    names_.emplace_back(property);
    return names_.size() - 1;
}

PropertyBlob::Block* PropertyBlob::FindColumn(TextView column) {
    const auto found = std::find_if(blocks_.begin(), blocks_.end(), [column](const Block& block) {
        return block.type == kOfColumn && basic::EqualNoCase(block.owner, column);
    });
    return found == blocks_.end() ? nullptr : &*found;
}

PropertyBlob::Block& PropertyBlob::ColumnBlock(TextView column) {
    if (Block* found = FindColumn(column)) {
        return *found;
    }
    const ByteString name = StoredName(column);
    ByteString head;
    Append(static_cast<std::uint32_t>(kOwnerHeader + name.size()), head);
    Append(name, head);
    return blocks_.emplace_back(
        Block{.type = kOfColumn, .head = std::move(head), .owner = Text(column), .records = {}});
}

void PropertyBlob::SetOfColumn(TextView column, TextView property, ColumnType type, const ByteString& value) {
    const std::size_t name = NameIndex(property);
    ByteString record;
    Append(static_cast<std::uint16_t>(kValueHeader + value.size()), record);
    record.push_back(kDesigned);
    record.push_back(static_cast<std::uint8_t>(type));
    Append(static_cast<std::uint16_t>(name), record);
    Append(static_cast<std::uint16_t>(value.size()), record);
    Append(value, record);
    auto& records = ColumnBlock(column).records;
    const auto found = std::find_if(records.begin(), records.end(),
                                    [name](const ByteString& other) { return NameOf(other) == name; });
    if (found == records.end()) {
        records.push_back(std::move(record));
    } else {
        *found = std::move(record);
    }
}

// The name stays in the list: positions of others must not change.
void PropertyBlob::RemoveOfColumn(TextView column, TextView property) {
    const auto name = std::find(names_.begin(), names_.end(), property);
    Block* block = FindColumn(column);
    if (name == names_.end() || block == nullptr) {
        return;
    }
    const auto position = static_cast<std::size_t>(name - names_.begin());
    std::erase_if(block->records,
                  [position](const ByteString& record) { return NameOf(record) == position; });
}

}  // namespace quardele::jet
