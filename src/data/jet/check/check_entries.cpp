#include "check/check_entries.h"

#include <algorithm>

#include "indexes/index_page.h"

namespace quardele::jet {

namespace {

/// Differences are looked for in portions of about so many entries, so that memory stays small.
constexpr std::uint64_t kPortion = 250000;

struct Found {
    ByteString entry;
    std::uint32_t page = 0;
    friend bool operator<(const Found& left, const Found& right) {
        return CompareBytes(left.entry, right.entry) < 0;
    }
};

void AppendRow(RowId row, ByteString& entry) {
    for (const std::uint32_t part : {row.page >> 16, row.page >> 8, row.page, std::uint32_t{row.slot}}) {
        entry.push_back(static_cast<std::uint8_t>(part & 0xFF));
    }
}

RowId RowOfEntry(std::span<const std::uint8_t> entry) {
    return EntryRow(entry, 0);
}

// "12:3", as the places of rows are written.
Text PlaceText(std::span<const std::uint8_t> entry) {
    const RowId row = RowOfEntry(entry);
    return NumberText(row.page) + u':' + NumberText(row.slot);
}

}  // namespace

EntriesCheck::EntriesCheck(CheckContext& context, const CheckPlace& place, const TableDef& def,
                           const RealIndex& index)
    : context_(context), place_(place), def_(def), index_(index) {}

std::optional<EntriesCheck::Expected> EntriesCheck::EntryOf(const CheckedRow& row,
                                                            const RowLayout& layout) const {
    std::vector<std::optional<ByteString>> values;
    for (const IndexColumn& part : index_.columns) {
        values.push_back(
            ColumnData(context_.pages, def_.stored[static_cast<std::size_t>(part.column)], layout));
    }
    const auto isNull = [](const auto& value) { return !value; };
    if (index_.ignoreNulls && std::all_of(values.begin(), values.end(), isNull)) {
        return std::nullopt;
    }
    Expected expected;
    expected.anyNull = std::any_of(values.begin(), values.end(), isNull);
    if (index_.seekable) {
        RowKey key = MakeKey(def_, index_, context_.pages.Layout(), values);
        expected.known = key.known;
        if (key.known) {
            expected.entry = std::move(key.bytes);
        }
    }
    AppendRow(row.id, expected.entry);
    return expected;
}

void EntriesCheck::AddRow(const CheckedRow& row, const RowLayout& layout) {
    const auto expected = EntryOf(row, layout);
    if (!expected) {
        return;
    }
    if (index_.required && expected->anyNull) {
        context_.report.Add(FaultCode::IndexNull, place_, row.id.page, PlaceText(expected->entry));
    }
    expected_.Add(expected->entry);
    if (!expected->known && index_.seekable) {
        unknown_.push_back(row.id);
    }
}

std::span<const std::uint8_t> EntriesCheck::Comparable(std::span<const std::uint8_t> entry) const {
    const bool isKnown =
        index_.seekable && !std::binary_search(unknown_.begin(), unknown_.end(), RowOfEntry(entry));
    return isKnown ? entry : entry.last(kEntryRow);
}

void EntriesCheck::ReportDifferences(const std::vector<std::uint32_t>& dataPages,
                                     const WalkTree& walk) const {
    const std::uint64_t portions = expected_.count / kPortion + 1;
    for (std::uint64_t portion = 0; portion < portions; ++portion) {
        const auto belongs = [&](std::span<const std::uint8_t> entry) {
            return RowOfEntry(entry).page % portions == portion;
        };
        std::vector<Found> rows;
        ForEachReadableRow(context_.pages, def_, dataPages, [&](const CheckedRow& row) {
            const RowLayout layout(row.bytes, def_, context_.pages.Layout());
            auto expected = EntryOf(row, layout);
            if (expected && belongs(expected->entry)) {
                rows.push_back({std::move(expected->entry), row.id.page});
            }
        });
        std::vector<Found> tree;
        walk([&](std::span<const std::uint8_t> entry, std::uint32_t page) {
            if (belongs(entry)) {
                const auto comparable = Comparable(entry);
                tree.push_back({{comparable.begin(), comparable.end()}, page});
            }
        });
        std::sort(rows.begin(), rows.end());
        std::sort(tree.begin(), tree.end());
        std::vector<Found> missing;
        std::set_difference(rows.begin(), rows.end(), tree.begin(), tree.end(), std::back_inserter(missing));
        std::vector<Found> extra;
        std::set_difference(tree.begin(), tree.end(), rows.begin(), rows.end(), std::back_inserter(extra));
        for (const Found& found : missing) {
            context_.report.Add(FaultCode::IndexMissing, place_, found.page, PlaceText(found.entry));
        }
        for (const Found& found : extra) {
            context_.report.Add(FaultCode::IndexExtra, place_, found.page, PlaceText(found.entry));
        }
    }
}

}  // namespace quardele::jet
