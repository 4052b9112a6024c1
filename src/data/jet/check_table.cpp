#include "check_table.h"

#include <algorithm>
#include <set>

#include "check_maps.h"

namespace quardele::jet {

namespace {

// Claims page after page of a definition; a page that leads back cannot be claimed again.
void ClaimDefinition(CheckContext& context, const CheckPlace& place, std::uint32_t first) {
    const std::uint32_t owner = context.ledger.AddOwner(place);
    context.report.Guard(FaultCode::Definition, place, first, [&] {
        for (std::uint32_t number = first; number != 0 && context.ledger.Claim(number, owner);) {
            const PagePtr page = context.pages.Read(number);
            if (page->Type() != PageType::TableDef) {
                ThrowDamaged(number, u"définition de table attendue");
            }
            number = page->View().U32(context.pages.Layout().def.next);
        }
    });
}

std::size_t SkipNames(const ByteView& bytes, std::size_t at, std::size_t count, const Format& format) {
    const std::size_t prefix = format.column.nameLengthBytes;
    for (std::size_t i = 0; i < count; ++i) {
        at += prefix + (prefix == 1 ? bytes.U8(at) : bytes.U16(at));
    }
    return at;
}

// Where the definition's parts end if the counts in its header are right.
std::size_t EndOfParts(const TableDef& def, const Format& format) {
    const ByteView bytes(def.bytes, def.page);
    std::size_t at = format.def.end + def.realIndexes.size() * format.def.indexStatistics +
                     def.stored.size() * format.column.size;
    at = SkipNames(bytes, at, def.stored.size(), format);
    at += def.realIndexes.size() * format.realIndex.size + def.indexes.size() * format.logicalIndex.size;
    at = SkipNames(bytes, at, def.indexes.size(), format);
    while (bytes.U16(at) != long_value_map::kEnd) {
        at += long_value_map::kSize;
    }
    return at + 2;
}

}  // namespace

TableCheck::TableCheck(CheckContext& context, Text name, std::uint32_t page)
    : context_(context), place_{std::move(name), {}}, owner_(context.ledger.AddOwner(place_)) {
    ClaimDefinition(context, place_, page);
    def_ = TableDef::Read(context.pages, page);
}

void TableCheck::Run() {
    context_.report.Guard(FaultCode::Definition, place_, def_.page, [this] { CheckDefinition(); });
    ClaimDataPages();
    for (std::size_t i = 0; i < def_.realIndexes.size(); ++i) {
        const auto logical = std::find(def_.realOf.begin(), def_.realOf.end(), i);
        Text name = logical == def_.realOf.end()
                        ? NumberText(i)
                        : def_.indexes[static_cast<std::size_t>(logical - def_.realOf.begin())].name;
        indexes_.emplace_back(context_, CheckPlace{place_.table, std::move(name)}, def_, def_.realIndexes[i]);
    }
    CheckRows();
    for (IndexCheck& index : indexes_) {
        index.Run(dataPages_);
    }
}

void TableCheck::CheckDefinition() {
    if (EndOfParts(def_, context_.pages.Layout()) != def_.bytes.size()) {
        ThrowDamaged(def_.page, u"longueur de la définition de table");
    }
    std::set<std::uint16_t> numbers;
    std::set<std::uint16_t> variableIndexes;
    for (std::size_t i = 0; i < def_.stored.size(); ++i) {
        const StoredColumn& column = def_.stored[i];
        const bool isPlaced = column.fixed || (column.variableIndex < def_.variableColumns &&
                                               variableIndexes.insert(column.variableIndex).second);
        if (column.number >= def_.maxColumns || !numbers.insert(column.number).second || !isPlaced ||
            def_.columns[i].name.empty()) {
            context_.report.Add(FaultCode::Definition, {place_.table, def_.columns[i].name}, def_.page,
                                u"colonne impossible");
        }
    }
    CheckFixedArea();
}

void TableCheck::CheckFixedArea() {
    std::vector<const StoredColumn*> fixed;
    for (const StoredColumn& column : def_.stored) {
        if (column.fixed && column.type != ColumnType::Boolean) {
            fixed.push_back(&column);
        }
    }
    std::sort(fixed.begin(), fixed.end(), [](const StoredColumn* left, const StoredColumn* right) {
        return left->fixedOffset < right->fixedOffset;
    });
    std::size_t end = 0;
    for (const StoredColumn* column : fixed) {
        if (column->fixedOffset < end) {
            ThrowDamaged(def_.page, u"deux colonnes à la même place");
        }
        end = column->fixedOffset + NaturalSize(column->type).value_or(column->length);
    }
}

void TableCheck::ClaimDataPages() {
    dataPages_ = CheckMap(context_, def_.ownedMap, place_);
    for (const std::uint32_t page : dataPages_) {
        context_.ledger.Claim(page, owner_);
    }
    for (const std::uint32_t page : CheckMap(context_, def_.freeMap, place_)) {
        if (!std::binary_search(dataPages_.begin(), dataPages_.end(), page)) {
            context_.report.Add(FaultCode::RoomForeign, place_, page);
        }
    }
}

void TableCheck::CheckRows() {
    ValuesCheck values(context_, place_, def_);
    RowsCheck rows(context_, place_, def_, dataPages_);
    rows.Run([&](const CheckedRow& row) {
        const RowLayout layout(row.bytes, def_, context_.pages.Layout());
        values.Check(row, layout);
        for (IndexCheck& index : indexes_) {
            index.AddRow(row, layout);
        }
    });
    values.Finish();
    if (rows.RowCount() != def_.rowCount) {
        context_.report.AddNote(FaultCode::RowCount, place_, def_.page,
                                NumberText(def_.rowCount) + u" / " + NumberText(rows.RowCount()));
    }
}

}  // namespace quardele::jet
