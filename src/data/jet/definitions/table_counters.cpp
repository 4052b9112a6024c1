#include "definitions/table_counters.h"

#include <algorithm>

namespace quardele::jet {

namespace {

/// What AutoNumbers of Access 2000-2003 grow by; older files, which have no such field, are never written.
constexpr std::size_t kAutoNumberStep = 24;

}  // namespace

void TableCounters::Store(std::size_t place, std::uint32_t value) {
    StoreLittle(pages_.Write(table_).Mutable().subspan(place), value);
}

// Files that were copied while they were open count wrong; no count goes below none.
void TableCounters::Add(std::size_t place, int change) {
    const std::int64_t count = std::int64_t{At(place)} + change;
    if (change != 0) {
        Store(place, static_cast<std::uint32_t>(std::max<std::int64_t>(count, 0)));
    }
}

void TableCounters::AddRows(int change) {
    Add(pages_.Layout().def.rowCount, change);
}

std::int32_t TableCounters::NextAutoNumber() const {
    const std::uint32_t last = At(pages_.Layout().def.lastAutoNumber);
    const std::uint32_t step = At(kAutoNumberStep);
    return static_cast<std::int32_t>(last + std::max<std::uint32_t>(step, 1));
}

void TableCounters::UseAutoNumber(std::int32_t number) {
    const std::size_t place = pages_.Layout().def.lastAutoNumber;
    if (number > static_cast<std::int32_t>(At(place))) {
        Store(place, static_cast<std::uint32_t>(number));
    }
}

void TableCounters::AddDistinctKeys(std::size_t realIndex, int change) {
    const auto& at = pages_.Layout().def;
    Add(at.end + realIndex * at.indexStatistics + at.distinctKeys, change);
}

}  // namespace quardele::jet
