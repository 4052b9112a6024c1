#include "check/check_rows.h"

#include "pages/data_page.h"

namespace quardele::jet {

namespace {

bool IsPageOf(const Page& page, const TableDef& def, const Format& format) {
    return page.Type() == PageType::Data && page.View().U32(format.data.owner) == def.page;
}

// The row that a slot shows. A moved row's data lie in a hidden slot of the same table.
CheckedRow RowOf(const PageSource& pages, const TableDef& def, const PagePtr& page, int slotNumber) {
    const DataPage slots(*page, pages.Layout());
    const RowId id{page->number, static_cast<std::uint8_t>(slotNumber)};
    const ByteView bytes = slots.Row(slotNumber);
    if (slots.Flags(slotNumber) != slot::kMoved) {
        return {id, id, page, bytes};
    }
    const RowPointer target = LoadRowPointer(bytes, 0);
    RowBytes data = ReadRow(pages, target);
    if (!IsPageOf(*data.page, def, pages.Layout()) ||
        DataPage(*data.page, pages.Layout()).Flags(target.slot) != slot::kHidden) {
        ThrowDamaged(page->number, u"ligne déplacée vers rien");
    }
    return {id, target, std::move(data.page), data.bytes};
}

bool ShowsRow(const DataPage& slots, int slotNumber) {
    return (slots.Flags(slotNumber) & slot::kHidden) == 0;
}

}  // namespace

void ForEachReadableRow(const PageSource& pages, const TableDef& def,
                        const std::vector<std::uint32_t>& dataPages,
                        const std::function<void(const CheckedRow&)>& use) {
    CheckReport unheard;
    for (const std::uint32_t number : dataPages) {
        unheard.Guard(FaultCode::Damaged, {}, number, [&] {
            const PagePtr page = pages.Read(number);
            const int slotCount =
                IsPageOf(*page, def, pages.Layout()) ? DataPage(*page, pages.Layout()).SlotCount() : 0;
            for (int i = 0; i < slotCount; ++i) {
                unheard.Guard(FaultCode::Row, {}, number, [&] {
                    if (ShowsRow(DataPage(*page, pages.Layout()), i)) {
                        use(RowOf(pages, def, page, i));
                    }
                });
            }
        });
    }
}

void CheckSlots(CheckContext& context, const CheckPlace& place, const Page& page) {
    context.report.Guard(FaultCode::Damaged, place, page.number, [&] {
        const Format& format = context.pages.Layout();
        const DataPage slots(page, format);
        std::size_t rowBytes = 0;
        for (int i = 0; i < slots.SlotCount(); ++i) {
            rowBytes += slots.Row(i).Size();
        }
        const std::size_t used =
            format.data.slots + static_cast<std::size_t>(slots.SlotCount()) * 2 + rowBytes;
        if (page.View().U16(format.data.freeBytes) + used != page.size) {
            context.report.Add(FaultCode::FreeBytes, place, page.number);
        }
    });
}

RowsCheck::RowsCheck(CheckContext& context, const CheckPlace& place, const TableDef& def,
                     const std::vector<std::uint32_t>& dataPages)
    : context_(context), place_(place), def_(def), dataPages_(dataPages), targets_(dataPages) {}

void RowsCheck::Run(const std::function<void(const CheckedRow&)>& use) {
    for (const std::uint32_t number : dataPages_) {
        context_.report.Guard(FaultCode::Damaged, place_, number, [&] {
            const PagePtr page = context_.pages.Read(number);
            if (IsPageOf(*page, def_, context_.pages.Layout())) {
                CheckPage(page, use);
            } else {
                context_.report.Add(FaultCode::PageForeign, place_, number);
            }
        });
        context_.pageDone();
    }
    if (hiddenCount_ == targetCount_) {
        return;
    }
    for (const std::uint32_t number : dataPages_) {
        CheckReport unheard;
        unheard.Guard(FaultCode::Damaged, place_, number,
                      [&] { ReportOrphans(*context_.pages.Read(number)); });
    }
}

void RowsCheck::CheckPage(const PagePtr& page, const std::function<void(const CheckedRow&)>& use) {
    CheckSlots(context_, place_, *page);
    const DataPage slots(*page, context_.pages.Layout());
    for (int i = 0; i < slots.SlotCount(); ++i) {
        hiddenCount_ += slots.Flags(i) == slot::kHidden ? 1 : 0;
        if (!ShowsRow(slots, i)) {
            continue;
        }
        ++rowCount_;
        const bool isMoved = slots.Flags(i) == slot::kMoved;
        context_.report.Guard(isMoved ? FaultCode::RowMoved : FaultCode::Row, place_, page->number, [&] {
            const CheckedRow row = RowOf(context_.pages, def_, page, i);
            if (isMoved && !targets_.Mark(row.data)) {
                ThrowDamaged(page->number, u"ligne déplacée vers une place déjà prise ou hors de la table");
            }
            targetCount_ += isMoved ? 1 : 0;
            use(row);
        });
    }
}

void RowsCheck::ReportOrphans(const Page& page) {
    const DataPage slots(page, context_.pages.Layout());
    for (int i = 0; i < slots.SlotCount(); ++i) {
        const RowId id{page.number, static_cast<std::uint8_t>(i)};
        if (slots.Flags(i) == slot::kHidden && !targets_.IsMarked(id)) {
            context_.report.Add(FaultCode::RowOrphan, place_, page.number, NumberText(id.slot));
        }
    }
}

}  // namespace quardele::jet
