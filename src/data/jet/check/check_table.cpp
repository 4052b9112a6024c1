#include "check/check_table.h"

#include <algorithm>

#include "check/check_definition.h"
#include "check/check_maps.h"

namespace quardele::jet {

TableCheck::TableCheck(CheckContext& context, Text name, std::uint32_t page)
    : context_(context), place_{std::move(name), {}}, owner_(context.ledger.AddOwner(place_)) {
    ClaimDefinition(context, place_, page);
    def_ = TableDef::Read(context.pages, page);
}

void TableCheck::Run() {
    CheckDefinition(context_, place_, def_);
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
