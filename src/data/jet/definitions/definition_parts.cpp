#include "definitions/definition_parts.h"

#include "format.h"
#include "rows/text_codec.h"

namespace quardele::jet {

namespace {

constexpr const auto& kAt = kJet4.def;
constexpr std::size_t kNameLength = 2;
constexpr std::size_t kSignatureAt = 12;
constexpr std::size_t kAutoNumberStepAt = 24;

/// Reads a definition from its start to its end.
class Splitter {
 public:
    explicit Splitter(const ByteView& bytes) : bytes_(bytes) {}

    [[nodiscard]] ByteString Take(std::size_t length) {
        const auto part = bytes_.Sub(position_, length).Span();
        position_ += length;
        return {part.begin(), part.end()};
    }
    [[nodiscard]] std::vector<ByteString> TakeList(std::size_t count, std::size_t size) {
        std::vector<ByteString> list;
        for (std::size_t i = 0; i < count; ++i) {
            list.push_back(Take(size));
        }
        return list;
    }
    [[nodiscard]] std::vector<NamedPart> TakeNamed(std::size_t count, std::size_t size) {
        std::vector<NamedPart> list;
        for (ByteString& bytes : TakeList(count, size)) {
            list.push_back({.bytes = std::move(bytes), .name = {}});
        }
        return list;
    }
    void TakeNames(std::vector<NamedPart>& list) {
        for (NamedPart& part : list) {
            const std::size_t length = bytes_.U16(position_);
            part.name = DecodePlainText(bytes_.Sub(position_ + kNameLength, length));
            position_ += kNameLength + length;
        }
    }
    [[nodiscard]] bool AtEnd() const { return bytes_.U16(position_) == long_value_map::kEnd; }

 private:
    ByteView bytes_;
    std::size_t position_ = 0;
};

void Append(const ByteString& part, ByteString& string) {
    string.insert(string.end(), part.begin(), part.end());
}

void AppendU16(std::uint16_t value, ByteString& string) {
    string.resize(string.size() + sizeof value);
    StoreLittle(std::span(string).last(sizeof value), value);
}

void AppendList(const std::vector<ByteString>& list, ByteString& string) {
    for (const ByteString& part : list) {
        Append(part, string);
    }
}

void AppendNames(const std::vector<NamedPart>& list, ByteString& string) {
    for (const NamedPart& part : list) {
        const ByteString name = EncodePlainText(part.name);
        AppendU16(static_cast<std::uint16_t>(name.size()), string);
        Append(name, string);
    }
}

}  // namespace

DefinitionParts::DefinitionParts() : header(kAt.end) {
    constexpr std::uint32_t kAutoNumberStep = 1;
    StoreLittle(std::span(header).subspan(kSignatureAt), kSignature);
    StoreLittle(std::span(header).subspan(kAutoNumberStepAt), kAutoNumberStep);
    header[kAt.kind] = kUserTable;
}

DefinitionParts DefinitionParts::Split(const ByteView& definition) {
    const std::size_t realCount = definition.U32(kAt.realIndexes);
    const std::size_t logicalCount = definition.U32(kAt.logicalIndexes);
    Splitter splitter(definition);
    DefinitionParts parts;
    parts.header = splitter.Take(kAt.end);
    parts.statistics = splitter.TakeList(realCount, kAt.indexStatistics);
    parts.columns = splitter.TakeNamed(definition.U16(kAt.columns), kJet4.column.size);
    splitter.TakeNames(parts.columns);
    parts.realIndexes = splitter.TakeList(realCount, kJet4.realIndex.size);
    parts.indexes = splitter.TakeNamed(logicalCount, kJet4.logicalIndex.size);
    splitter.TakeNames(parts.indexes);
    while (!splitter.AtEnd()) {
        parts.longValueMaps.push_back(splitter.Take(long_value_map::kSize));
    }
    return parts;
}

ByteString DefinitionParts::Join() const {
    ByteString string = header;
    AppendList(statistics, string);
    for (const NamedPart& column : columns) {
        Append(column.bytes, string);
    }
    AppendNames(columns, string);
    AppendList(realIndexes, string);
    for (const NamedPart& index : indexes) {
        Append(index.bytes, string);
    }
    AppendNames(indexes, string);
    AppendList(longValueMaps, string);
    AppendU16(long_value_map::kEnd, string);
    const auto target = std::span(string);
    StoreLittle(target.subspan(kAt.length), static_cast<std::uint32_t>(string.size()));
    StoreLittle(target.subspan(kAt.columns), static_cast<std::uint16_t>(columns.size()));
    StoreLittle(target.subspan(kAt.logicalIndexes), static_cast<std::uint32_t>(indexes.size()));
    StoreLittle(target.subspan(kAt.realIndexes), static_cast<std::uint32_t>(realIndexes.size()));
    return string;
}

void DefinitionParts::SetMaxColumns(std::uint16_t count) {
    StoreLittle(std::span(header).subspan(kAt.maxColumns), count);
}

void DefinitionParts::SetVariableColumns(std::uint16_t count) {
    StoreLittle(std::span(header).subspan(kAt.variableColumns), count);
}

}  // namespace quardele::jet
