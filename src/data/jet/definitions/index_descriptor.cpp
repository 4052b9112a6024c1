#include "definitions/index_descriptor.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "format.h"
#include "structure/object_names.h"

namespace quardele::jet {

namespace {

constexpr const auto& kReal = kJet4.realIndex;
constexpr const auto& kLogical = kJet4.logicalIndex;
constexpr std::uint32_t kNoPartner = 0xFFFFFFFF;
/// What the original engine writes for the cascades of an index without a relationship.
constexpr std::uint8_t kNoCascade = 4;

[[noreturn]] void Throw(int number, TextView name) {
    throw basic::RuntimeError(number, basic::Describe(number, name));
}

std::uint8_t Flags(const IndexDesign& design) {
    std::uint8_t flags = index_flag::kAlways;
    if (design.unique || design.primary) {
        flags |= index_flag::kUnique;
    }
    if (design.ignoreNulls && !design.primary) {
        flags |= index_flag::kIgnoreNulls;
    }
    if (design.required || design.primary) {
        flags |= index_flag::kRequired;
    }
    return flags;
}

const NamedPart& ColumnNamed(const DefinitionParts& parts, TextView name) {
    const auto found =
        std::find_if(parts.columns.begin(), parts.columns.end(),
                     [name](const NamedPart& column) { return basic::EqualNoCase(column.name, name); });
    if (found == parts.columns.end()) {
        Throw(basic::error::kBadIndexField, name);
    }
    return *found;
}

[[nodiscard]] bool CanBeIndexed(ColumnType type) {
    return type != ColumnType::Ole && type != ColumnType::Opaque;
}

ByteString RealDescriptor(const IndexDesign& design, const DefinitionParts& parts) {
    ByteString bytes(kReal.size);
    const auto target = std::span(bytes);
    StoreLittle(target, kIndexSignature);
    std::vector<std::uint16_t> numbers;
    for (const IndexPart& part : design.columns) {
        const ByteString& column = ColumnNamed(parts, part.column).bytes;
        const std::uint16_t number = ByteView(column, 0).U16(kJet4.column.number);
        const auto type = static_cast<ColumnType>(column[kJet4.column.type]);
        if (!CanBeIndexed(type) || std::find(numbers.begin(), numbers.end(), number) != numbers.end()) {
            Throw(basic::error::kBadIndexField, part.column);
        }
        const auto place = target.subspan(kReal.columns + numbers.size() * 3);
        StoreLittle(place, number);
        place[2] = part.ascending ? 1 : 0;
        numbers.push_back(number);
    }
    for (std::size_t i = numbers.size(); i < kMostIndexColumns; ++i) {
        StoreLittle(target.subspan(kReal.columns + i * 3), kNoColumn);
    }
    bytes[kReal.flags] = Flags(design);
    return bytes;
}

// Numbers of indexes that were deleted may leave gaps.
std::uint32_t NextNumber(const DefinitionParts& parts) {
    std::uint32_t next = 0;
    for (const NamedPart& index : parts.indexes) {
        next = std::max(next, ByteView(index.bytes, 0).U32(kLogical.number) + 1);
    }
    return next;
}

ByteString LogicalDescriptor(const IndexDesign& design, const DefinitionParts& parts) {
    ByteString bytes(kLogical.size);
    const auto target = std::span(bytes);
    StoreLittle(target, kSignature);
    StoreLittle(target.subspan(kLogical.number), NextNumber(parts));
    StoreLittle(target.subspan(kLogical.real), static_cast<std::uint32_t>(parts.realIndexes.size()));
    StoreLittle(target.subspan(kLogical.partner), kNoPartner);
    bytes[kLogical.cascadeUpdate] = kNoCascade;
    bytes[kLogical.cascadeDelete] = kNoCascade;
    bytes[kLogical.kind] = design.primary ? kPrimaryKind : std::uint8_t{0};
    return bytes;
}

void CheckDesign(const IndexDesign& design, const DefinitionParts& parts) {
    CheckName(design.name);
    for (const NamedPart& index : parts.indexes) {
        if (basic::EqualNoCase(index.name, design.name)) {
            Throw(basic::error::kIndexExists, design.name);
        }
        if (design.primary && index.bytes.at(kLogical.kind) == kPrimaryKind) {
            throw basic::RuntimeError(basic::error::kPrimaryKeyExists);
        }
    }
    if (parts.indexes.size() >= kMostIndexes || parts.realIndexes.size() >= kMostIndexes) {
        throw basic::RuntimeError(basic::error::kTooManyIndexes);
    }
    if (design.columns.empty() || design.columns.size() > kMostIndexColumns) {
        throw basic::RuntimeError(basic::error::kBadIndexField, u"Un index a de un à dix champs.");
    }
}

}  // namespace

void AppendIndex(const IndexDesign& design, DefinitionParts& parts) {
    CheckDesign(design, parts);
    ByteString logical = LogicalDescriptor(design, parts);
    parts.realIndexes.push_back(RealDescriptor(design, parts));
    parts.statistics.emplace_back(kJet4.def.indexStatistics);
    parts.indexes.push_back({.bytes = std::move(logical), .name = design.name});
}

}  // namespace quardele::jet
